// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextFields.h"

#include <charconv>
#include <cmath>
#include <fstream>

namespace {

constexpr std::string_view Blanks = " \t\r";

}  // namespace

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(Blanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

std::string_view TakeLine(std::string_view& text) {
    const auto end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

std::string_view TakeWord(std::string_view& text) {
    text = Trimmed(text);
    const std::string_view word = text.substr(0, text.find_first_of(Blanks));
    text.remove_prefix(word.size());
    return word;
}

std::optional<double> NumberOf(std::string_view word) {
    if (word.starts_with('+')) {
        word.remove_prefix(1);
        if (word.starts_with('-')) return {};
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size() || !std::isfinite(value)) return {};
    return value;
}

std::optional<std::string> ReadWholeText(const std::filesystem::path& file, std::size_t limit) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return {};
    const auto size = std::filesystem::file_size(file, error);
    if (error || size > limit) return {};
    std::ifstream stream(file, std::ios::binary);
    std::string text(static_cast<std::size_t>(size), '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (stream.gcount() != static_cast<std::streamsize>(text.size())) return {};
    return text;
}

std::string Printable(std::string_view word) {
    std::string text;
    for (const char c : word.substr(0, 40)) text += c >= ' ' && c <= '~' ? c : '?';
    return text;
}
