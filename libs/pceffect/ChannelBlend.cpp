// SPDX-License-Identifier: GPL-3.0-or-later
// Compositing and Blending Level 1 (W3C, 2015), sections 5.8, 10.1 and 10.2: source over with a blend function.
#include <algorithm>
#include <array>
#include <cmath>

#include "Bitmap.h"
#include "CEffect.h"
#include "Rows.h"

namespace {

using Rgb = std::array<float, 3>;

float HardLight(float b, float l) {
    return l <= 0.5f ? b * 2 * l : b + (2 * l - 1) - b * (2 * l - 1);
}

float SoftLight(float b, float l) {
    if (l <= 0.5f) return b - (1 - 2 * l) * b * (1 - b);
    const float bent = b <= 0.25f ? ((16 * b - 12) * b + 4) * b : std::sqrt(b);
    return b + (2 * l - 1) * (bent - b);
}

template <int Mode>
float BlendChannel(float b, float l) {
    switch (Mode) {
        case BlendMultiply:
            return b * l;
        case BlendScreen:
            return b + l - b * l;
        case BlendOverlay:
            return HardLight(l, b);
        case BlendDarken:
            return std::min(b, l);
        case BlendLighten:
            return std::max(b, l);
        case BlendColorDodge:
            return b <= 0 ? 0 : l >= 1 ? 1 : std::min(1.0f, b / (1 - l));
        case BlendColorBurn:
            return b >= 1 ? 1 : l <= 0 ? 0 : 1 - std::min(1.0f, (1 - b) / l);
        case BlendHardLight:
            return HardLight(b, l);
        case BlendSoftLight:
            return SoftLight(b, l);
        case BlendDifference:
            return std::abs(b - l);
        case BlendExclusion:
            return b + l - 2 * b * l;
        case BlendAdd:
            return std::min(1.0f, b + l);
        case BlendSubtract:
            return std::max(0.0f, b - l);
        default:
            return l;
    }
}

float Lum(const Rgb& c) {
    return 0.3f * c[0] + 0.59f * c[1] + 0.11f * c[2];
}

float Sat(const Rgb& c) {
    return std::max({c[0], c[1], c[2]}) - std::min({c[0], c[1], c[2]});
}

Rgb SetLum(Rgb c, float lum) {
    const float rise = lum - Lum(c);
    for (float& v : c) v += rise;
    const float low = std::min({c[0], c[1], c[2]}), high = std::max({c[0], c[1], c[2]}), middle = Lum(c);
    if (low < 0)
        for (float& v : c) v = middle + (v - middle) * middle / (middle - low);
    if (high > 1)
        for (float& v : c) v = middle + (v - middle) * (1 - middle) / (high - middle);
    return c;
}

Rgb SetSat(Rgb c, float sat) {
    const float low = std::min({c[0], c[1], c[2]}), range = Sat(c);
    for (float& v : c) v = range > 0 ? (v - low) * sat / range : 0;
    return c;
}

template <int Mode>
Rgb Blend(const Rgb& b, const Rgb& l) {
    if constexpr (Mode == BlendHue) return SetLum(SetSat(l, Sat(b)), Lum(b));
    if constexpr (Mode == BlendSaturation) return SetLum(SetSat(b, Sat(l)), Lum(b));
    if constexpr (Mode == BlendColor) return SetLum(l, Lum(b));
    if constexpr (Mode == BlendLuminosity) return SetLum(b, Lum(l));
    return {BlendChannel<Mode>(b[0], l[0]), BlendChannel<Mode>(b[1], l[1]), BlendChannel<Mode>(b[2], l[2])};
}

unsigned char Level(float v) {
    return static_cast<unsigned char>(std::clamp(v, 0.0f, 1.0f) * 255.0f + 0.5f);
}

template <int Mode>
void BlendPixel(unsigned char* picture, const unsigned char* layer) {
    if (layer[3] == 0) return;
    const float below = static_cast<float>(picture[3]) / 255.0f, above = static_cast<float>(layer[3]) / 255.0f;
    const float whole = above + below - above * below;
    Rgb b, l;
    for (int i = 0; i < 3; ++i) {
        b[i] = static_cast<float>(picture[2 - i]) / 255.0f;
        l[i] = static_cast<float>(layer[2 - i]) / 255.0f;
    }
    const Rgb mixed = Blend<Mode>(b, l);
    for (int i = 0; i < 3; ++i) {
        const float sum = (1 - above) * below * b[i] + above * (1 - below) * l[i] + above * below * mixed[i];
        picture[2 - i] = Level(sum / whole);
    }
    picture[3] = Level(whole);
}

template <int Mode>
void BlendPixels(unsigned char* picture, const unsigned char* layer, std::ptrdiff_t count) {
    for (std::ptrdiff_t i = 0; i < count; ++i) BlendPixel<Mode>(picture + 4 * i, layer + 4 * i);
}

using BlendRun = void (*)(unsigned char*, const unsigned char*, std::ptrdiff_t);

template <int... Modes>
constexpr std::array<BlendRun, sizeof...(Modes)> RunsOf(std::integer_sequence<int, Modes...>) {
    return {BlendPixels<Modes>...};
}
constexpr auto Runs = RunsOf(std::make_integer_sequence<int, BlendModeCount>());

}  // namespace

int CEffect::ChannelBlend_X(unsigned char* picture, unsigned char* layer, int width, int height, int blendMode,
                            CObjProgress* progress, int start, int end) {
    if (!picture || !layer || !Bitmap::Allowed(width, height) || blendMode < 0 || blendMode >= BlendModeCount) return 0;
    const std::ptrdiff_t stride = std::ptrdiff_t{4} * width;
    return RunRows({progress, start, end}, height, GrainOf(width), [&](int first, int last) {
        Runs[blendMode](picture + first * stride, layer + first * stride, std::ptrdiff_t{last - first} * width);
    });
}
