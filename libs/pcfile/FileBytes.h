// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>

// The bytes of a file, or of its end from an offset on, in memory. Only regular files are read: a pipe or a device
// given as a picture would block or never end.
class FileBytes {
  public:
    // The largest file that is read.
    static constexpr std::uint64_t MaxBytes = std::uint64_t{3} << 30;

    ~FileBytes();
    FileBytes() = default;
    FileBytes(const FileBytes&) = delete;
    FileBytes& operator=(const FileBytes&) = delete;

    // Opens the file and reads its first bytes; false when it is missing, no regular file, too large, or `offset` is
    // not inside it.
    bool Open(const std::filesystem::path& path, std::int64_t offset);
    // Reads the rest; false when that fails.
    bool ReadAll();

    // Bytes from the offset to the end of the file.
    std::uint64_t TotalSize() const { return m_total; }
    const std::uint8_t* Data() const { return m_data.get(); }
    // Bytes in Data so far.
    std::size_t Size() const { return m_size; }

  private:
    bool ReadUpTo(std::size_t size);

    int m_file = -1;
    std::int64_t m_offset = 0;
    std::uint64_t m_total = 0;
    std::size_t m_size = 0;
    std::unique_ptr<std::uint8_t[]> m_data;
};

// The path of a wide text, in UTF-8; empty for null.
std::filesystem::path FilePath(const wchar_t* text);
