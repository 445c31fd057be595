// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

// Text of files and paths, whatever the process's locale is (the standard library's own conversion depends on it).

// UTF-8 to wide text; bytes that are not UTF-8 are taken as Latin-1, which is what old cameras write.
std::wstring WideText(const std::string& bytes);
// The other way.
std::string Utf8Text(const std::wstring& text);
