// SPDX-License-Identifier: GPL-3.0-or-later
#include "SourceTree.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace fs = std::filesystem;

namespace {

bool EndsWithOneOf(const std::string& name, const std::vector<std::string>& endings) {
    return std::any_of(endings.begin(), endings.end(),
                       [&](const std::string& ending) { return name.ends_with(ending); });
}

bool IsForeign(const fs::path& folder) {
    const std::string name = folder.filename().string();
    return name.starts_with(".") || name.starts_with("build");
}

std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (line.ends_with('\r')) line.pop_back();
        lines.push_back(std::move(line));
    }
    return lines;
}

}  // namespace

std::string SourceFile::Name() const {
    return fs::path(path).filename().string();
}

std::string SourceFile::Extension() const {
    return fs::path(path).extension().string();
}

std::string ReadText(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<SourceFile> ReadTree(const fs::path& root, const std::vector<std::string>& endings) {
    std::vector<SourceFile> files;
    std::error_code error;
    for (fs::recursive_directory_iterator it(root, error), end; it != end; it.increment(error)) {
        if (it->is_directory() && IsForeign(it->path())) it.disable_recursion_pending();
        if (!it->is_regular_file() || !EndsWithOneOf(it->path().filename().string(), endings)) continue;
        files.push_back({it->path().lexically_relative(root).generic_string(), SplitLines(ReadText(it->path()))});
    }
    std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
    return files;
}
