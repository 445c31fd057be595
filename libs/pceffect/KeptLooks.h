// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "Look.h"

// Looks by their files, read when they are first wanted and kept. A file that has changed since is read again, so that
// a designer sees an edit at the next use. Any thread.
namespace KeptLooks {

// The program's folder: the one given, or where that is empty the one that was given last.
std::filesystem::path FolderOf(const std::filesystem::path& wanted);

// The look of a file of a folder (which an error does not name), or null with `error` set, when it is not null, to what
// is wrong with the file.
std::shared_ptr<const Look> Take(const std::filesystem::path& folder, const std::string& name, std::string* error);

}  // namespace KeptLooks
