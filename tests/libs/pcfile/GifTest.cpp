// SPDX-License-Identifier: GPL-3.0-or-later
#include "CodecFiles.h"
#include "HandMade.h"
#include "PixelRow.h"
#include "Readers.h"
#include "RecordingTarget.h"
#include "TestPictures.h"

using Gif = PictureFolder;
using TestPictures::PixelAt;

namespace {

using HandMade::Put16;

// A file with one frame. The codes are of three bits, with a clear code often enough that they stay so.
struct GifFile {
    std::uint32_t screenWidth = 0, screenHeight = 0, left = 0, top = 0, width = 0, height = 0;
    std::vector<int> colours;  // of the frame's pixels in the file's order: 0 to 3 are red, green, blue, white
    bool interlaced = false;
    int transparent = -1;
    bool ownPalette = false;  // behind the frame instead of the screen

    Bytes Write() const;
};

void PutPalette(Bytes& gif) {
    gif.insert(gif.end(), {0xFF, 0, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF});
}

void PutCodes(Bytes& gif, const std::vector<int>& colours) {
    Bytes codes;
    std::uint32_t bits = 0;
    int count = 0;
    const auto put = [&](int code) {
        bits |= static_cast<std::uint32_t>(code) << count;
        count += 3;
        while (count >= 8) {
            codes.push_back(static_cast<std::uint8_t>(bits));
            bits >>= 8;
            count -= 8;
        }
    };
    for (std::size_t i = 0; i < colours.size(); ++i) {
        if (i % 2 == 0) put(4);
        put(colours[i]);
    }
    put(5);
    codes.push_back(static_cast<std::uint8_t>(bits));
    gif.push_back(2);
    for (std::size_t at = 0; at < codes.size(); at += 255) {
        const std::size_t length = std::min<std::size_t>(255, codes.size() - at);
        gif.push_back(static_cast<std::uint8_t>(length));
        gif.insert(gif.end(), codes.begin() + std::ptrdiff_t(at), codes.begin() + std::ptrdiff_t(at + length));
    }
    gif.push_back(0);
}

Bytes GifFile::Write() const {
    Bytes gif;
    HandMade::PutText(gif, "GIF89a");
    Put16(gif, screenWidth);
    Put16(gif, screenHeight);
    gif.insert(gif.end(), {static_cast<std::uint8_t>(ownPalette ? 0 : 0x81), 0, 0});
    if (!ownPalette) PutPalette(gif);
    gif.insert(gif.end(), {0x21, 0xFE, 2, 'h', 'i', 0});
    if (transparent >= 0) gif.insert(gif.end(), {0x21, 0xF9, 4, 1, 0, 0, static_cast<std::uint8_t>(transparent), 0});
    gif.push_back(0x2C);
    for (const std::uint32_t value : {left, top, width, height}) Put16(gif, value);
    gif.push_back(static_cast<std::uint8_t>((ownPalette ? 0x81 : 0) | (interlaced ? 0x40 : 0)));
    if (ownPalette) PutPalette(gif);
    PutCodes(gif, colours);
    gif.push_back(0x3B);
    return gif;
}

constexpr std::uint32_t Red = 0xFFFF0000, Green = 0xFF00FF00, Blue = 0xFF0000FF, White = 0xFFFFFFFF, None = 0;

}  // namespace

TEST_F(Gif, AFrameLargerThanItsScreenShowsTheScreensPart) {
    GifFile gif{2, 2, 0, 0, 3, 4, {0, 1, 2, 2, 3, 0, 1, 1, 1, 0, 0, 0}};
    const Bitmap picture = Open(gif.Write());
    EXPECT_EQ(picture.Width(), 2);
    EXPECT_EQ(Row(picture), Pixels({Red, Green, Blue, White}));
    gif.left = 1;
    gif.top = 1;
    EXPECT_EQ(Row(Open(gif.Write())), Pixels({None, None, None, Red}));
    gif.left = 2;
    EXPECT_EQ(Row(Open(gif.Write())), Pixels({None, None, None, None}));
}

TEST_F(Gif, AFrameSmallerThanItsScreenLeavesTheRestClear) {
    GifFile gif{3, 2, 1, 0, 2, 1, {2, 1}};
    EXPECT_EQ(Row(Open(gif.Write())), Pixels({None, Blue, Green, None, None, None}));
    gif.transparent = 1;
    EXPECT_EQ(Row(Open(gif.Write())), Pixels({None, Blue, None, None, None, None}));
    gif.ownPalette = true;
    EXPECT_EQ(Row(Open(gif.Write())), Pixels({None, Blue, None, None, None, None}));
}

TEST_F(Gif, AScreenWithoutASizeIsAsLargeAsItsFrame) {
    EXPECT_EQ(Row(Open(GifFile{0, 0, 0, 0, 1, 2, {3, 0}}.Write())), Pixels({White, Red}));
}

TEST_F(Gif, InterlacedRowsFindTheirPlaces) {
    // Rows 0 and 8, then 4, then 2 and 6, then the odd ones.
    const GifFile gif{1, 9, 0, 0, 1, 9, {0, 0, 1, 2, 2, 3, 3, 3, 3}, true};
    EXPECT_EQ(Row(Open(gif.Write())), Pixels({Red, White, Blue, White, Green, White, Blue, White, Red}));
    const GifFile low{1, 2, 0, 0, 1, 2, {1, 2}, true};
    EXPECT_EQ(Row(Open(low.Write())), Pixels({Green, Blue}));
}

TEST_F(Gif, LongStringsAndFullTablesOpenExactly) {
    const Bitmap ramp = TestPictures::Ramp(200, 40);
    EXPECT_TRUE(Open(MakeByMagick(ramp, "GIF")) == ramp);
    // Noise of 16 colours fills the table of 4096 strings many times.
    Bitmap noise = TestPictures::Noise(200, 150, 5);
    std::uint8_t* p = noise.MutablePixels();
    for (std::size_t i = 0; i < noise.ByteCount(); i += 4)
        p[i] = p[i + 1] = p[i + 2] = static_cast<std::uint8_t>(p[i] / 16 * 17);
    EXPECT_TRUE(Open(MakeByMagick(noise, "GIF")) == noise);
    const Bitmap plain = TestPictures::Plain(500, 400, 0xFF336699u);
    EXPECT_TRUE(Open(MakeByMagick(plain, "GIF")) == plain);
}

TEST_F(Gif, CodesThatWereNeverMadeAreRefused) {
    Bytes gif = GifFile{2, 1, 0, 0, 2, 1, {0, 1}}.Write();
    // Clear, then code 7, which nothing has defined.
    const Bytes codes = {2, 1, 4 | 7 << 3, 0, 0x3B};
    gif.resize(gif.size() - 6);
    gif.insert(gif.end(), codes.begin(), codes.end());
    EXPECT_TRUE(Open(gif).IsNull());
}

TEST_F(Gif, NoMemoryIsAskedForThatTheBytesCannotFill) {
    const Bytes bytes = GifFile{20000, 20000, 0, 0, 20000, 20000, {0, 1, 2}}.Write();
    RecordingTarget target;
    EXPECT_FALSE(ReadGif(bytes.data(), bytes.size(), target));
    EXPECT_EQ(target.most, 0);
}
