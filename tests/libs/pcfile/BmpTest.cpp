// SPDX-License-Identifier: GPL-3.0-or-later
#include "BmpFiles.h"
#include "HandMade.h"
#include "PixelRow.h"
#include "Readers.h"
#include "RecordingTarget.h"
#include "TestPictures.h"

using Bmp = PictureFolder;
using TestPictures::PixelAt;

namespace {

const std::vector<std::uint32_t> FourColours = {0x102030, 0xFF0080, 0x00FF7F, 0xC0FFEE};

// A picture of 5 × 3 in which every row and column differs, as numbers of a palette of 2^bits entries.
std::vector<std::vector<std::uint32_t>> Numbers(int bits) {
    const std::uint32_t most = (1u << bits) - 1;
    std::vector<std::vector<std::uint32_t>> rows(3);
    for (std::uint32_t y = 0; y < 3; ++y)
        for (std::uint32_t x = 0; x < 5; ++x) rows[y].push_back((x * x + 3 * y + (x == 4 ? y : 0)) & most);
    return rows;
}

// What stands for a number in a file of this depth, and the pixel that it shall become.
std::uint32_t Stored(int bits, std::uint32_t number) {
    switch (bits) {
        case 16:
            return number == 0 ? 0x7C00u : number == 1 ? 0x03E0u : number == 2 ? 0x001Fu : 0xFFFFu;
        case 24:
        case 32:
            return FourColours[number];
        default:
            return number;
    }
}

std::uint32_t Shown(int bits, std::uint32_t number) {
    static const std::uint32_t sixteen[] = {0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu, 0xFFFFFFFFu};
    return bits == 16 ? sixteen[number] : 0xFF000000u | FourColours[number % 4];
}

BmpFile FileOfDepth(int bits, bool topDown) {
    BmpFile file;
    file.width = 5;
    file.height = topDown ? -3 : 3;
    file.bits = bits;
    std::vector<Bytes> rows;
    for (auto row : Numbers(bits <= 8 ? bits : 2)) {
        for (std::uint32_t& number : row) number = Stored(bits, number);
        rows.push_back(BmpRow(bits, row));
    }
    if (bits <= 8)
        for (std::uint32_t i = 0; i < 1u << bits; ++i) file.palette.push_back(FourColours[i % 4]);
    file.pixels = topDown ? BmpRowsDownwards(rows) : BmpRowsUpwards(rows);
    return file;
}

void ExpectNumbers(const Bitmap& picture, int bits, const std::string& what) {
    ASSERT_EQ(picture.Width(), 5) << what;
    ASSERT_EQ(picture.Height(), 3) << what;
    const auto numbers = Numbers(bits <= 8 ? bits : 2);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x)
            EXPECT_EQ(PixelAt(picture, x, y), Shown(bits, numbers[y][x])) << what << " at " << x << ", " << y;
}

// A file of one row of masked pixels.
BmpFile Masked(int bits, const std::vector<std::uint32_t>& masks, const std::vector<std::uint32_t>& pixels) {
    BmpFile file;
    file.width = static_cast<int>(pixels.size());
    file.height = 1;
    file.bits = bits;
    file.kind = BmpKind::Masks;
    file.masks = masks;
    file.pixels = BmpRow(bits, pixels);
    return file;
}

// A file in runs, 4 × 3 pixels of the four colours.
BmpFile InRuns(BmpKind kind, bool topDown, const Bytes& codes) {
    BmpFile file;
    file.width = 4;
    file.height = topDown ? -3 : 3;
    file.bits = kind == BmpKind::Runs8 ? 8 : kind == BmpKind::Runs4 ? 4 : 24;
    file.kind = kind;
    if (kind != BmpKind::Runs24) file.palette = FourColours;
    file.pixels = codes;
    return file;
}

}  // namespace

TEST_F(Bmp, EveryDepthOpensFromBothEnds) {
    for (const int bits : {1, 2, 4, 8, 16, 24, 32})
        for (const bool topDown : {false, true})
            ExpectNumbers(Open(FileOfDepth(bits, topDown).Write()), bits,
                          std::to_string(bits) + (topDown ? " down" : ""));
}

TEST_F(Bmp, HeadersOfBothSystemsOpenAtEveryLength) {
    for (std::uint32_t length = 16; length <= 124; ++length)
        for (const int bits : {1, 4, 8, 24}) {
            BmpFile file = FileOfDepth(bits, false);
            file.headerBytes = length;
            ExpectNumbers(Open(file.Write()), bits, std::to_string(bits) + " with " + std::to_string(length));
        }
    BmpFile oldest = FileOfDepth(8, false);
    oldest.headerBytes = 12;
    ExpectNumbers(Open(oldest.Write()), 8, "12 bytes");
    for (const std::uint8_t length : {0, 11, 13, 15, 255}) {
        Bytes bytes = oldest.Write();
        bytes[14] = length;
        bytes[15] = length == 255 ? 255 : 0;
        EXPECT_TRUE(Open(bytes).IsNull()) << int(length);
    }
}

TEST_F(Bmp, MasksOpenInHeadersOfEveryLength) {
    for (std::uint32_t length = 40; length <= 124; ++length) {
        const bool alpha = length >= 56;
        BmpFile file = Masked(16, {0xF800, 0x07E0, 0x001F}, {0xF800, 0x07E0, 0x001F, 0x0000, 0xFFFF});
        file.headerBytes = length;
        EXPECT_EQ(Row(Open(file.Write())), Pixels({0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFF000000, 0xFFFFFFFF}))
            << length;
        file = Masked(16, {0x7C00, 0x03E0, 0x001F, 0x8000}, {0x7C00, 0xFFFF, 0x8000});
        file.headerBytes = length;
        EXPECT_EQ(Row(Open(file.Write())),
                  alpha ? Pixels({0x00FF0000, 0xFFFFFFFF, 0xFF000000}) : Pixels({0xFFFF0000, 0xFFFFFFFF, 0xFF000000}))
            << length;
        file = Masked(16, {0x0F00, 0x00F0, 0x000F, 0xF000}, {0x8F00, 0xF0F1, 0x000F});
        file.headerBytes = length;
        EXPECT_EQ(Row(Open(file.Write())),
                  alpha ? Pixels({0x88FF0000, 0xFF00FF11, 0x000000FF}) : Pixels({0xFFFF0000, 0xFF00FF11, 0xFF0000FF}))
            << length;
        file = Masked(32, {0x000000FF, 0x0000FF00, 0x00FF0000, 0xFF000000}, {0xFF804020, 0x7F102030});
        file.headerBytes = length;
        EXPECT_EQ(Row(Open(file.Write())), alpha ? Pixels({0xFF204080, 0x7F302010}) : Pixels({0xFF204080, 0xFF302010}))
            << length;
        file = Masked(32, {0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000}, {0xFF804020, 0x7F102030});
        file.headerBytes = length;
        EXPECT_EQ(Row(Open(file.Write())), alpha ? Pixels({0xFF804020, 0x7F102030}) : Pixels({0xFF804020, 0xFF102030}))
            << length;
    }
}

TEST_F(Bmp, AnAlphaMaskMayFollowTheShortHeader) {
    BmpFile file = Masked(32, {0xFF0000, 0x00FF00, 0x0000FF, 0xFF000000}, {0x40112233, 0xFF445566});
    file.kind = BmpKind::AlphaMasks;
    EXPECT_EQ(Row(Open(file.Write())), Pixels({0x40112233, 0xFF445566}));
}

TEST_F(Bmp, ChannelsOfAnyWidthReachBothEndsAndRoundBetween) {
    std::vector<std::uint32_t> pixels;
    for (std::uint32_t i = 0; i < 64; ++i) pixels.push_back(i << 5 | i >> 1 | (i >> 1) << 11);
    const auto row = Row(Open(Masked(16, {0xF800, 0x07E0, 0x001F}, pixels).Write()));
    ASSERT_EQ(row.size(), 64u);
    for (std::uint32_t i = 0; i < 64; ++i) {
        const std::uint32_t five = (i / 2 * 255 + 15) / 31, six = (i * 255 + 31) / 63;
        EXPECT_EQ(row[i], 0xFF000000u | five << 16 | six << 8 | five) << i;
    }
    // Ten bits, one bit, twenty bits, and a channel that is missing.
    EXPECT_EQ(Row(Open(Masked(32, {0x3FF00000, 0x000FFC00, 0x000003FF}, {0x20000000, 0x3FFFFFFF, 512, 0}).Write())),
              Pixels({0xFF800000, 0xFFFFFFFF, 0xFF000080, 0xFF000000}));
    EXPECT_EQ(Row(Open(Masked(32, {0xFFFFF000, 0x800, 0x7FF}, {0xFFFFFFFF, 0x80000000, 0x00000800, 0}).Write())),
              Pixels({0xFFFFFFFF, 0xFF800000, 0xFF00FF00, 0xFF000000}));
    EXPECT_EQ(Row(Open(Masked(16, {0xFF00, 0x00FF, 0}, {0xFFFF, 0x8000}).Write())), Pixels({0xFFFFFF00, 0xFF800000}));
}

TEST_F(Bmp, TheFourthByteOfPlainPixelsSaysNothing) {
    BmpFile file = FileOfDepth(32, false);
    for (std::size_t i = 3; i < file.pixels.size(); i += 8) file.pixels[i] = 0x77;
    ExpectNumbers(Open(file.Write()), 32, "with a filled fourth byte");
}

TEST_F(Bmp, AnEmptyAlphaChannelIsOpaque) {
    const std::vector<std::uint32_t> masks = {0xFF0000, 0x00FF00, 0x0000FF, 0xFF000000};
    BmpFile file = Masked(32, masks, {0x00112233, 0x00445566});
    file.headerBytes = 108;
    EXPECT_EQ(Row(Open(file.Write())), Pixels({0xFF112233, 0xFF445566}));
}

TEST_F(Bmp, RunsOpenFromBothEnds) {
    // First row: three of colour 1, one of colour 2. Second row: a stretch of 2, 3, 0. Then a jump of two columns and
    // no row, a run that is too long for its row, and the end.
    const Bytes eight = {3, 1, 1, 2, 0, 0, 0, 3, 2, 3, 0, 0, 0, 0, 0, 2, 2, 0, 9, 3, 0, 1};
    const Bytes four = {3, 0x11, 1, 0x20, 0, 0, 0, 3, 0x23, 0, 0, 0, 0, 2, 2, 0, 9, 0x33, 0, 1};
    Bytes full = {3, 0x80, 0, 0xFF, 1, 0x7F, 0xFF, 0, 0, 0, 0, 3};
    full.insert(full.end(), {0x7F, 0xFF, 0, 0xEE, 0xFF, 0xC0, 0x30, 0x20, 0x10, 0, 0, 0, 0, 2, 2, 0});
    full.insert(full.end(), {9, 0xEE, 0xFF, 0xC0, 0, 1});
    const std::pair<BmpKind, Bytes> all[] = {{BmpKind::Runs8, eight}, {BmpKind::Runs4, four}, {BmpKind::Runs24, full}};
    for (const auto& [kind, codes] : all)
        for (const bool topDown : {false, true}) {
            const Bitmap picture = Open(InRuns(kind, topDown, codes).Write());
            ASSERT_EQ(picture.Height(), 3) << int(kind);
            const std::uint32_t skipped = kind == BmpKind::Runs24 ? 0xFF000000u : 0xFF102030u;
            const std::uint32_t expected[3][4] = {{0xFFFF0080u, 0xFFFF0080u, 0xFFFF0080u, 0xFF00FF7Fu},
                                                  {0xFF00FF7Fu, 0xFFC0FFEEu, 0xFF102030u, skipped},
                                                  {skipped, skipped, 0xFFC0FFEEu, 0xFFC0FFEEu}};
            for (int y = 0; y < 3; ++y)
                for (int x = 0; x < 4; ++x)
                    EXPECT_EQ(PixelAt(picture, x, topDown ? y : 2 - y), expected[y][x])
                        << int(kind) << topDown << " at " << x << ", " << y;
        }
}

TEST_F(Bmp, RunsOfFourBitsAlternateBetweenTwoColours) {
    BmpFile file = InRuns(BmpKind::Runs4, true, {4, 0x12, 0, 0, 4, 0x03, 0, 0, 3, 0x21, 0, 1});
    const Bitmap picture = Open(file.Write());
    EXPECT_EQ(PixelAt(picture, 0, 0), 0xFFFF0080u);
    EXPECT_EQ(PixelAt(picture, 1, 0), 0xFF00FF7Fu);
    EXPECT_EQ(PixelAt(picture, 2, 0), 0xFFFF0080u);
    EXPECT_EQ(PixelAt(picture, 3, 1), 0xFFC0FFEEu);
}

TEST_F(Bmp, RunsNeedTheirEndMarkOrAllPixels) {
    const Bytes whole = {4, 1, 0, 0, 4, 2, 0, 0, 4, 3};
    EXPECT_FALSE(Open(InRuns(BmpKind::Runs8, false, whole).Write()).IsNull());
    for (std::size_t length = 1; length < whole.size(); ++length)
        EXPECT_TRUE(
            Open(InRuns(BmpKind::Runs8, false, Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(length))).Write())
                .IsNull())
            << length;
    EXPECT_FALSE(Open(InRuns(BmpKind::Runs8, false, {4, 1, 0, 1}).Write()).IsNull());
    EXPECT_TRUE(Open(InRuns(BmpKind::Runs8, false, {0, 3, 1}).Write()).IsNull());
    EXPECT_TRUE(Open(InRuns(BmpKind::Runs24, false, {4, 1, 2}).Write()).IsNull());
    EXPECT_TRUE(Open(InRuns(BmpKind::Runs8, false, {4, 1, 0, 2, 1}).Write()).IsNull());
}

TEST_F(Bmp, APaletteThatIsShortIsFilledUpWithBlack) {
    BmpFile file = FileOfDepth(8, false);
    file.palette = {FourColours[0], FourColours[1]};
    for (const bool counted : {true, false})
        for (const std::uint32_t header : {12u, 40u}) {
            file.coloursCounted = counted;
            file.headerBytes = header;
            file.width = 4;
            file.height = 1;
            file.pixels = {0, 1, 2, 255};
            EXPECT_EQ(Row(Open(file.Write())), Pixels({0xFF102030, 0xFFFF0080, 0xFF000000, 0xFF000000}))
                << counted << header;
        }
}

TEST_F(Bmp, PixelsWithoutAStatedPlaceFollowThePalette) {
    for (const int bits : {8, 24}) {
        Bytes bytes = FileOfDepth(bits, true).Write();
        for (std::size_t i = 10; i < 14; ++i) bytes[i] = 0;
        ExpectNumbers(Open(bytes), bits, std::to_string(bits));
    }
    Bytes masked = Masked(16, {0xF800, 0x07E0, 0x001F}, {0xF800, 0x001F}).Write();
    masked[10] = 54;  // where the masks stand
    EXPECT_EQ(Row(Open(masked)), Pixels({0xFFFF0000, 0xFF0000FF}));
}

TEST_F(Bmp, JpegAndPngInsideOpen) {
    const Bitmap face = TestPictures::Face(40, 30);
    BmpFile file;
    file.width = 40;
    file.height = 30;
    file.bits = 0;
    file.kind = BmpKind::Png;
    file.pixels = MakePng(face);
    EXPECT_TRUE(Open(file.Write()) == face);
    file.kind = BmpKind::Jpeg;
    file.pixels = MakeJpeg(face);
    EXPECT_LT(Mean(Open(file.Write()), face), 2);
}

TEST_F(Bmp, AProfileInTheLongestHeaderIsUsed) {
    BmpFile file = FileOfDepth(24, false);
    file.headerBytes = 124;
    const Bitmap plain = Open(file.Write());
    const Bytes profile = MakeRgbProfile(1.0);
    Bytes bytes = file.Write();
    const std::size_t start = bytes.size() - 14;
    bytes.insert(bytes.end(), profile.begin(), profile.end());
    const auto put = [&](std::size_t at, std::size_t value) {
        for (std::size_t i = 0; i < 4; ++i) bytes[14 + at + i] = static_cast<std::uint8_t>(value >> 8 * i);
    };
    put(56, 0x4D424544);
    put(112, start);
    put(116, profile.size());
    const Bitmap converted = Open(bytes);
    EXPECT_EQ(converted.Width(), 5);
    EXPECT_GT(Largest(converted, plain), 20);
    put(116, profile.size() + 1);
    EXPECT_TRUE(Open(bytes) == plain);
}

TEST_F(Bmp, RowsThatTheFileLacksAreRefused) {
    for (const int bits : {1, 8, 24, 32}) {
        Bytes bytes = FileOfDepth(bits, false).Write();
        const std::size_t used = (5u * static_cast<unsigned>(bits) + 7) / 8, padding = (4 - used % 4) % 4;
        bytes.resize(bytes.size() - padding);
        EXPECT_FALSE(Open(bytes).IsNull()) << bits;
        bytes.pop_back();
        EXPECT_TRUE(Open(bytes).IsNull()) << bits;
    }
}

TEST_F(Bmp, NoMemoryIsAskedForThatTheBytesCannotFill) {
    for (const BmpKind kind : {BmpKind::Plain, BmpKind::Runs8, BmpKind::Runs24, BmpKind::Masks, BmpKind::Png})
        for (const int height : {20000, -20000, -2147483647 - 1}) {
            BmpFile file;
            file.width = 20000;
            file.height = height;
            file.kind = kind;
            file.bits = kind == BmpKind::Runs8 ? 8 : kind == BmpKind::Masks ? 32 : 24;
            file.masks = {0xFF, 0xFF00, 0xFF0000, 0xFF000000};
            file.palette = FourColours;
            file.pixels = {0, 1, 0, 1};
            const Bytes bytes = file.Write();
            RecordingTarget target;
            EXPECT_FALSE(ReadBmp(bytes.data(), bytes.size(), target));
            EXPECT_EQ(target.most, 0) << int(kind) << " " << height;
        }
}
