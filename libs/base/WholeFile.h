// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <filesystem>

// Writes a file whole or not at all: the bytes go to a temporary name in the target's folder, are flushed to the disk
// and then renamed over the target. Until Commit succeeds the target is untouched, whatever happens to the process or
// the disk; without Commit the destructor removes the temporary file. A target that is a symbolic link keeps being one,
// and an existing file keeps its permissions. One object is for one thread.
class WholeFile {
  public:
    explicit WholeFile(const std::filesystem::path& target);
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    // Creates the temporary file; false when the folder is missing or refuses it.
    bool Open();
    // Appends; false on a short write (a full disk), after which Commit fails too.
    bool Write(const void* bytes, std::size_t count);
    // Flushes to the disk and renames; false when anything failed, and then the target is as it was.
    bool Commit();

    // The temporary file, for libraries that write by name or change it in place after Write. Valid after Open.
    const std::filesystem::path& TemporaryPath() const { return m_temporary; }

  private:
    std::filesystem::path m_target;
    std::filesystem::path m_temporary;
    int m_file = -1;
    bool m_failed = false;
};
