// SPDX-License-Identifier: GPL-3.0-or-later
// Pixels whose colours are multiplied by their alpha, against the plain formulas, in every instruction set.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "EffectKernels.h"
#include "TestPictures.h"

namespace {

struct Pixel {
    int c[3], alpha;
};

Pixel PixelAt(const std::uint8_t* bytes, int i) {
    const std::uint8_t* p = bytes + 4 * i;
    return {{p[0], p[1], p[2]}, p[3]};
}

int Rounded(double v) {
    return static_cast<int>(std::lround(v));
}

// What a pixel of the layer says in full range: up to its alpha, as much more as makes 240 into 255.
Pixel Full(const Pixel& over) {
    Pixel full = over;
    const int factor = 255 * 128 / std::max(over.alpha, OverOpaque);
    for (int& c : full.c) c = (std::min(c, over.alpha) * factor + 64) >> 7;
    full.alpha = over.alpha >= OverOpaque ? 255 : (over.alpha * factor + 64) >> 7;
    return full;
}

// Premultiplied pixels as stretching leaves them: colours and alphas may be beyond what they should.
std::vector<std::uint8_t> Layer(int count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(4 * count));
    for (int i = 0; i < count; ++i) {
        const unsigned kind = random() % 4;
        const unsigned alpha = kind == 0 ? 0 : kind == 1 ? 236 + random() % 20 : random() % 256;
        for (int c = 0; c < 3; ++c)
            bytes[static_cast<std::size_t>(4 * i + c)] = static_cast<std::uint8_t>(random() % (alpha + 12) % 256);
        bytes[static_cast<std::size_t>(4 * i + 3)] = static_cast<std::uint8_t>(alpha);
    }
    return bytes;
}

class PremultipliedRows : public testing::Test {
  protected:
    template <class Body>
    void InEverySet(const Body& body) {
        for (int set = 0; set < KernelSetCount(); ++set) {
            SCOPED_TRACE(EffectKernelSet(set).name);
            body(EffectKernelSet(set));
        }
    }
};

}  // namespace

TEST_F(PremultipliedRows, AreColoursTimesAlphaInFifteenSixteenths) {
    std::vector<std::uint8_t> straight, out(4 * 65536);
    for (int alpha = 0; alpha < 256; ++alpha)
        for (int c = 0; c < 256; ++c)
            for (const int byte : {c, 255 - c, c / 2, alpha}) straight.push_back(static_cast<std::uint8_t>(byte));
    InEverySet([&](const EffectKernels& kernels) {
        kernels.premultiplyRow(straight.data(), 65536, out.data());
        for (int i = 0; i < 65536; ++i) {
            const Pixel from = PixelAt(straight.data(), i), to = PixelAt(out.data(), i);
            ASSERT_EQ(to.alpha, Rounded(from.alpha * double(OverOpaque) / 255));
            for (int c = 0; c < 3; ++c) ASSERT_EQ(to.c[c], Rounded(from.c[c] * double(to.alpha) / 255));
        }
    });
}

TEST_F(PremultipliedRows, LieOverAnOpaqueGroundAsTheFormulaSays) {
    const Bitmap ground = TestPictures::Noise(997, 1, 5);
    const std::vector<std::uint8_t> layer = Layer(997, 6);
    std::vector<std::uint8_t> out(4 * 997);
    InEverySet([&](const EffectKernels& kernels) {
        kernels.overRow(ground.Pixels(), layer.data(), 997, out.data());
        for (int i = 0; i < 997; ++i) {
            const Pixel below = PixelAt(ground.Pixels(), i), full = Full(PixelAt(layer.data(), i));
            const Pixel result = PixelAt(out.data(), i);
            ASSERT_EQ(result.alpha, 255);
            for (int c = 0; c < 3; ++c)
                ASSERT_EQ(result.c[c], full.c[c] + Rounded(below.c[c] * (255.0 - full.alpha) / 255)) << i;
        }
    });
}

TEST_F(PremultipliedRows, LieOverATranslucentGroundByTheAlphaOfBoth) {
    Bitmap ground = TestPictures::Noise(997, 1, 5, false);
    std::uint8_t* bytes = ground.MutablePixels();
    for (int i = 0; i < 997; i += 3) bytes[4 * i + 3] = i % 2 ? 255 : 0;
    const std::vector<std::uint8_t> layer = Layer(997, 8);
    std::vector<std::uint8_t> out(4 * 997);
    InEverySet([&](const EffectKernels& kernels) {
        kernels.overRow(ground.Pixels(), layer.data(), 997, out.data());
        for (int i = 0; i < 997; ++i) {
            const Pixel below = PixelAt(ground.Pixels(), i), full = Full(PixelAt(layer.data(), i));
            const Pixel result = PixelAt(out.data(), i);
            if (full.alpha == 0) {
                ASSERT_EQ(std::memcmp(&out[static_cast<std::size_t>(4 * i)], ground.Pixels() + 4 * i, 4), 0) << i;
                continue;
            }
            const double rest = (255.0 - full.alpha) * below.alpha / 255, whole = full.alpha + rest;
            ASSERT_LE(std::abs(result.alpha - whole), 0.51) << i;
            for (int c = 0; c < 3; ++c) {
                const double mixed = (full.c[c] * 255.0 + below.c[c] * rest) / whole;
                ASSERT_LE(std::abs(result.c[c] - std::min(mixed, 255.0)), below.alpha == 255 ? 1.01 : 0.51) << i;
            }
        }
    });
}

TEST_F(PremultipliedRows, OfAnyLengthTouchNothingBehindTheirEnd) {
    const std::vector<std::uint8_t> layer = Layer(70, 2);
    const Bitmap ground = TestPictures::Noise(70, 1, 3, false);
    InEverySet([&](const EffectKernels& kernels) {
        std::vector<std::uint8_t> whole(4 * 70), product(4 * 70);
        kernels.overRow(ground.Pixels(), layer.data(), 70, whole.data());
        kernels.premultiplyRow(ground.Pixels(), 70, product.data());
        for (int count = 0; count <= 70; ++count) {
            const auto end = static_cast<std::size_t>(4 * count);
            std::vector<std::uint8_t> inPlace(ground.Pixels(), ground.Pixels() + 4 * 70), out(4 * 70, 77);
            kernels.overRow(inPlace.data(), layer.data(), count, inPlace.data());
            kernels.premultiplyRow(ground.Pixels(), count, out.data());
            EXPECT_EQ(std::memcmp(inPlace.data(), whole.data(), end), 0) << count;
            EXPECT_EQ(std::memcmp(inPlace.data() + end, ground.Pixels() + end, inPlace.size() - end), 0) << count;
            EXPECT_EQ(std::memcmp(out.data(), product.data(), end), 0) << count;
            EXPECT_TRUE(std::all_of(out.begin() + 4 * count, out.end(), [](int byte) { return byte == 77; })) << count;
        }
    });
}
