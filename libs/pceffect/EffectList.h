// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The fifty effects, once: EFFECT(function of CEffect, stem of the recipe's file), in the order of their indexes. The
// functions, their table, the files and the numbers by which a program names an effect all follow from this list.
#define QUINCE_EFFECTS(EFFECT)                            \
    /* Film: rich colour stocks with gentle shoulders. */ \
    EFFECT(Effect_VSCO_K1, "K1")                          \
    EFFECT(Effect_JiaoPianQuince, "Jiaopian")             \
    EFFECT(Effect_VSCO_G2, "G2")                          \
    EFFECT(Effect_VSCO_C1, "C1")                          \
    EFFECT(Effect_VSCO_A3, "A3")                          \
    EFFECT(Effect_QingLiang, "Qingliang")                 \
    EFFECT(Effect_VSCO_A2, "A2")                          \
    EFFECT(Effect_VSCO_M5, "M5")                          \
    /* Pola: instant film. */                             \
    EFFECT(Effect_VSCO_H2, "H2")                          \
    EFFECT(Effect_VSCO_P7, "P7")                          \
    EFFECT(Effect_VSCO_P1, "P1")                          \
    EFFECT(Effect_VSCO_P5, "P5")                          \
    EFFECT(Effect_VSCO_P6, "P6")                          \
    EFFECT(Effect_VSCO_P9, "P9")                          \
    EFFECT(Effect_VSCO_P4, "P4")                          \
    /* Lomo: cross processed, with a strong vignette. */  \
    EFFECT(Effect_LiuNian, "Liunian")                     \
    EFFECT(Effect_YunDuan, "Yunduan")                     \
    EFFECT(Effect_JingdianLomoQuince, "Lomo")             \
    EFFECT(Effect_YouGe, "Youge")                         \
    EFFECT(Effect_EarlyBird, "Earlybird")                 \
    EFFECT(Effect_FenHongJiaRenQuince, "Fenhongjiaren")   \
    EFFECT(Effect_Hudson, "Hudson")                       \
    EFFECT(Effect_YiZhouQuince, "Yizhou")                 \
    /* Vintage: aged dyes and worn borders. */            \
    EFFECT(Effect_FuGuQuince, "Fugu")                     \
    EFFECT(Effect_GuTongSe, "Gutongse")                   \
    EFFECT(Effect_VSCO_P2, "P2")                          \
    EFFECT(Effect_VSCO_1970, "1970")                      \
    EFFECT(Effect_VSCO_S4, "S4")                          \
    EFFECT(Effect_VSCO_SE2, "SE2")                        \
    EFFECT(Effect_GeTeFengQuince, "Getefeng")             \
    /* Fade: matte blacks and quiet colour. */            \
    EFFECT(Effect_VSCO_T2, "T2")                          \
    EFFECT(Effect_VSCO_M4, "M4")                          \
    EFFECT(Effect_VSCO_T1, "T1")                          \
    EFFECT(Effect_VSCO_SE1, "SE1")                        \
    EFFECT(Effect_VSCO_T3, "T3")                          \
    EFFECT(Effect_VSCO_H5, "H5")                          \
    /* BW: black and white. */                            \
    EFFECT(Effect_HeiBai, "Heibai")                       \
    EFFECT(Effect_VSCO_X6, "X6")                          \
    EFFECT(Effect_Silver, "Silver")                       \
    EFFECT(Effect_VSCO_B4, "B4")                          \
    EFFECT(Effect_VSCO_X3, "X3")                          \
    EFFECT(Effect_VSCO_B2, "B2")                          \
    EFFECT(Effect_VSCO_X4, "X4")                          \
    /* Leaker: light leaks. */                            \
    EFFECT(Effect_LEAK_1, "Leak1")                        \
    EFFECT(Effect_LEAK_6, "Leak6")                        \
    EFFECT(Effect_LEAK_7, "Leak7")                        \
    EFFECT(Effect_LEAK_9, "Leak9")                        \
    EFFECT(Effect_LEAK_15, "Leak15")                      \
    EFFECT(Effect_LEAK_LIGHT_LEAK, "LightLeak2")          \
    EFFECT(Effect_LEAK_LIGHT_LEAK_17, "LL17")

// An effect by its function's name; its value is the effect's index.
enum class EffectId : int {
#define QUINCE_EFFECT_ID(function, stem) function,
    QUINCE_EFFECTS(QUINCE_EFFECT_ID)
#undef QUINCE_EFFECT_ID
        Count
};

constexpr int IndexOf(EffectId effect) {
    return static_cast<int>(effect);
}
inline constexpr int EffectListCount = IndexOf(EffectId::Count);
