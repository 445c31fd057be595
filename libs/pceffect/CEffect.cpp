// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEffect.h"

#include <cmath>
#include <exception>
#include <new>

#include "Bitmap.h"
#include "EffectKernels.h"
#include "LookShelf.h"
#include "Rows.h"

namespace {

int RunEffect(EffectId effect, unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
              int start, int end) {
    if (!pixels || !Bitmap::Allowed(width, height)) return 0;
    std::shared_ptr<const Look> look;
    try {
        const wchar_t* folder = static_cast<const wchar_t*>(resourceDir);
        look = LookShelf::Take(folder ? std::filesystem::path(folder) : std::filesystem::path(), IndexOf(effect));
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return 0;  // a folder whose name is no text
    }
    return look ? look->Apply(pixels, width, height, {progress, start, end}) : 0;
}

}  // namespace

#define QUINCE_DEFINE_EFFECT(function, stem)                                                                       \
    int CEffect::function(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress, \
                          int start, int end) {                                                                    \
        return RunEffect(EffectId::function, pixels, width, height, resourceDir, progress, start, end);            \
    }
QUINCE_EFFECTS(QUINCE_DEFINE_EFFECT)
#undef QUINCE_DEFINE_EFFECT

void CEffect::Effect_AlphaAdJust(unsigned char* target, unsigned char* other, int width, int height, double t) {
    if (!target || !other || !Bitmap::Allowed(width, height) || !(t > 0.0)) return;
    const int weight = static_cast<int>(std::lround(std::fmin(t, 1.0) * (1 << 20)));
    const std::size_t stride = std::size_t{4} * width;
    ForEachBand(height, GrainOf(width), [&](int first, int last) {
        EffectKernelsInUse().fadeRow(target + first * stride, other + first * stride, (last - first) * stride, weight);
    });
}

int CEffect::ChannelBlend_X(unsigned char* picture, unsigned char* layer, int width, int height, int blendMode,
                            CObjProgress* progress, int start, int end) {
    if (!picture || !layer || !Bitmap::Allowed(width, height) || blendMode < 0 || blendMode >= BlendModeCount) return 0;
    const std::ptrdiff_t stride = std::ptrdiff_t{4} * width;
    return RunRows({progress, start, end}, height, GrainOf(width), [&](int first, int last) {
        for (int y = first; y < last; ++y)
            EffectKernelsInUse().blendRow(picture + y * stride, layer + y * stride, width, blendMode);
    });
}
