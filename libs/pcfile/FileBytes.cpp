// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileBytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "WideText.h"

namespace {

constexpr std::size_t HeadBytes = 65536;

}  // namespace

FileBytes::~FileBytes() {
    if (m_file >= 0) ::close(m_file);
}

bool FileBytes::Open(const std::filesystem::path& path, std::int64_t offset) {
    if (path.empty() || offset < 0) return false;
    m_file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat about = {};
    if (m_file < 0 || ::fstat(m_file, &about) != 0 || !S_ISREG(about.st_mode)) return false;
    if (about.st_size <= offset || static_cast<std::uint64_t>(about.st_size - offset) > MaxBytes) return false;
    m_offset = offset;
    m_total = static_cast<std::uint64_t>(about.st_size - offset);
    const std::size_t head = std::min<std::size_t>(HeadBytes, m_total);
    m_data.reset(new std::uint8_t[head]);
    return ReadUpTo(head);
}

bool FileBytes::ReadAll() {
    if (m_size == m_total) return true;
    std::unique_ptr<std::uint8_t[]> all(new std::uint8_t[m_total]);
    std::memcpy(all.get(), m_data.get(), m_size);
    m_data = std::move(all);
    return ReadUpTo(m_total);
}

bool FileBytes::ReadUpTo(std::size_t size) {
    while (m_size < size) {
        const ssize_t got =
            ::pread(m_file, m_data.get() + m_size, size - m_size, m_offset + static_cast<std::int64_t>(m_size));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        m_size += static_cast<std::size_t>(got);
    }
    return true;
}

std::filesystem::path FilePath(const wchar_t* text) {
    return text ? std::filesystem::path(Utf8Text(text)) : std::filesystem::path();
}
