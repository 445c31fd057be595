// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "BlendModes.h"
#include "CObjProgress.h"

// Looks of film, and the mixing of pictures.
//
// Pixels are 32-bit straight-alpha ARGB (bytes blue, green, red, alpha), rows of 4 x width bytes without padding,
// changed in place. Sizes from 1 x 1 to what Bitmap::Allowed allows. Any thread may call, several at a time on
// different pixels; all cores are used, and the bytes of a result depend neither on how many they are nor on the
// instruction set.
//
// The looks: one engine over fifty recipes. A recipe is a file of the folder "Effects" in the program's folder
// `resourceDir` (a null-terminated const wchar_t*); null or an empty text stands for the folder of the call before.
// What a recipe may say stands in docs/effects.md; the title of each of the fifty is in its file. Alpha stays. Position
// counts in fractions of the picture and grain in units of its diagonal, so that a reduced picture shows the same look.
//
// A call gives non-zero when it is done, and 0 when an argument is refused, the recipe cannot be read (nothing has
// changed then), or the sink asked to stop: then part of the rows is done, and the caller puts the picture back.
// Progress goes from `start` to `end` percent on the calling thread; a null sink is legal. Nothing is thrown but
// std::bad_alloc.
class CEffect {
  public:
    // Film: rich colour stocks with gentle shoulders.
    static int Effect_VSCO_K1(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_JiaoPianQuince(unsigned char* pixels, int width, int height, void* resourceDir,
                                     CObjProgress* progress, int start, int end);
    static int Effect_VSCO_G2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_C1(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_A3(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_QingLiang(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                                int start, int end);
    static int Effect_VSCO_A2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_M5(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);

    // Pola: instant film.
    static int Effect_VSCO_H2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_P7(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_P1(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_P5(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_P6(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_P9(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_P4(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);

    // Lomo: cross processed, with a strong vignette.
    static int Effect_LiuNian(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_YunDuan(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_JingdianLomoQuince(unsigned char* pixels, int width, int height, void* resourceDir,
                                         CObjProgress* progress, int start, int end);
    static int Effect_YouGe(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end);
    static int Effect_EarlyBird(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                                int start, int end);
    static int Effect_FenHongJiaRenQuince(unsigned char* pixels, int width, int height, void* resourceDir,
                                          CObjProgress* progress, int start, int end);
    static int Effect_Hudson(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                             int start, int end);
    static int Effect_YiZhouQuince(unsigned char* pixels, int width, int height, void* resourceDir,
                                   CObjProgress* progress, int start, int end);

    // Vintage: aged dyes and worn borders.
    static int Effect_FuGuQuince(unsigned char* pixels, int width, int height, void* resourceDir,
                                 CObjProgress* progress, int start, int end);
    static int Effect_GuTongSe(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                               int start, int end);
    static int Effect_VSCO_P2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_1970(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                                int start, int end);
    static int Effect_VSCO_S4(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_SE2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                               int start, int end);
    static int Effect_GeTeFengQuince(unsigned char* pixels, int width, int height, void* resourceDir,
                                     CObjProgress* progress, int start, int end);

    // Fade: matte blacks and quiet colour.
    static int Effect_VSCO_T2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_M4(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_T1(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_SE1(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                               int start, int end);
    static int Effect_VSCO_T3(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_H5(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);

    // BW: black and white.
    static int Effect_HeiBai(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                             int start, int end);
    static int Effect_VSCO_X6(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_Silver(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                             int start, int end);
    static int Effect_VSCO_B4(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_X3(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_B2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_VSCO_X4(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);

    // Leaker: light leaks.
    static int Effect_LEAK_1(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                             int start, int end);
    static int Effect_LEAK_6(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                             int start, int end);
    static int Effect_LEAK_7(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                             int start, int end);
    static int Effect_LEAK_9(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                             int start, int end);
    static int Effect_LEAK_15(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end);
    static int Effect_LEAK_LIGHT_LEAK(unsigned char* pixels, int width, int height, void* resourceDir,
                                      CObjProgress* progress, int start, int end);
    static int Effect_LEAK_LIGHT_LEAK_17(unsigned char* pixels, int width, int height, void* resourceDir,
                                         CObjProgress* progress, int start, int end);

    // target = target * (1 - t) + other * t in all four bytes, t from 0 to 1, anything beyond held there; 0 leaves the
    // target as it is and 1 gives the other, exactly. t counts in steps of 2^-20, so that a result is that of exact
    // arithmetic rounded to the nearest (halves up) unless that lies within 0.0002 of a half.
    static void Effect_AlphaAdJust(unsigned char* target, unsigned char* other, int width, int height, double t);

    // Lays `layer` (as large as the picture) over `picture` in one of the modes of eBlendMode, by its alpha: the result
    // of the mode counts where both have colour, the layer alone where the picture is transparent. The picture's alpha
    // becomes that of both together; a picture that is opaque stays so. 0 for a mode that is none. Instruction sets may
    // differ by one level.
    static int ChannelBlend_X(unsigned char* picture, unsigned char* layer, int width, int height, int blendMode,
                              CObjProgress* progress, int start, int end);
};
