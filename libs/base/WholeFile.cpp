// SPDX-License-Identifier: GPL-3.0-or-later
#include "WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace {

// The file that a chain of symbolic links ends in, existing or not.
std::filesystem::path ResolveLinks(std::filesystem::path path) {
    std::error_code error;
    for (int depth = 0; depth < 32 && std::filesystem::is_symlink(path, error); ++depth) {
        const std::filesystem::path next = std::filesystem::read_symlink(path, error);
        if (error) break;
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    return path;
}

bool FlushFolder(const std::filesystem::path& folder) {
    const int handle = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return false;
    const bool flushed = ::fsync(handle) == 0;
    ::close(handle);
    return flushed;
}

}  // namespace

WholeFile::WholeFile(const std::filesystem::path& target) : m_target(ResolveLinks(target)) {}

WholeFile::~WholeFile() {
    if (m_file >= 0) ::close(m_file);
    if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
}

bool WholeFile::Open() {
    const std::string folder = m_target.has_parent_path() ? m_target.parent_path().string() : ".";
    std::string name = folder + "/.quince-XXXXXX";
    m_file = ::mkostemp(name.data(), O_CLOEXEC);
    if (m_file < 0) return false;
    m_temporary = name;
    struct stat present = {};
    const mode_t mask = ::umask(0);
    ::umask(mask);
    const mode_t mode = ::stat(m_target.c_str(), &present) == 0 ? present.st_mode & 0777 : 0666 & ~mask;
    ::fchmod(m_file, mode);
    return true;
}

bool WholeFile::Write(const void* bytes, std::size_t count) {
    const char* next = static_cast<const char*>(bytes);
    while (count > 0 && !m_failed) {
        const ssize_t written = m_file < 0 ? -1 : ::write(m_file, next, count);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) {
            m_failed = true;
            break;
        }
        next += written;
        count -= static_cast<std::size_t>(written);
    }
    return !m_failed;
}

bool WholeFile::Commit() {
    if (m_failed || m_file < 0) return false;
    // A library may have replaced the file under its name, so the name is what is flushed.
    const int handle = ::open(m_temporary.c_str(), O_RDWR | O_CLOEXEC);
    const bool flushed = handle >= 0 && ::fsync(handle) == 0;
    if (handle >= 0) ::close(handle);
    const bool closed = ::close(m_file) == 0;
    m_file = -1;
    if (!flushed || !closed || ::rename(m_temporary.c_str(), m_target.c_str()) != 0) {
        m_failed = true;
        return false;
    }
    m_temporary.clear();
    FlushFolder(m_target.parent_path());
    return true;
}
