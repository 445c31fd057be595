// SPDX-License-Identifier: GPL-3.0-or-later
#include "CodecModule.h"
#include "PixelRow.h"
#include "PsdFiles.h"
#include "RecordingTarget.h"
#include "TestPictures.h"

using Psd = PictureFolder;

namespace {

// A channel of the bitmap (0 blue to 3 alpha) as a plane of 8 or 16 bits.
Bytes Plane(const Bitmap& bitmap, std::size_t channel, int bits, bool inverted = false) {
    Bytes plane;
    for (std::size_t i = channel; i < bitmap.ByteCount(); i += 4)
        plane.insert(plane.end(), static_cast<std::size_t>(bits / 8),
                     static_cast<std::uint8_t>(inverted ? 255 - bitmap.Pixels()[i] : bitmap.Pixels()[i]));
    return plane;
}

PsdFile FileOf(const Bitmap& bitmap, PsdFile::Mode mode, int bits, std::vector<Bytes> planes) {
    PsdFile file;
    file.mode = mode;
    file.bits = bits;
    file.width = static_cast<std::uint32_t>(bitmap.Width());
    file.height = static_cast<std::uint32_t>(bitmap.Height());
    file.planes = std::move(planes);
    return file;
}

PsdFile ColourFile(const Bitmap& bitmap, int bits) {
    return FileOf(bitmap, PsdFile::Rgb, bits, {Plane(bitmap, 2, bits), Plane(bitmap, 1, bits), Plane(bitmap, 0, bits)});
}

}  // namespace

TEST_F(Psd, TheMergedPictureInColourOpensExactly) {
    const Bitmap noise = TestPictures::Noise(31, 17, 6), face = TestPictures::Face(300, 20);
    for (const Bitmap& picture : {noise, face})
        for (const int version : {1, 2})
            for (const int bits : {8, 16})
                for (const bool runs : {false, true}) {
                    PsdFile file = ColourFile(picture, bits);
                    file.version = version;
                    file.runs = runs;
                    EXPECT_TRUE(Open(file.Write()) == picture) << version << " " << bits << " " << runs;
                }
    EXPECT_EQ(files.GetImageInfo()->Format, L"PSD");
}

TEST_F(Psd, GreyDuotonePaletteAndTwoLevels) {
    const Bitmap ramp = TestPictures::Ramp(64, 5);
    for (const auto mode : {PsdFile::Grey, PsdFile::Duotone})
        for (const int bits : {8, 16})
            EXPECT_TRUE(Open(FileOf(ramp, mode, bits, {Plane(ramp, 1, bits)}).Write()) == ramp) << bits;
    PsdFile palette = FileOf(ramp, PsdFile::Indexed, 8, {Plane(ramp, 1, 8, true)});
    for (int c = 0; c < 3; ++c)
        for (int i = 0; i < 256; ++i) palette.palette.push_back(static_cast<std::uint8_t>(255 - i));
    EXPECT_TRUE(Open(palette.Write()) == ramp);
    palette.palette.resize(700);
    EXPECT_TRUE(Open(palette.Write()).IsNull());
    PsdFile lines;
    lines.mode = PsdFile::Bitmap;
    lines.bits = 1;
    lines.width = 10;
    lines.height = 1;
    lines.planes = {{0xF0, 0x40}};
    EXPECT_EQ(Row(Open(lines.Write())), Pixels({0xFF000000, 0xFF000000, 0xFF000000, 0xFF000000, 0xFFFFFFFF, 0xFFFFFFFF,
                                                0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFF000000}));
}

TEST_F(Psd, InkIsStoredAsLight) {
    for (const int bits : {8, 16}) {
        PsdFile file;
        file.mode = PsdFile::Ink;
        file.bits = bits;
        file.width = 4;
        file.height = 1;
        // No ink, all of cyan, half of black, all of everything.
        for (const Bytes& light :
             {Bytes{255, 0, 255, 0}, Bytes{255, 255, 255, 0}, Bytes{255, 255, 255, 0}, Bytes{255, 255, 128, 0}}) {
            Bytes plane;
            for (const std::uint8_t level : light) plane.insert(plane.end(), static_cast<std::size_t>(bits / 8), level);
            file.planes.push_back(plane);
        }
        EXPECT_EQ(Row(Open(file.Write())), Pixels({0xFFFFFFFF, 0xFF00FFFF, 0xFF808080, 0xFF000000})) << bits;
    }
}

TEST_F(Psd, TransparencyIsTakenFromTheChannelBehindTheColoursAndWhiteOutOfThem) {
    PsdFile file;
    file.width = 4;
    file.height = 1;
    // Opaque, clear, half black on white, half red on white.
    file.planes = {{10, 255, 127, 255}, {20, 255, 127, 127}, {30, 255, 127, 127}, {255, 0, 128, 128}};
    file.transparent = true;
    EXPECT_EQ(Row(Open(file.Write())), Pixels({0xFF0A141E, 0x00FFFFFF, 0x80000000, 0x80FF0000}));
    // A channel that is only a stored selection says nothing.
    file.transparent = false;
    EXPECT_EQ(Row(Open(file.Write())), Pixels({0xFF0A141E, 0xFFFFFFFF, 0xFF7F7F7F, 0xFFFF7F7F}));
}

TEST_F(Psd, AnEmbeddedProfileIsUsedAtBothDepths) {
    const Bitmap face = TestPictures::Face(40, 30);
    const Bitmap expected = Open(MakePng(face, 8, 2, MakeRgbProfile(1.0)));
    for (const int bits : {8, 16}) {
        PsdFile file = ColourFile(face, bits);
        file.profile = MakeRgbProfile(1.0);
        EXPECT_LE(Largest(Open(file.Write()), expected), 1) << bits;
    }
    EXPECT_GT(Largest(expected, face), 20);
}

TEST_F(Psd, WhatIsCutOrOfAnotherKindIsRefused) {
    const Bitmap noise = TestPictures::Noise(20, 10, 6);
    for (const bool runs : {false, true}) {
        PsdFile file = ColourFile(noise, 8);
        file.runs = runs;
        const Bytes whole = file.Write();
        for (std::size_t length = 1; length + 1 < whole.size(); length += 1 + length / 30)
            EXPECT_TRUE(OpenMemory(Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(length))).IsNull()) << length;
    }
    EXPECT_TRUE(Open(FileOf(noise, PsdFile::Lab, 8, ColourFile(noise, 8).planes).Write()).IsNull());
    PsdFile two = ColourFile(noise, 8);
    two.planes.pop_back();
    EXPECT_TRUE(Open(two.Write()).IsNull());
    PsdFile seven = ColourFile(noise, 8);
    seven.bits = 7;
    EXPECT_TRUE(Open(seven.Write()).IsNull());
}

TEST_F(Psd, NoMemoryIsAskedForThatTheBytesCannotFill) {
    for (const bool runs : {false, true})
        for (const int version : {1, 2}) {
            PsdFile file = ColourFile(TestPictures::Noise(20, 10, 6), 8);
            file.runs = runs;
            file.version = version;
            Bytes bytes = file.Write();
            for (const std::size_t at : {15u, 19u}) {
                bytes[at] = 1;
                RecordingTarget target;
                EXPECT_FALSE(ReadByModule(PictureFormat::Psd, bytes.data(), bytes.size(), target));
                EXPECT_EQ(target.most, 0) << runs << version << at;
            }
        }
}
