// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <filesystem>

#include "Bitmap.h"
#include "CEffect.h"

// The fifty by index, as a program's table holds them.
using EffectFunction = int (*)(unsigned char*, int, int, void*, CObjProgress*, int, int);
extern const std::array<EffectFunction, 50> AllEffects;

// The folder that holds "Effects", as the library wants it.
std::filesystem::path LooksFolder();
void* LooksFolderText();

// The picture after an effect; the call must succeed.
Bitmap WithEffect(int index, const Bitmap& source);
