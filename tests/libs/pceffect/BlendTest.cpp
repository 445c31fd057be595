// SPDX-License-Identifier: GPL-3.0-or-later
// ChannelBlend_X against the formulas of Compositing and Blending Level 1, written down once more in plain doubles.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "CEffect.h"
#include "InstructionSets.h"
#include "TestPictures.h"
#include "WatchfulSink.h"

namespace {

using Rgb = std::array<double, 3>;

double Plain(int mode, double b, double l) {
    switch (mode) {
        case BlendNormal:
            return l;
        case BlendMultiply:
            return b * l;
        case BlendScreen:
            return 1 - (1 - b) * (1 - l);
        case BlendOverlay:
            return Plain(BlendHardLight, l, b);
        case BlendDarken:
            return std::min(b, l);
        case BlendLighten:
            return std::max(b, l);
        case BlendColorDodge:
            return b == 0 ? 0 : l == 1 ? 1 : std::min(1.0, b / (1 - l));
        case BlendColorBurn:
            return b == 1 ? 1 : l == 0 ? 0 : 1 - std::min(1.0, (1 - b) / l);
        case BlendHardLight:
            return l <= 0.5 ? Plain(BlendMultiply, b, 2 * l) : Plain(BlendScreen, b, 2 * l - 1);
        case BlendSoftLight:
            if (l <= 0.5) return b - (1 - 2 * l) * b * (1 - b);
            return b + (2 * l - 1) * ((b <= 0.25 ? ((16 * b - 12) * b + 4) * b : std::sqrt(b)) - b);
        case BlendDifference:
            return std::abs(b - l);
        case BlendExclusion:
            return b + l - 2 * b * l;
        case BlendAdd:
            return std::min(1.0, b + l);
        case BlendSubtract:
            return std::max(0.0, b - l);
        default:
            return -1;
    }
}

double Lum(const Rgb& c) {
    return 0.3 * c[0] + 0.59 * c[1] + 0.11 * c[2];
}

double Sat(const Rgb& c) {
    return *std::max_element(c.begin(), c.end()) - *std::min_element(c.begin(), c.end());
}

Rgb ClipColor(Rgb c) {
    const double lum = Lum(c), low = *std::min_element(c.begin(), c.end()),
                 high = *std::max_element(c.begin(), c.end());
    for (double& v : c) {
        if (low < 0) v = lum + (v - lum) * lum / (lum - low);
        if (high > 1) v = lum + (v - lum) * (1 - lum) / (high - lum);
    }
    return c;
}

Rgb SetLum(Rgb c, double lum) {
    const double d = lum - Lum(c);
    for (double& v : c) v += d;
    return ClipColor(c);
}

// The three channels by rank, as the text of the recommendation has it.
Rgb SetSat(const Rgb& c, double sat) {
    std::array<int, 3> rank{0, 1, 2};
    std::sort(rank.begin(), rank.end(), [&](int a, int b) { return c[a] < c[b]; });
    Rgb out{};
    if (c[rank[2]] > c[rank[0]]) {
        out[rank[1]] = (c[rank[1]] - c[rank[0]]) * sat / (c[rank[2]] - c[rank[0]]);
        out[rank[2]] = sat;
    }
    return out;
}

Rgb Mixed(int mode, const Rgb& b, const Rgb& l) {
    switch (mode) {
        case BlendHue:
            return SetLum(SetSat(l, Sat(b)), Lum(b));
        case BlendSaturation:
            return SetLum(SetSat(b, Sat(l)), Lum(b));
        case BlendColor:
            return SetLum(l, Lum(b));
        case BlendLuminosity:
            return SetLum(b, Lum(l));
        default:
            return {Plain(mode, b[0], l[0]), Plain(mode, b[1], l[1]), Plain(mode, b[2], l[2])};
    }
}

Rgb ColourAt(const std::uint8_t* pixel) {
    return {pixel[2] / 255.0, pixel[1] / 255.0, pixel[0] / 255.0};
}

class EveryMode : public testing::TestWithParam<int> {
  protected:
    // Every pixel of `out` is what the recommendation says.
    static void ExpectFormula(const Bitmap& picture, const Bitmap& layer, const Bitmap& out) {
        for (std::size_t i = 0; i < out.ByteCount(); i += 4) {
            const std::uint8_t *p = picture.Pixels() + i, *l = layer.Pixels() + i, *o = out.Pixels() + i;
            const double below = p[3] / 255.0, above = l[3] / 255.0, whole = above + below * (1 - above);
            ASSERT_NEAR(o[3], 255 * whole, 0.501);
            if (whole == 0) continue;
            const Rgb b = ColourAt(p), c = ColourAt(l), mixed = Mixed(GetParam(), b, c);
            for (int k = 0; k < 3; ++k) {
                const double sum = above * (1 - below) * c[k] + above * below * mixed[k] + (1 - above) * below * b[k];
                ASSERT_NEAR(o[2 - k], 255 * std::clamp(sum / whole, 0.0, 1.0), 0.51) << i;
            }
        }
    }
    Bitmap Blended(const Bitmap& picture, Bitmap layer) const {
        Bitmap out = picture;
        EXPECT_NE(CEffect::ChannelBlend_X(out.MutablePixels(), layer.MutablePixels(), out.Width(), out.Height(),
                                          GetParam(), nullptr, 0, 100),
                  0);
        return out;
    }
};

}  // namespace

TEST_P(EveryMode, IsTheFormula) {
    const Bitmap picture = TestPictures::Noise(97, 53, 11, false), layer = TestPictures::Noise(97, 53, 12, false);
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        const Bitmap out = Blended(picture, layer);
        ExpectFormula(picture, layer, out);
    }
    SelectKernelSet(-1);
}

TEST_P(EveryMode, ATransparentLayerChangesNothing) {
    const Bitmap picture = TestPictures::Noise(31, 9, 4, false);
    EXPECT_TRUE(Blended(picture, TestPictures::Plain(31, 9, 0x00123456)) == picture);
}

TEST_P(EveryMode, ATransparentPictureBecomesTheLayer) {
    const Bitmap layer = TestPictures::Noise(31, 9, 4, true);
    EXPECT_TRUE(Blended(TestPictures::Plain(31, 9, 0x00654321), layer) == layer);
}

TEST_P(EveryMode, AnOpaquePictureStaysOpaque) {
    EXPECT_TRUE(Blended(TestPictures::Noise(31, 9, 4), TestPictures::Noise(31, 9, 5, false)).IsOpaque());
}

INSTANTIATE_TEST_SUITE_P(Modes, EveryMode, testing::Range(0, int(BlendModeCount)));

TEST(ChannelBlend, RefusesAModeThatIsNone) {
    std::uint8_t picture[4] = {1, 2, 3, 255}, layer[4] = {9, 9, 9, 255};
    EXPECT_EQ(CEffect::ChannelBlend_X(picture, layer, 1, 1, -1, nullptr, 0, 100), 0);
    EXPECT_EQ(CEffect::ChannelBlend_X(picture, layer, 1, 1, BlendModeCount, nullptr, 0, 100), 0);
    EXPECT_EQ(CEffect::ChannelBlend_X(picture, nullptr, 1, 1, 0, nullptr, 0, 100), 0);
    EXPECT_EQ(picture[0], 1);
}

TEST(ChannelBlend, ReportsAndStops) {
    Bitmap picture = TestPictures::Noise(20, 500, 1), layer = TestPictures::Noise(20, 500, 2);
    WatchfulSink sink;
    EXPECT_NE(CEffect::ChannelBlend_X(picture.MutablePixels(), layer.MutablePixels(), 20, 500, 1, &sink, 20, 60), 0);
    EXPECT_FLOAT_EQ(sink.GetValue(), 60.0f);
    WatchfulSink impatient(0);
    EXPECT_EQ(CEffect::ChannelBlend_X(picture.MutablePixels(), layer.MutablePixels(), 20, 500, 1, &impatient, 0, 1), 0);
}
