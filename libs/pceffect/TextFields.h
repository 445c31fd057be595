// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the readers of text files share. Nothing depends on the locale.

std::string_view Trimmed(std::string_view text);

// Takes the next line off `text`, without its end (LF or CRLF).
std::string_view TakeLine(std::string_view& text);
// Takes the next word off `text`; empty when there is none.
std::string_view TakeWord(std::string_view& text);

// The number that is the whole of `word`; nothing when it is none, or not finite.
std::optional<double> NumberOf(std::string_view word);

// All bytes of a file that is not larger than `limit`; nothing when it can't be read or is larger.
std::optional<std::string> ReadWholeText(const std::filesystem::path& file, std::size_t limit);

// For messages: at most 40 characters of `word`, everything that is not printable ASCII as '?'.
std::string Printable(std::string_view word);
