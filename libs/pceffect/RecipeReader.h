// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "Recipe.h"

// Reads a look from its text. The format is that of resources/Effects/*.look, described in docs/effects.md: sections in
// brackets, `key = numbers`, `#` starts a comment. Everything is optional but the title; everything is checked: an
// unknown section or key, a key given twice, a wrong count of numbers, a number out of range and a curve that falls are
// errors. Any bytes may be given.

struct RecipeResult {
    std::optional<Recipe> recipe;
    std::string error;  // "line 12: ..." when there is no recipe
};

RecipeResult ParseRecipe(std::string_view text);

// The same from a file; an error names the file first. Files above 64 kB are refused.
RecipeResult ReadRecipe(const std::filesystem::path& file);
