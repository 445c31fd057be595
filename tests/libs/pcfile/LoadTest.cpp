// SPDX-License-Identifier: GPL-3.0-or-later
#include <sys/stat.h>

#include <fstream>
#include <random>

#include "PictureFolder.h"
#include "TestPictures.h"

using Loading = PictureFolder;

TEST_F(Loading, DecidesByContentAndNotByName) {
    const Bitmap picture = TestPictures::Noise(31, 17, 1, false);
    Put("a.jpg", MakePng(picture));
    EXPECT_TRUE(OpenPath("a.jpg") == picture);
    Put("a.png", MakeByQt(TestPictures::Ramp(40, 20), "bmp"));
    EXPECT_TRUE(OpenPath("a.png") == TestPictures::Ramp(40, 20));
    EXPECT_EQ(files.GetImageInfo()->Format, L"BMP");
}

TEST_F(Loading, ReadsAPictureThatStartsInsideAFile) {
    const Bitmap picture = TestPictures::Noise(31, 17, 2, false);
    Bytes bytes(117, 0xAB);
    const Bytes png = MakePng(picture);
    bytes.insert(bytes.end(), png.begin(), png.end());
    Put("frame", bytes);
    EXPECT_TRUE(files.OnLoadImage(Wide("frame").c_str(), 117, 0, NULL, 0, 100) == picture);
    EXPECT_TRUE(files.OnLoadImage(Wide("frame").c_str(), 116, 0, NULL, 0, 100).IsNull());
    EXPECT_TRUE(files.OnLoadImage(Wide("frame").c_str(), 1 << 20, 0, NULL, 0, 100).IsNull());
    EXPECT_TRUE(files.OnLoadImage(Wide("frame").c_str(), -1, 0, NULL, 0, 100).IsNull());
}

TEST_F(Loading, AtAnOffsetALengthBoundsThePicture) {
    const Bitmap picture = TestPictures::Noise(31, 17, 2, false);
    const Bytes png = MakePng(picture);
    Bytes bytes(5, 1);
    bytes.insert(bytes.end(), png.begin(), png.end());
    bytes.insert(bytes.end(), 1000, 0xEE);
    Put("frame", bytes);
    EXPECT_TRUE(files.OnLoadImage(Wide("frame").c_str(), 5, static_cast<int>(png.size()), nullptr, 0, 100) == picture);
    EXPECT_TRUE(
        files.OnLoadImage(Wide("frame").c_str(), 5, static_cast<int>(png.size()) / 2, nullptr, 0, 100).IsNull());
    EXPECT_TRUE(files.OnLoadImage(Wide("frame").c_str(), 5, 1 << 20, nullptr, 0, 100).IsNull());
    EXPECT_TRUE(files.OnLoadImage(Wide("frame").c_str(), 5, -7, nullptr, 0, 100).IsNull());
}

TEST_F(Loading, FromMemoryContentWinsOverTheHint) {
    const Bitmap picture = TestPictures::Noise(9, 9, 3, false);
    const Bytes png = MakePng(picture);
    for (const int hint : {2, 1, 3, 0, -5, 99})
        EXPECT_TRUE(files.OnLoadImage(png.data(), static_cast<int>(png.size()), hint, NULL, 0, 100) == picture) << hint;
    EXPECT_TRUE(files.OnLoadImage(static_cast<const unsigned char*>(nullptr), 10, 2, NULL, 0, 100).IsNull());
    EXPECT_TRUE(files.OnLoadImage(png.data(), 0, 2, NULL, 0, 100).IsNull());
    EXPECT_TRUE(files.OnLoadImage(png.data(), -4, 2, NULL, 0, 100).IsNull());
}

TEST_F(Loading, MissingEmptyAndUnreadableFilesAreNull) {
    EXPECT_TRUE(OpenPath("missing").IsNull());
    EXPECT_TRUE(files.OnLoadImage(L"", nullptr, 0, 100, nullptr).IsNull());
    EXPECT_TRUE(files.OnLoadImage(static_cast<const wchar_t*>(nullptr), nullptr, 0, 100, nullptr).IsNull());
    EXPECT_TRUE(files.OnLoadImage(folder.wstring().c_str(), nullptr, 0, 100, nullptr).IsNull());
    EXPECT_TRUE(Open({}).IsNull());
    EXPECT_TRUE(Open({'h', 'e', 'l', 'l', 'o'}).IsNull());
    EXPECT_EQ(files.GetImageInfo(), nullptr);
}

TEST_F(Loading, APipeIsRefusedAndNotWaitedFor) {
    ASSERT_EQ(::mkfifo(At("pipe").c_str(), 0600), 0);
    EXPECT_TRUE(OpenPath("pipe").IsNull());
    EXPECT_TRUE(files.OnLoadImage(L"/dev/zero", nullptr, 0, 100, nullptr).IsNull());
}

TEST_F(Loading, AGiganticFileIsRefusedWithoutReadingIt) {
    Put("huge", MakePng(TestPictures::Ramp(8, 8)));
    std::filesystem::resize_file(At("huge"), std::uintmax_t{1} << 40);
    EXPECT_TRUE(OpenPath("huge").IsNull());
}

TEST_F(Loading, AFailedLoadKeepsTheRecordOfTheLastGoodOne) {
    Put("good.png", MakePng(TestPictures::Ramp(8, 4)));
    ASSERT_FALSE(OpenPath("good.png").IsNull());
    EXPECT_TRUE(OpenPath("missing").IsNull());
    ASSERT_NE(files.GetImageInfo(), nullptr);
    EXPECT_EQ(files.GetImageInfo()->FileName, L"good.png");
    EXPECT_EQ(files.GetImageInfo()->Dimensions, L"8 x 4");
}

TEST_F(Loading, TheSinkSeesItsShareAndCanStopTheWork) {
    struct Sink : CObjProgress {
        std::vector<float> values;
        int left = 1000;
        void SetValue(float v) override { values.push_back(v); }
        int CanContinue() override { return left-- > 0; }
    } sink;
    const Bytes jpeg = MakeJpeg(TestPictures::Face(600, 900));
    ASSERT_FALSE(files.OnLoadImage(jpeg.data(), static_cast<int>(jpeg.size()), 1, &sink, 20, 60).IsNull());
    ASSERT_GT(sink.values.size(), 3u);
    EXPECT_TRUE(std::is_sorted(sink.values.begin(), sink.values.end()));
    EXPECT_GE(sink.values.front(), 20);
    EXPECT_FLOAT_EQ(sink.values.back(), 60);
    sink.left = 2;
    EXPECT_TRUE(files.OnLoadImage(jpeg.data(), static_cast<int>(jpeg.size()), 1, &sink, 20, 60).IsNull());
}

namespace {

// The file with the bytes from `at` replaced.
Bytes Patched(Bytes bytes, std::size_t at, const Bytes& with) {
    std::copy(with.begin(), with.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
    return bytes;
}

std::size_t Find(const Bytes& bytes, const Bytes& what) {
    return static_cast<std::size_t>(std::search(bytes.begin(), bytes.end(), what.begin(), what.end()) - bytes.begin());
}

}  // namespace

TEST_F(Loading, FilesCutInTheirPixelsAreRefusedAtEveryLength) {
    const Bitmap picture = TestPictures::Face(90, 70);
    const Bytes whole[] = {MakeJpeg(picture), MakeJpeg(picture, 90, JpegKind::Progressive), MakePng(picture, 8, 2),
                           MakePng(picture, 16, 6), MakeByQt(picture, "bmp")};
    for (const Bytes& bytes : whole) {
        ASSERT_FALSE(OpenMemory(bytes).IsNull());
        for (std::size_t length = 1; length + 40 < bytes.size(); length += 1 + length / 40)
            EXPECT_TRUE(OpenMemory(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length))).IsNull())
                << int(bytes[0]) << " cut at " << length << " of " << bytes.size();
    }
}

TEST_F(Loading, AJpegWithoutItsEndMarkerOpens) {
    Bytes bytes = MakeJpeg(TestPictures::Face(90, 70));
    const Bitmap whole = OpenMemory(bytes);
    bytes.resize(bytes.size() - 2);
    EXPECT_TRUE(OpenMemory(bytes) == whole);
}

TEST_F(Loading, SizesThatTheBytesCannotHoldAreRefusedBeforeMemoryIsTaken) {
    const Bitmap picture = TestPictures::Face(90, 70);
    const Bytes jpeg = MakeJpeg(picture);
    const std::size_t frame = Find(jpeg, {0xFF, 0xC0});
    EXPECT_TRUE(OpenMemory(Patched(jpeg, frame + 5, {0xFF, 0xDC, 0xFF, 0xDC})).IsNull());
    EXPECT_TRUE(OpenMemory(Patched(jpeg, frame + 5, {0x00, 0xF0})).IsNull());  // height 240 for 70 rows of data
    EXPECT_TRUE(OpenMemory(Patched(jpeg, frame + 5, {0, 0, 0, 0})).IsNull());
    Bytes bmp = MakeByQt(picture, "bmp");
    EXPECT_TRUE(OpenMemory(Patched(bmp, 18, {0xFF, 0xFF, 0xFF, 0x7F})).IsNull());
    EXPECT_TRUE(OpenMemory(Patched(bmp, 22, {0xFF, 0xFF, 0, 0})).IsNull());
    EXPECT_TRUE(OpenMemory(Patched(bmp, 22, {0, 0, 0, 0x80})).IsNull());
    EXPECT_TRUE(OpenMemory(Patched(bmp, 10, {0xFF, 0xFF, 0xFF, 0xFF})).IsNull());
}

TEST_F(Loading, APngOfAllowedSidesButTooManyPixelsIsRefused) {
    // Header only: 1000000 × 1000000 of 1 bit, with a correct check.
    Bytes png = {0x89, 'P', 'N',  'G',  '\r', '\n', 0x1A, '\n', 0,    0, 0, 13, 'I', 'H', 'D',
                 'R',  0,   0x0F, 0x42, 0x40, 0,    0x0F, 0x42, 0x40, 1, 0, 0,  0,   0};
    std::uint32_t crc = 0xFFFFFFFFu;
    for (std::size_t i = 12; i < png.size(); ++i) {
        crc ^= png[i];
        for (int k = 0; k < 8; ++k) crc = crc & 1 ? crc >> 1 ^ 0xEDB88320u : crc >> 1;
    }
    for (int shift = 24; shift >= 0; shift -= 8) png.push_back(static_cast<std::uint8_t>(~crc >> shift));
    EXPECT_TRUE(OpenMemory(png).IsNull());
}
