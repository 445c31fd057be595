// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "BlendModes.h"
#include "CObjProgress.h"
#include "EffectList.h"

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
    // One function for each row of EffectList.h.
#define QUINCE_DECLARE_EFFECT(function, stem)                                                                    \
    static int function(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress, \
                        int start, int end);
    QUINCE_EFFECTS(QUINCE_DECLARE_EFFECT)
#undef QUINCE_DECLARE_EFFECT

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

// The fifty by index.
using EffectFunction = int (*)(unsigned char*, int, int, void*, CObjProgress*, int, int);
inline constexpr std::array<EffectFunction, EffectListCount> EffectFunctions{
#define QUINCE_EFFECT_FUNCTION(function, stem) &CEffect::function,
    QUINCE_EFFECTS(QUINCE_EFFECT_FUNCTION)
#undef QUINCE_EFFECT_FUNCTION
};
