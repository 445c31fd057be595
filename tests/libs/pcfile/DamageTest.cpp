// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdlib>
#include <random>

#include "BmpFiles.h"
#include "CodecFiles.h"
#include "HandMade.h"
#include "PictureFolder.h"
#include "PictureFuzz.h"
#include "PsdFiles.h"
#include "TestPictures.h"
#include "TiffRaw.h"

// The bodies of the fuzz targets over seeded damage: every reader meets bytes that were changed, cut, doubled and put
// in at random. The assertion is in the bodies: they end the process when a reader gives something that is no picture.

using Damage = PictureFolder;

namespace {

Bytes Damaged(Bytes bytes, std::mt19937& random) {
    const int changes = 1 + static_cast<int>(random() % 6);
    for (int i = 0; i < changes && !bytes.empty(); ++i) {
        // Headers are where damage tells most.
        const std::size_t reach = random() % 2 ? std::min<std::size_t>(bytes.size(), 200) : bytes.size();
        const std::size_t at = random() % reach;
        switch (random() % 5) {
            case 0:
                bytes[at] = static_cast<std::uint8_t>(random());
                break;
            case 1:
                bytes[at] ^= static_cast<std::uint8_t>(1u << random() % 8);
                break;
            case 2:
                bytes[at] = random() % 2 ? 0xFF : 0;
                break;
            case 3:
                bytes.resize(at);
                break;
            default:
                bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at), 1 + random() % 9,
                             static_cast<std::uint8_t>(random()));
        }
    }
    return bytes;
}

Bytes MaskedBmp() {
    BmpFile file;
    file.headerBytes = 124;
    file.width = 3;
    file.height = -2;
    file.bits = 16;
    file.kind = BmpKind::Masks;
    file.masks = {0x0F00, 0x00F0, 0x000F, 0xF000};
    file.pixels.resize(16, 0xA5);
    return file.Write();
}

Bytes BmpInRuns() {
    BmpFile file;
    file.width = 6;
    file.height = 3;
    file.bits = 4;
    file.kind = BmpKind::Runs4;
    file.palette = {0x000000, 0xFFFFFF, 0x808080};
    file.pixels = {6, 0x12, 0, 0, 0, 4, 0x12, 0x10, 0, 2, 1, 1, 3, 0x22, 0, 1};
    return file.Write();
}

Bytes PlanarTiff() {
    RawTiff file;
    file.width = file.height = 20;
    file.bits = 12;
    file.samples = 3;
    file.photometric = RawTiff::Rgb;
    file.planes = true;
    file.tile = 16;
    file.blocks.assign(12, Bytes(16 * 24, 0x5A));
    return file.Write();
}

Bytes TransparentPsd() {
    PsdFile file;
    file.bits = 16;
    file.width = file.height = 12;
    file.planes.assign(4, Bytes(288, 0x3C));
    file.runs = file.transparent = true;
    file.profile = MakeRgbProfile(1.8);
    return file.Write();
}

}  // namespace

TEST_F(Damage, NoReaderMindsDamagedPictures) {
    const Bitmap face = TestPictures::Face(48, 40);
    const Bytes seeds[] = {MakeJpeg(face),
                           MakeJpeg(face, 90, JpegKind::Progressive, MakeRgbProfile(1.8), MakeOrientationExif(6)),
                           MakeJpeg(face, 90, JpegKind::AdobeCmyk),
                           MakePng(face),
                           MakePng(face, 16, 6, MakeRgbProfile(1.0)),
                           HandMade::PalettePng(),
                           MakeByQt(face, "bmp"),
                           MaskedBmp(),
                           BmpInRuns(),
                           HandMade::TwoFrameGif(),
                           MakeByMagick(face, "GIF"),
                           {0, 0, 10, 3, 0xFF, 0xC0, 0x00, 0x00, 0xFF, 0xC0},
                           HandMade::Pcx(face),
                           HandMade::Ras(face),
                           HandMade::Tga(face, 24, true),
                           HandMade::Pnm(face, 6, 255),
                           HandMade::Pgx(face, 8, false, true),
                           HandMade::Wmf(),
                           MakeWebp(face, false),
                           MakeWebpAnimation(face, face),
                           MakeHeif(face, HeifKind::Hevc),
                           MakeHeif(face, HeifKind::Av1),
                           MakeJxl(face, 8),
                           MakeTiff(face, TiffKind::Rgb, 8, TiffPacking::Lzw, false),
                           MakeTiff(face, TiffKind::Ink, 8, TiffPacking::None, true),
                           MakeTiff(face, TiffKind::Bilevel, 1, TiffPacking::PackBits, false),
                           PlanarTiff(),
                           TransparentPsd(),
                           MakeDng(64, 48),
                           MakeJbig(face),
                           MakeByMagick(face, "JNG")};
    std::mt19937 random(3);
    for (const Bytes& seed : seeds) {
        ASSERT_FALSE(seed.empty());
        for (int i = 0; i < 60; ++i) {
            const Bytes bytes = Damaged(seed, random);
            PictureFuzz::FromMemory(bytes.data(), bytes.size());
            if (i < 5) PictureFuzz::FromPath(bytes.data(), bytes.size());
        }
    }
}

TEST_F(Damage, PicturesInsidePicturesLeaveNoTemporaryFiles) {
    const Bytes seed = MakeByMagick(TestPictures::Face(48, 40), "JNG");
    ASSERT_FALSE(seed.empty());
    const std::filesystem::path temporary = At("temporary");
    std::filesystem::create_directory(temporary);
    const char* before = std::getenv("TMPDIR");
    const std::string kept = before ? before : "";
    ::setenv("TMPDIR", temporary.c_str(), 1);
    std::mt19937 random(5);
    OpenMemory(seed);
    for (int i = 0; i < 60; ++i) OpenMemory(Damaged(seed, random));
    before ? ::setenv("TMPDIR", kept.c_str(), 1) : ::unsetenv("TMPDIR");
    EXPECT_TRUE(std::filesystem::is_empty(temporary));
}

TEST_F(Damage, NoDamagedSnapshotIsTaken) {
    ASSERT_TRUE(PC_File::ImageSaveTobinary(TestPictures::Noise(20, 20, 1), Wide("a")));
    const Bytes good = Get("a");
    std::mt19937 random(4);
    for (int i = 0; i < 500; ++i) {
        const Bytes bytes = Damaged(good, random);
        PictureFuzz::Snapshot(bytes.data(), bytes.size());
    }
}
