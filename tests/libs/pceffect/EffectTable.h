// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

#include "Bitmap.h"
#include "CEffect.h"

// The folder that holds "Effects", as the library wants it.
std::filesystem::path LooksFolder();
void* LooksFolderText();

// The picture after an effect; the call must succeed.
Bitmap WithEffect(int index, const Bitmap& source);
