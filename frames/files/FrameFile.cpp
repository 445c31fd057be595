// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrameFile.h"

#include <cctype>
#include <filesystem>
#include <QtCore/QFile>

#include "ByteReader.h"
#include "FileBytes.h"
#include "PC_File.h"

int FrameBytes::Int(std::size_t offset) const {
    return static_cast<int>(LittleEndian32(data + offset));
}

bool FrameBytes::HasMagic(std::size_t offset, const char* magic, Qt::CaseSensitivity sensitivity) const {
    for (; *magic; ++magic, ++offset) {
        if (offset >= size) return false;
        const int here = sensitivity == Qt::CaseSensitive ? data[offset] : std::toupper(data[offset]);
        if (here != static_cast<unsigned char>(*magic)) return false;
    }
    return true;
}

Bitmap FrameBytes::Picture(std::uint64_t offset, std::uint64_t length) const {
    if (!Holds(offset, length)) return {};
    return PC_File().OnLoadImage(data + offset, static_cast<int>(length), 0, nullptr, 0, 100);
}

bool CFrameFile::Settle(FrameFault fault) {
    if (fault != FrameFault::None) Forget();
    m_fault = fault;
    return fault == FrameFault::None;
}

bool CFrameFile::Load(const QString& path) {
    Forget();
    FileBytes bytes;
    const std::filesystem::path file(QFile::encodeName(path).toStdString());
    if (!bytes.Open(file, 0) || bytes.TotalSize() > MaxBytes) return Settle(FrameFault::Unreadable);
    if (const FrameFault fault = Sniff({bytes.Data(), bytes.Size()}, bytes.TotalSize()); fault != FrameFault::None)
        return Settle(fault);
    if (!bytes.ReadAll()) return Settle(FrameFault::Unreadable);
    return Settle(Parse({bytes.Data(), bytes.Size()}));
}

bool CFrameFile::Load(const std::uint8_t* data, std::size_t size) {
    Forget();
    if (size > MaxBytes) return Settle(FrameFault::Unreadable);
    if (!data) size = 0;
    const FrameFault fault = Sniff({data, size}, size);
    return Settle(fault == FrameFault::None ? Parse({data, size}) : fault);
}
