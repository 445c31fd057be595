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

int RunEffect(int index, unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
              int start, int end) {
    if (!pixels || !Bitmap::Allowed(width, height)) return 0;
    std::shared_ptr<const Look> look;
    try {
        const wchar_t* folder = static_cast<const wchar_t*>(resourceDir);
        look = LookShelf::Take(folder ? std::filesystem::path(folder) : std::filesystem::path(), index);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return 0;  // a folder whose name is no text
    }
    return look ? look->Apply(pixels, width, height, {progress, start, end}) : 0;
}

}  // namespace

int CEffect::Effect_VSCO_K1(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(0, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_JiaoPianQuince(unsigned char* pixels, int width, int height, void* resourceDir,
                                   CObjProgress* progress, int start, int end) {
    return RunEffect(1, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_G2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(2, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_C1(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(3, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_A3(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(4, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_QingLiang(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end) {
    return RunEffect(5, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_A2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(6, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_M5(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(7, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_H2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(8, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_P7(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(9, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_P1(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(10, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_P5(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(11, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_P6(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(12, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_P9(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(13, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_P4(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(14, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_LiuNian(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(15, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_YunDuan(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(16, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_JingdianLomoQuince(unsigned char* pixels, int width, int height, void* resourceDir,
                                       CObjProgress* progress, int start, int end) {
    return RunEffect(17, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_YouGe(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                          int start, int end) {
    return RunEffect(18, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_EarlyBird(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end) {
    return RunEffect(19, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_FenHongJiaRenQuince(unsigned char* pixels, int width, int height, void* resourceDir,
                                        CObjProgress* progress, int start, int end) {
    return RunEffect(20, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_Hudson(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                           int start, int end) {
    return RunEffect(21, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_YiZhouQuince(unsigned char* pixels, int width, int height, void* resourceDir,
                                 CObjProgress* progress, int start, int end) {
    return RunEffect(22, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_FuGuQuince(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                               int start, int end) {
    return RunEffect(23, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_GuTongSe(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                             int start, int end) {
    return RunEffect(24, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_P2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(25, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_1970(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                              int start, int end) {
    return RunEffect(26, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_S4(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(27, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_SE2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                             int start, int end) {
    return RunEffect(28, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_GeTeFengQuince(unsigned char* pixels, int width, int height, void* resourceDir,
                                   CObjProgress* progress, int start, int end) {
    return RunEffect(29, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_T2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(30, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_M4(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(31, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_T1(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(32, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_SE1(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                             int start, int end) {
    return RunEffect(33, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_T3(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(34, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_H5(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(35, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_HeiBai(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                           int start, int end) {
    return RunEffect(36, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_X6(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(37, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_Silver(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                           int start, int end) {
    return RunEffect(38, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_B4(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(39, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_X3(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(40, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_B2(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(41, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_VSCO_X4(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(42, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_LEAK_1(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                           int start, int end) {
    return RunEffect(43, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_LEAK_6(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                           int start, int end) {
    return RunEffect(44, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_LEAK_7(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                           int start, int end) {
    return RunEffect(45, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_LEAK_9(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                           int start, int end) {
    return RunEffect(46, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_LEAK_15(unsigned char* pixels, int width, int height, void* resourceDir, CObjProgress* progress,
                            int start, int end) {
    return RunEffect(47, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_LEAK_LIGHT_LEAK(unsigned char* pixels, int width, int height, void* resourceDir,
                                    CObjProgress* progress, int start, int end) {
    return RunEffect(48, pixels, width, height, resourceDir, progress, start, end);
}

int CEffect::Effect_LEAK_LIGHT_LEAK_17(unsigned char* pixels, int width, int height, void* resourceDir,
                                       CObjProgress* progress, int start, int end) {
    return RunEffect(49, pixels, width, height, resourceDir, progress, start, end);
}

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
