// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of the retouches against their plain twins, with every instruction set and lengths that fill no register.
#include <gtest/gtest.h>

#include <random>

#include "Kernels.h"
#include "PlainRetouch.h"
#include "TestPictures.h"

namespace {

constexpr int Slack = 16;
constexpr int Lengths[] = {1, 3, 7, 16, 31, 127, 1031};

class RetouchRows : public testing::Test {
  protected:
    void TearDown() override { SelectKernelSet(-1); }

    // Runs both on a row of noise. A level of difference is allowed where rounding may fall either way.
    template <class Fast, class Slow>
    static void Compare(const Fast& fast, const Slow& slow) {
        for (int set = 0; set < KernelSetCount(); ++set) {
            SelectKernelSet(set);
            for (const int length : Lengths) {
                Bitmap first = TestPictures::Noise(length, 1, 7, false), second = first;
                fast(first.MutablePixels(), length);
                slow(second.MutablePixels(), length);
                EXPECT_LE(TestPictures::LargestDifference(first, second), 1) << Kernels().name << ", " << length;
            }
        }
    }

    // Numbers between low and high, with the room behind the end that kernels read.
    static std::vector<float> Numbers(int count, float low, float high, unsigned seed) {
        std::mt19937 random(seed);
        std::vector<float> numbers(count + Slack);
        for (float& number : numbers) number = low + (high - low) * static_cast<float>(random() % 1000) / 999.0f;
        return numbers;
    }
};

// Rows of maps for the longest length.
struct Maps {
    std::vector<float> rows[6];
    MappedRow row;

    Maps(const std::vector<float>& a, const std::vector<float>& b) {
        for (int i = 0; i < 3; ++i) {
            rows[2 * i] = a;
            rows[2 * i + 1] = b;
            row.above[i] = rows[2 * i].data();
            row.below[i] = rows[2 * i + 1].data();
        }
        row.part = 0.3f;
    }
};

std::vector<std::uint32_t> Ramp() {
    std::vector<std::uint32_t> ramp(1024);
    for (std::uint32_t i = 0; i < 1024; ++i) ramp[i] = (i / 4) << 24 | (i / 5) << 16 | (255 - i / 4) << 8 | i / 8;
    return ramp;
}

}  // namespace

TEST_F(RetouchRows, ACorrectionIsAdded) {
    Maps maps(Numbers(1031, -40, 40, 1), Numbers(1031, -40, 40, 2));
    Compare([&](auto* p, int n) { Kernels().correctRow(p, n, maps.row); },
            [&](auto* p, int n) { Plain::CorrectRow(p, n, maps.row); });
}

TEST_F(RetouchRows, ACorrectionIsAddedByItsMask) {
    Maps maps(Numbers(1031, -40, 40, 3), Numbers(1031, -40, 40, 4));
    const Bitmap mask = TestPictures::Noise(300, 1, 5, false);
    maps.row.mask = mask.Pixels();
    Compare([&](auto* p, int n) { Kernels().correctRow(p, n, maps.row); },
            [&](auto* p, int n) { Plain::CorrectRow(p, n, maps.row); });
}

TEST_F(RetouchRows, ColoursFollowTheRamp) {
    // A light that lies on the border of two entries may take either: a step of this ramp is one level.
    const std::vector<std::uint32_t> ramp = Ramp();
    Compare([&](auto* p, int n) { Kernels().recolourRow(p, n, ramp.data()); },
            [&](auto* p, int n) { Plain::RecolourRow(p, n, ramp.data()); });
}

TEST_F(RetouchRows, TintFollowsRampAndMap) {
    const std::vector<std::uint32_t> ramp = Ramp();
    Maps maps(Numbers(1031, 0, 1, 6), Numbers(1031, 0, 1, 7));
    maps.row.ramp = ramp.data();
    Compare([&](auto* p, int n) { Kernels().tintRow(p, n, maps.row); },
            [&](auto* p, int n) { Plain::TintRow(p, n, maps.row); });
}

TEST_F(RetouchRows, TeethAreWhitenedByTheMap) {
    Maps maps(Numbers(1031, 0, 1, 8), Numbers(1031, 0, 1, 9));
    maps.row.lift = 1.8f;
    maps.row.perP = 4.0f;
    maps.row.perQ = 2.5f;
    Compare([&](auto* p, int n) { Kernels().teethRow(p, n, maps.row); },
            [&](auto* p, int n) { Plain::TeethRow(p, n, maps.row); });
}

TEST_F(RetouchRows, SumsAreExact) {
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        for (const int length : Lengths) {
            const Bitmap pixels = TestPictures::Noise(length, 1, 12, false);
            std::vector<std::uint16_t> sums(4 * length, 1000);
            Kernels().addRow(pixels.Pixels(), 4 * length, sums.data());
            for (int i = 0; i < 4 * length; ++i) ASSERT_EQ(sums[i], 1000 + pixels.Pixels()[i]);
        }
    }
}

TEST_F(RetouchRows, AGaussianIsTheWeightedSumOfItsRows) {
    constexpr float weights[] = {0.4f, 0.2f, 0.1f};
    std::vector<float> rows[5];
    const float* pointers[5];
    for (unsigned i = 0; i < 5; ++i) {
        rows[i] = Numbers(1031, 0, 255, 20 + i);
        pointers[i] = rows[i].data();
    }
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        for (const int length : Lengths) {
            std::vector<float> out(length + Slack);
            Kernels().gaussianRow({pointers, weights, 2}, length, out.data());
            for (int x = 0; x < length; ++x) {
                double sum = 0.4 * rows[2][x];
                for (int k = 1; k <= 2; ++k) sum += double(weights[k]) * (double(rows[2 - k][x]) + rows[2 + k][x]);
                ASSERT_NEAR(out[x], sum, 1e-3);
            }
        }
    }
}

TEST_F(RetouchRows, AWidenedRowLiesBetweenItsCells) {
    const std::vector<float> cells = Numbers(40, -5, 5, 30);
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        for (const int length : Lengths) {
            std::vector<int> index(length + Slack, 0);
            std::vector<float> part(length + Slack, 0.0f), out(length + Slack);
            for (int x = 0; x < length; ++x) {
                index[x] = x * 39 / length;
                part[x] = static_cast<float>(x % 7) / 7.0f;
            }
            Kernels().widenRow(cells.data(), index.data(), part.data(), length, out.data());
            for (int x = 0; x < length; ++x) {
                const double here = cells[index[x]], next = cells[index[x] + 1];
                ASSERT_NEAR(out[x], here + (next - here) * part[x], 1e-4);
            }
        }
    }
}

TEST_F(RetouchRows, AFaceGainsItsCorrectionsAndItsSurroundingsClarity) {
    Maps corrections(Numbers(1031, -30, 30, 1), Numbers(1031, -30, 30, 2));
    Maps details(Numbers(1031, 0, 1, 3), Numbers(1031, 0, 1, 4));
    const std::vector<float> offsets = Numbers(1031, 0, 60, 5);
    details.row.above[2] = details.row.below[2] = offsets.data();
    for (const float clarity : {0.0f, 0.4f})
        Compare([&](auto* p, int n) { Kernels().faceRow(p, n, corrections.row, details.row, clarity); },
                [&](auto* p, int n) { Plain::FaceRow(p, n, corrections.row, details.row, clarity); });
}

TEST_F(RetouchRows, NoChannelOfAFaceReachesAnEndThatItWasNotAt) {
    for (const float change : {-60.0f, -8.0f, 8.0f, 60.0f}) {
        const std::vector<float> numbers(256 + Slack, change);
        Maps maps(numbers, numbers);
        Bitmap ramp = TestPictures::Ramp(256, 1);
        Kernels().faceRow(ramp.MutablePixels(), 256, maps.row, maps.row, 0.0f);
        for (int x = 1; x < 255; ++x) {
            EXPECT_GT(ramp.Pixels()[4 * x], 0) << x << ", " << change;
            EXPECT_LT(ramp.Pixels()[4 * x], 255) << x << ", " << change;
        }
    }
}
