// SPDX-License-Identifier: GPL-3.0-or-later
#include "BrushMix.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "Parallel.h"
#include "Rows.h"

namespace {

// Source over an opaque ground.
std::uint8_t Over(int ground, int colour, int alpha) {
    const unsigned sum = static_cast<unsigned>(ground * (255 - alpha) + colour * alpha) + 128;
    return static_cast<std::uint8_t>((sum + (sum >> 8)) >> 8);
}

std::uint8_t Mixed(int processed, int base, double weight) {
    return static_cast<std::uint8_t>(static_cast<int>(processed * weight + base * (1.0 - weight)));
}

// What the rows of a stamp need in memory.
struct Scratch {
    explicit Scratch(int width) : colours(4 * static_cast<std::size_t>(width)), alphas(colours.size()) {}
    std::vector<std::uint8_t> colours, alphas;
};

void MixRow(const std::uint8_t* base, const std::uint8_t* processed, double weight, std::size_t count,
            std::uint8_t* out) {
    for (std::size_t i = 0; i < count; ++i) out[i] = Mixed(processed[i], base[i], weight);
}

void LayRow(const std::uint8_t* colours, const std::uint8_t* alphas, std::size_t count, std::uint8_t* out) {
    for (std::size_t i = 0; i < count; ++i) out[i] = Over(out[i], colours[i], alphas[i]);
}

// The alphas of a row four times each, and none for the pixels' own alpha, which stays.
void SpreadAlphas(const std::uint8_t* table, int width, std::uint8_t* out) {
    for (int x = 0; x < width; ++x) {
        const std::uint32_t three = table[x] * 0x010101u;
        std::memcpy(out + 4 * std::ptrdiff_t{x}, &three, 4);
    }
}

constexpr int Block = 8;

// Pixels of a row by their masks, whose bytes lie `step` apart; a mask of 0 gives the base. Alpha, which is 255 in
// both, could lose a level by cutting off and is kept.
void MixBlock(const std::uint8_t* base, const std::uint8_t* processed, const std::uint8_t* mask, int step, double scale,
              int count, std::uint8_t* out) {
    double weights[4 * Block];
    std::uint8_t mixed[4 * Block];
    for (int x = 0; x < count; ++x) std::fill_n(weights + 4 * x, 4, mask[std::ptrdiff_t{x} * step] * scale);
    for (int i = 0; i < 4 * count; ++i) mixed[i] = Mixed(processed[i], base[i], weights[i]);
    for (int x = 0; x < count; ++x) mixed[4 * x + 3] = base[4 * x + 3];
    std::memcpy(out, mixed, static_cast<std::size_t>(4 * count));
}

// Where the first painted pixel at or after `x` may lie: whole words without paint are passed over.
int SkipUnpainted(const std::uint8_t* mask, int x, int width) {
    std::uint64_t word = 0;
    for (; x + 8 <= width; x += 8) {
        std::memcpy(&word, mask + x, 8);
        if (word != 0) break;
    }
    return x;
}

bool IsUnpainted(const std::uint8_t* greyPixels, int count) {
    std::uint32_t any = 0;
    for (int x = 0; x < count; ++x) any |= greyPixels[std::ptrdiff_t{4} * x];
    return any == 0;
}

void ForEachRow(const Bitmap& picture, const std::function<void(int)>& body) {
    ForEachBand(picture.Height(), GrainOf(picture.Width()), [&](int first, int last) {
        for (int y = first; y < last; ++y) body(y);
    });
}

}  // namespace

void LayStamp(const Stamp& stamp, const Bitmap& base, const Bitmap& processed, double weight, Bitmap& target) {
    std::uint8_t* out = target.MutablePixels();
    const std::ptrdiff_t left = std::ptrdiff_t{4} * stamp.part.x();
    const auto count = static_cast<std::size_t>(4 * stamp.part.width());
    ForEachBand(stamp.part.height(), GrainOf(stamp.part.width()), [&](int first, int last) {
        Scratch row(stamp.part.width());
        for (int y = stamp.part.top() + first; y < stamp.part.top() + last; ++y) {
            const std::uint8_t* alphas = stamp.tip.Row(y - stamp.place.y()) + (stamp.part.x() - stamp.place.x());
            SpreadAlphas(alphas, stamp.part.width(), row.alphas.data());
            MixRow(base.Row(y) + left, processed.Row(y) + left, weight, count, row.colours.data());
            LayRow(row.colours.data(), row.alphas.data(), count, out + y * target.Stride() + left);
        }
    });
}

void LayStamp(const Stamp& stamp, bool white, BrushMask& mask) {
    std::uint8_t* bytes = mask.MutableBytes();
    ForEachBand(stamp.part.height(), GrainOf(stamp.part.width()), [&](int first, int last) {
        for (int y = stamp.part.top() + first; y < stamp.part.top() + last; ++y) {
            const std::uint8_t* alphas = stamp.tip.Row(y - stamp.place.y()) + (stamp.part.x() - stamp.place.x());
            std::uint8_t* out = bytes + y * mask.Stride() + stamp.part.x();
            for (int x = 0; x < stamp.part.width(); ++x) out[x] = Over(out[x], white ? 255 : 0, alphas[x]);
        }
    });
}

void MixByMask(const Bitmap& base, const Bitmap& processed, const BrushMask& mask, double strength, Bitmap& target) {
    std::uint8_t* pixels = target.MutablePixels();
    const int width = target.Width();
    ForEachRow(target, [&](int y) {
        const std::uint8_t* painted = mask.Row(y);
        std::uint8_t* out = pixels + y * target.Stride();
        for (int x = SkipUnpainted(painted, 0, width); x < width;) {
            const int count = std::min(Block, width - x);
            const std::ptrdiff_t at = std::ptrdiff_t{4} * x;
            MixBlock(base.Row(y) + at, processed.Row(y) + at, painted + x, 1, strength / 255.0, count, out + at);
            x = SkipUnpainted(painted, x + count, width);
        }
    });
}

void MixByMask(const Bitmap& base, const Bitmap& processed, const Bitmap& mask, double strength, Bitmap& target) {
    std::uint8_t* pixels = target.MutablePixels();
    const int width = target.Width();
    ForEachRow(target, [&](int y) {
        for (int x = 0; x < width; x += Block) {
            const std::ptrdiff_t at = std::ptrdiff_t{4} * x;
            if (IsUnpainted(mask.Row(y) + at, std::min(Block, width - x))) continue;
            MixBlock(base.Row(y) + at, processed.Row(y) + at, mask.Row(y) + at, 4, strength / 255.0,
                     std::min(Block, width - x), pixels + y * target.Stride() + at);
        }
    });
}
