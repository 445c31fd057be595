// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectTable.h"

#include <gtest/gtest.h>

std::filesystem::path LooksFolder() {
    return QUINCE_RESOURCES;
}

void* LooksFolderText() {
    static std::wstring text = LooksFolder().wstring();
    return text.data();
}

Bitmap WithEffect(int index, const Bitmap& source) {
    Bitmap out = source;
    EXPECT_NE(EffectFunctions[static_cast<std::size_t>(index)](out.MutablePixels(), out.Width(), out.Height(),
                                                               LooksFolderText(), nullptr, 0, 100),
              0)
        << index;
    return out;
}
