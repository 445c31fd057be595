// SPDX-License-Identifier: GPL-3.0-or-later
#include "CodecFiles.h"
#include "ExifOrientation.h"
#include "PictureFolder.h"
#include "TestPictures.h"

using Orientations = PictureFolder;
using TestPictures::PixelAt;

namespace {

// Where pixel (x, y) of the upright picture lies in the stored one, straight from the meaning of the values: which side
// of the scene the stored first row and first column are.
std::uint32_t Stored(const Bitmap& stored, int orientation, int x, int y) {
    const int w = stored.Width(), h = stored.Height();
    switch (orientation) {
        case 2:
            return PixelAt(stored, w - 1 - x, y);
        case 3:
            return PixelAt(stored, w - 1 - x, h - 1 - y);
        case 4:
            return PixelAt(stored, x, h - 1 - y);
        case 5:
            return PixelAt(stored, y, x);
        case 6:
            return PixelAt(stored, y, h - 1 - x);
        case 7:
            return PixelAt(stored, w - 1 - y, h - 1 - x);
        case 8:
            return PixelAt(stored, w - 1 - y, x);
        default:
            return PixelAt(stored, x, y);
    }
}

void ExpectUpright(const Bitmap& upright, const Bitmap& stored, int orientation) {
    ASSERT_FALSE(upright.IsNull());
    EXPECT_EQ(upright.Width(), orientation >= 5 ? stored.Height() : stored.Width());
    for (int y = 0; y < upright.Height(); ++y)
        for (int x = 0; x < upright.Width(); ++x)
            ASSERT_EQ(PixelAt(upright, x, y), Stored(stored, orientation, x, y))
                << orientation << " at " << x << "," << y;
}

}  // namespace

TEST_F(Orientations, AllEightAreAppliedToJpeg) {
    const Bitmap stored = OpenMemory(MakeJpeg(TestPictures::Noise(47, 33, 2), 95));
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const Bytes bytes =
            MakeJpeg(TestPictures::Noise(47, 33, 2), 95, JpegKind::Colour, {}, MakeOrientationExif(orientation));
        ExpectUpright(Open(bytes), stored, orientation);
        EXPECT_EQ(files.GetImageInfo()->Dimensions, orientation >= 5 ? L"33 x 47" : L"47 x 33");
    }
}

TEST_F(Orientations, AllEightAreAppliedToTiff) {
    const Bitmap stored = TestPictures::Noise(47, 33, 2);
    for (int orientation = 1; orientation <= 8; ++orientation)
        for (const TiffKind kind : {TiffKind::Rgb})
            ExpectUpright(Open(MakeTiff(stored, kind, 8, TiffPacking::None, false, orientation)), stored, orientation);
    const Bitmap stripes = TestPictures::Checker(40, 24, 4, 0xFF000000u, 0xFFFFFFFFu);
    for (int orientation = 1; orientation <= 8; ++orientation)
        ExpectUpright(Open(MakeTiff(stripes, TiffKind::Bilevel, 1, TiffPacking::None, false, orientation)), stripes,
                      orientation);
}

TEST_F(Orientations, ValuesOutsideTheEightAreUpright) {
    const Bitmap picture = TestPictures::Noise(9, 5, 2);
    for (const int value : {0, 9, 255, -1}) EXPECT_TRUE(ApplyOrientation(picture, value) == picture);
    const Bytes bytes = MakeJpeg(picture, 95, JpegKind::Colour, {}, MakeOrientationExif(77));
    EXPECT_EQ(Open(bytes).Width(), 9);
}

TEST_F(Orientations, ADamagedExifBlockNeverReadsOutside) {
    Bytes exif = MakeOrientationExif(6);
    EXPECT_EQ(ExifOrientation(exif.data(), exif.size()), 6);
    for (std::size_t length = 0; length < exif.size(); ++length) {
        const Bytes cut(exif.begin(), exif.begin() + static_cast<std::ptrdiff_t>(length));
        const int value = ExifOrientation(cut.data(), cut.size());
        EXPECT_TRUE(value == 1 || value == 6);
    }
    for (std::size_t at = 6; at < exif.size(); ++at) {
        Bytes bad = exif;
        bad[at] = 0xFF;
        const int value = ExifOrientation(bad.data(), bad.size());
        EXPECT_TRUE(value >= 1 && value <= 8);
    }
}
