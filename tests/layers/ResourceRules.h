// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

// The checks on skins, language files and icons. Findings as in LayerRules.h: one text each, empty when all is well.

// Two language folders hold the same files.
std::vector<std::string> CompareFiles(const std::filesystem::path& first, const std::filesystem::path& second);
// Two skins have the same controls: name and class.
std::vector<std::string> CompareSkins(const std::string& name, const std::string& first, const std::string& second);
// Each control that takes input has a tooltip; the skin loader makes it the accessible name of what has no text.
std::vector<std::string> CheckControlHelp(const std::string& name, const std::string& skin);
// Two INI files have the same sections and keys, none twice and none without a text.
std::vector<std::string> CompareInis(const std::string& name, const std::string& first, const std::string& second);

// "section/key" to text. UTF-8 or UTF-16 little endian with byte order mark; characters beyond ASCII of the latter come
// out as '?'. A key that stands twice is reported under `duplicates`.
std::map<std::string, std::string> ReadIni(const std::string& bytes, std::set<std::string>* duplicates = nullptr);
