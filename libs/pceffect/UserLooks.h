// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "CObjProgress.h"

class Lattice;

// A look that the user brought along as a .cube file. A value; copies share the table.
struct UserLook {
    std::wstring title;          // the file's TITLE, or its name without ".cube"
    std::filesystem::path file;  // where it came from
    std::shared_ptr<const Lattice> lattice;
};

// Every valid .cube file of a folder (not of those below), sorted by file name; capital letters in ".CUBE" are fine.
// One that is damaged is left out, and `log` (may be empty) is called with one line that says why. A folder that is not
// there gives none. Any thread.
std::vector<UserLook> LoadUserLooks(const std::filesystem::path& folder,
                                    const std::function<void(const std::wstring& line)>& log);

// Applies one as CEffect applies its looks, with the same contract (CEffect.h); 0 also for a look without a table.
int ApplyUserLook(const UserLook& look, unsigned char* pixels, int width, int height, CObjProgress* progress, int start,
                  int end);
