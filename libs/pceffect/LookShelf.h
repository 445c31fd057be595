// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "EffectList.h"
#include "Look.h"

// The fifty looks: their files in the folder "Effects" below the program's, read when they are first wanted and kept.
// A file that has changed since is read again, so that a designer sees an edit at the next use. Any thread.
namespace LookShelf {

constexpr int Count = EffectListCount;

// File name of a look without its folder; empty beyond the fifty.
std::string FileName(int index);

// The look, or null with `error` set (when it is not null) to what is wrong with its file. An empty folder stands for
// the one that was used last.
std::shared_ptr<const Look> Take(const std::filesystem::path& folder, int index, std::string* error = nullptr);

}  // namespace LookShelf
