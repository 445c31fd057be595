// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

// The project's own files as the checks see them: names relative to the root, forward slashes, contents by line.
struct SourceFile {
    std::string path;
    std::vector<std::string> lines;

    std::string Name() const;
    std::string Extension() const;
    bool IsHeader() const { return Extension() == ".h"; }
    bool IsCode() const { return IsHeader() || Extension() == ".cpp"; }
};

// Every file under `root` whose name ends in one of `endings` ("CMakeLists.txt", ".h"), sorted by path. Hidden folders
// and build trees are passed over.
std::vector<SourceFile> ReadTree(const std::filesystem::path& root, const std::vector<std::string>& endings);

// The whole file; empty when it cannot be read.
std::string ReadText(const std::filesystem::path& path);
