// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "Look.h"

// The eight looks of beauty, whose files lie in the folder "Beauty" of the program's folder. Any thread.
namespace BeautyShelf {

constexpr int Count = 8;

// File name of a type without its folder, types from 1; empty for any other.
std::string FileName(int type);

// The look, or null with `error` set (when it is not null) to what is wrong with its file. An empty folder stands for
// the one that was used last.
std::shared_ptr<const Look> Take(const std::filesystem::path& folder, int type, std::string* error = nullptr);

}  // namespace BeautyShelf
