// SPDX-License-Identifier: GPL-3.0-or-later
#include "CodecModule.h"
#include "HandMade.h"
#include "PictureFolder.h"
#include "PixelRow.h"
#include "RecordingTarget.h"

using Tga = PictureFolder;

namespace {

using HandMade::Put16;

// A file of one row or more, field by field.
struct TgaFile {
    int type = 2, bits = 24, alphaBits = 0;
    std::uint32_t width = 0, height = 1;
    bool upwards = false, leftwards = false;
    std::uint32_t mapFirst = 0, mapCount = 0;
    int mapBits = 0;
    Bytes map, pixels;

    Bytes Write() const {
        Bytes tga = {3, static_cast<std::uint8_t>(mapCount > 0), static_cast<std::uint8_t>(type)};
        Put16(tga, mapFirst);
        Put16(tga, mapCount);
        tga.push_back(static_cast<std::uint8_t>(mapBits));
        Put16(tga, 0);
        Put16(tga, 0);
        Put16(tga, width);
        Put16(tga, height);
        tga.push_back(static_cast<std::uint8_t>(bits));
        tga.push_back(static_cast<std::uint8_t>(alphaBits | (leftwards ? 0x10 : 0) | (upwards ? 0 : 0x20)));
        tga.insert(tga.end(), {'i', 'd', '!'});
        tga.insert(tga.end(), map.begin(), map.end());
        tga.insert(tga.end(), pixels.begin(), pixels.end());
        return tga;
    }
};

// The end of a newer file, whose extension says what alpha is.
void PutExtension(Bytes& tga, int alphaKind) {
    const auto start = static_cast<std::uint32_t>(tga.size());
    tga.resize(tga.size() + 495);
    tga.back() = static_cast<std::uint8_t>(alphaKind);
    HandMade::Put32(tga, start);
    HandMade::Put32(tga, 0);
    HandMade::PutText(tga, "TRUEVISION-XFILE.");
    tga.push_back(0);
}

}  // namespace

TEST_F(Tga, GreyWithAlphaPlainAndInRuns) {
    TgaFile file{3, 16, 8, 3};
    file.pixels = {10, 255, 200, 128, 255, 0};
    const Pixels expected = {0xFF0A0A0A, 0x80C8C8C8, 0x00FFFFFF};
    EXPECT_EQ(Row(Open(file.Write())), expected);
    file.type = 11;
    file.pixels = {0x80, 10, 255, 0x01, 200, 128, 255, 0};
    EXPECT_EQ(Row(Open(file.Write())), expected);
    file = TgaFile{3, 8, 0, 2};
    file.pixels = {7, 250};
    EXPECT_EQ(Row(Open(file.Write())), Pixels({0xFF070707, 0xFFFAFAFA}));
}

TEST_F(Tga, ColourMapsMayStartAtAnyNumber) {
    TgaFile file{1, 8, 0, 4};
    file.mapFirst = 100;
    file.mapCount = 2;
    file.mapBits = 24;
    file.map = {1, 2, 3, 4, 5, 6};
    file.pixels = {100, 101, 99, 102};
    // The last two are not in the map.
    const Pixels expected = {0xFF030201, 0xFF060504, 0xFF000000, 0xFF000000};
    EXPECT_EQ(Row(Open(file.Write())), expected);
    file.type = 9;
    file.pixels = {0x03, 100, 101, 99, 102};
    EXPECT_EQ(Row(Open(file.Write())), expected);
    file.mapBits = 32;
    file.map = {1, 2, 3, 0x40, 4, 5, 6, 0xFF};
    EXPECT_EQ(Row(Open(file.Write())), Pixels({0x40030201, 0xFF060504, 0xFF000000, 0xFF000000}));
    file.mapBits = 15;
    file.map = {0x1F, 0x7C, 0xE0, 0x83};
    EXPECT_EQ(Row(Open(file.Write())), Pixels({0xFFFF00FF, 0xFF00FF00, 0xFF000000, 0xFF000000}));
}

TEST_F(Tga, SixteenBitsReachBothEndsAndHoldOneOfAlpha) {
    TgaFile file{2, 16, 1, 3};
    file.pixels = {0x1F, 0xFC, 0xE0, 0x03, 0x08, 0x80};
    EXPECT_EQ(Row(Open(file.Write())), Pixels({0xFFFF00FF, 0x0000FF00, 0xFF000042}));
    file.bits = 15;
    EXPECT_EQ(Row(Open(file.Write())), Pixels({0xFFFF00FF, 0xFF00FF00, 0xFF000042}));
}

TEST_F(Tga, RowsAndColumnsInAllFourOrders) {
    const Bytes pixels = {1, 2, 3, 4, 5, 6};
    const Pixels grey = {0xFF010101, 0xFF020202, 0xFF030303, 0xFF040404, 0xFF050505, 0xFF060606};
    const int orders[4][6] = {{0, 1, 2, 3, 4, 5}, {3, 4, 5, 0, 1, 2}, {2, 1, 0, 5, 4, 3}, {5, 4, 3, 2, 1, 0}};
    for (int order = 0; order < 4; ++order) {
        TgaFile file{3, 8, 0, 3, 2, (order & 1) != 0, (order & 2) != 0};
        file.pixels = pixels;
        Pixels expected;
        for (const int i : orders[order]) expected.push_back(grey[static_cast<std::size_t>(i)]);
        EXPECT_EQ(Row(Open(file.Write())), expected) << order;
    }
}

TEST_F(Tga, AlphaIsWhatTheExtensionSaysAndNeverHidesAll) {
    TgaFile file{2, 32, 8, 2};
    file.pixels = {10, 20, 30, 128, 1, 2, 3, 255};
    EXPECT_EQ(Row(Open(file.Write())), Pixels({0x801E140A, 0xFF030201}));
    const std::pair<int, std::uint32_t> kinds[] = {{0, 0xFF1E140A}, {2, 0xFF1E140A}, {3, 0x801E140A}, {4, 0x803C2814}};
    for (const auto& [kind, first] : kinds) {
        Bytes bytes = file.Write();
        PutExtension(bytes, kind);
        EXPECT_EQ(Row(Open(bytes)), Pixels({first, 0xFF030201})) << kind;
    }
    file.pixels = {10, 20, 30, 0, 1, 2, 3, 0};
    EXPECT_EQ(Row(Open(file.Write())), Pixels({0xFF1E140A, 0xFF030201}));
}

TEST_F(Tga, RunsMayPassTheEndOfARow) {
    TgaFile file{11, 8, 0, 2, 2};
    file.pixels = {0x82, 9, 0x00, 7};
    EXPECT_EQ(Row(Open(file.Write())), Pixels({0xFF090909, 0xFF090909, 0xFF090909, 0xFF070707}));
    file.pixels.pop_back();
    EXPECT_TRUE(Open(file.Write()).IsNull());
}

TEST_F(Tga, NoMemoryIsAskedForThatTheBytesCannotFill) {
    for (const int type : {1, 2, 3, 9, 10, 11}) {
        TgaFile file{type, type % 8 == 2 ? 24 : 8, 0, 20000, 20000};
        if (type % 8 == 1) {
            file.mapCount = 1;
            file.mapBits = 24;
            file.map = {0, 0, 0};
        }
        file.pixels.resize(3000, 0xFF);
        const Bytes bytes = file.Write();
        RecordingTarget target;
        EXPECT_FALSE(ReadByModule(PictureFormat::Tga, bytes.data(), bytes.size(), target)) << type;
        EXPECT_EQ(target.most, 0) << type;
    }
}
