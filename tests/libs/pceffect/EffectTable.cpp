// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectTable.h"

#include <gtest/gtest.h>

const std::array<EffectFunction, 50> AllEffects{CEffect::Effect_VSCO_K1,
                                                CEffect::Effect_JiaoPianQuince,
                                                CEffect::Effect_VSCO_G2,
                                                CEffect::Effect_VSCO_C1,
                                                CEffect::Effect_VSCO_A3,
                                                CEffect::Effect_QingLiang,
                                                CEffect::Effect_VSCO_A2,
                                                CEffect::Effect_VSCO_M5,
                                                CEffect::Effect_VSCO_H2,
                                                CEffect::Effect_VSCO_P7,
                                                CEffect::Effect_VSCO_P1,
                                                CEffect::Effect_VSCO_P5,
                                                CEffect::Effect_VSCO_P6,
                                                CEffect::Effect_VSCO_P9,
                                                CEffect::Effect_VSCO_P4,
                                                CEffect::Effect_LiuNian,
                                                CEffect::Effect_YunDuan,
                                                CEffect::Effect_JingdianLomoQuince,
                                                CEffect::Effect_YouGe,
                                                CEffect::Effect_EarlyBird,
                                                CEffect::Effect_FenHongJiaRenQuince,
                                                CEffect::Effect_Hudson,
                                                CEffect::Effect_YiZhouQuince,
                                                CEffect::Effect_FuGuQuince,
                                                CEffect::Effect_GuTongSe,
                                                CEffect::Effect_VSCO_P2,
                                                CEffect::Effect_VSCO_1970,
                                                CEffect::Effect_VSCO_S4,
                                                CEffect::Effect_VSCO_SE2,
                                                CEffect::Effect_GeTeFengQuince,
                                                CEffect::Effect_VSCO_T2,
                                                CEffect::Effect_VSCO_M4,
                                                CEffect::Effect_VSCO_T1,
                                                CEffect::Effect_VSCO_SE1,
                                                CEffect::Effect_VSCO_T3,
                                                CEffect::Effect_VSCO_H5,
                                                CEffect::Effect_HeiBai,
                                                CEffect::Effect_VSCO_X6,
                                                CEffect::Effect_Silver,
                                                CEffect::Effect_VSCO_B4,
                                                CEffect::Effect_VSCO_X3,
                                                CEffect::Effect_VSCO_B2,
                                                CEffect::Effect_VSCO_X4,
                                                CEffect::Effect_LEAK_1,
                                                CEffect::Effect_LEAK_6,
                                                CEffect::Effect_LEAK_7,
                                                CEffect::Effect_LEAK_9,
                                                CEffect::Effect_LEAK_15,
                                                CEffect::Effect_LEAK_LIGHT_LEAK,
                                                CEffect::Effect_LEAK_LIGHT_LEAK_17};

std::filesystem::path LooksFolder() {
    return QUINCE_RESOURCES;
}

void* LooksFolderText() {
    static std::wstring text = LooksFolder().wstring();
    return text.data();
}

Bitmap WithEffect(int index, const Bitmap& source) {
    Bitmap out = source;
    EXPECT_NE(AllEffects[index](out.MutablePixels(), out.Width(), out.Height(), LooksFolderText(), nullptr, 0, 100), 0)
        << index;
    return out;
}
