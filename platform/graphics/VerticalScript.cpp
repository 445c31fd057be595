// SPDX-License-Identifier: GPL-3.0-or-later
#include "VerticalScript.h"

#include <algorithm>
#include <array>

namespace {

struct Block {
    char32_t first;
    char32_t last;
};

// Hangul, radicals to Yi, compatibility forms, full widths, symbols and emoji, the supplementary ideographic planes.
constexpr std::array<Block, 15> UprightBlocks{{{0x1100, 0x11FF},
                                               {0x2600, 0x27BF},
                                               {0x2B00, 0x2BFF},
                                               {0x2E80, 0xA4CF},
                                               {0xA960, 0xA97F},
                                               {0xAC00, 0xD7FF},
                                               {0xF900, 0xFAFF},
                                               {0xFE10, 0xFE1F},
                                               {0xFE30, 0xFE48},
                                               {0xFE50, 0xFE6F},
                                               {0xFF01, 0xFF60},
                                               {0xFFE0, 0xFFE7},
                                               {0x1F000, 0x1FAFF},
                                               {0x20000, 0x2FFFD},
                                               {0x30000, 0x3FFFD}}};

// Brackets, dashes and the long vowel mark turn with the column though they stand in those blocks.
constexpr std::array<Block, 9> SidewaysBlocks{{{0x3008, 0x3011},
                                               {0x3014, 0x301F},
                                               {0x3030, 0x3030},
                                               {0x30A0, 0x30A0},
                                               {0x30FC, 0x30FC},
                                               {0xFF08, 0xFF09},
                                               {0xFF0D, 0xFF0D},
                                               {0xFF3B, 0xFF3D},
                                               {0xFF5B, 0xFF60}}};

constexpr std::array<char32_t, 4> UpperRightMarks{0x3001, 0x3002, 0xFF0C, 0xFF0E};

template <std::size_t Count>
bool IsIn(const std::array<Block, Count>& blocks, char32_t character) {
    return std::any_of(blocks.begin(), blocks.end(),
                       [=](const Block& block) { return character >= block.first && character <= block.last; });
}

}  // namespace

UprightForm UprightFormOf(const QString& cluster) {
    if (cluster.isEmpty()) return UprightForm::Sideways;
    const bool pair = cluster.size() > 1 && cluster[0].isHighSurrogate() && cluster[1].isLowSurrogate();
    const char32_t character =
        pair ? QChar::surrogateToUcs4(cluster[0], cluster[1]) : static_cast<char32_t>(cluster[0].unicode());
    if (std::find(UpperRightMarks.begin(), UpperRightMarks.end(), character) != UpperRightMarks.end())
        return UprightForm::UpperRight;
    const bool upright = IsIn(UprightBlocks, character) && !IsIn(SidewaysBlocks, character);
    return upright ? UprightForm::Upright : UprightForm::Sideways;
}
