// SPDX-License-Identifier: GPL-3.0-or-later
#include <fcntl.h>
#include <sys/stat.h>

#include "Parallel.h"
#include "PictureFolder.h"
#include "TestPictures.h"

using Snapshots = PictureFolder;

TEST_F(Snapshots, GiveBackTheBitmapByteForByteWithAlpha) {
    for (const auto& [width, height] : {std::pair{1, 1}, {3, 7}, {640, 480}, {1201, 803}}) {
        const Bitmap picture = TestPictures::Noise(width, height, 5, false);
        ASSERT_TRUE(PC_File::ImageSaveTobinary(picture, Wide("a.bin")));
        EXPECT_TRUE(PC_File::ImageReadFrombinary(Wide("a.bin")) == picture) << width;
    }
}

TEST_F(Snapshots, TakeAnyNameAndOverwriteLargerAndSmallerOnes) {
    const std::string name = "\xE5\x9B\xBE\xE7\x89\x87 1";
    for (const int side : {300, 20, 700, 1}) {
        const Bitmap picture = TestPictures::Noise(side, side + 1, side, false);
        ASSERT_TRUE(PC_File::ImageSaveTobinary(picture, Wide(name)));
        EXPECT_TRUE(PC_File::ImageReadFrombinary(Wide(name)) == picture);
        EXPECT_EQ(Get(name).size(), 4096 + picture.ByteCount());
    }
}

TEST_F(Snapshots, DoNotDependOnTheNumberOfThreads) {
    const Bitmap picture = TestPictures::Noise(1500, 1100, 3, false);
    SetWorkerCount(1);
    ASSERT_TRUE(PC_File::ImageSaveTobinary(picture, Wide("one")));
    SetWorkerCount(7);
    ASSERT_TRUE(PC_File::ImageSaveTobinary(picture, Wide("seven")));
    EXPECT_TRUE(PC_File::ImageReadFrombinary(Wide("one")) == picture);
    SetWorkerCount(0);
    EXPECT_EQ(Get("one"), Get("seven"));
}

TEST_F(Snapshots, RefuseANullBitmapAFolderAndAMissingFolder) {
    EXPECT_FALSE(PC_File::ImageSaveTobinary({}, Wide("a")));
    EXPECT_FALSE(PC_File::ImageSaveTobinary(Bitmap(2, 2), folder.wstring()));
    EXPECT_FALSE(PC_File::ImageSaveTobinary(Bitmap(2, 2), Wide("none/a")));
    EXPECT_FALSE(PC_File::ImageSaveTobinary(Bitmap(2, 2), L""));
    EXPECT_TRUE(PC_File::ImageReadFrombinary(Wide("none")).IsNull());
    EXPECT_TRUE(PC_File::ImageReadFrombinary(folder.wstring()).IsNull());
    EXPECT_TRUE(PC_File::ImageReadFrombinary(L"").IsNull());
}

TEST_F(Snapshots, DoNotFollowALinkWhenWriting) {
    Put("precious", {1, 2, 3});
    std::filesystem::create_symlink("precious", At("link"));
    EXPECT_FALSE(PC_File::ImageSaveTobinary(Bitmap(2, 2), Wide("link")));
    EXPECT_EQ(Get("precious"), (Bytes{1, 2, 3}));
}

TEST_F(Snapshots, ADamagedByteAnywhereIsRefused) {
    const Bitmap picture = TestPictures::Noise(37, 29, 11, false);
    ASSERT_TRUE(PC_File::ImageSaveTobinary(picture, Wide("a")));
    const Bytes good = Get("a");
    // Every byte of every header field, and pixels at the start, somewhere and at the end.
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < 48; ++i) places.push_back(i);
    for (std::size_t i = 4096; i < good.size(); i += 13) places.push_back(i);
    places.push_back(good.size() - 1);
    for (const std::size_t place : places)
        for (const int bit : {0, 7}) {
            Bytes bad = good;
            bad[place] ^= static_cast<std::uint8_t>(1 << bit);
            Put("b", bad);
            EXPECT_TRUE(PC_File::ImageReadFrombinary(Wide("b")).IsNull()) << place << " bit " << bit;
        }
    Put("b", good);
    EXPECT_TRUE(PC_File::ImageReadFrombinary(Wide("b")) == picture);
}

TEST_F(Snapshots, ACutOrLengthenedFileIsRefused) {
    ASSERT_TRUE(PC_File::ImageSaveTobinary(TestPictures::Noise(20, 20, 1), Wide("a")));
    const Bytes good = Get("a");
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{47}, std::size_t{48},
                                     std::size_t{4096}, std::size_t{5000}, good.size() - 1}) {
        Put("b", Bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length)));
        EXPECT_TRUE(PC_File::ImageReadFrombinary(Wide("b")).IsNull()) << length;
    }
    Bytes longer = good;
    longer.push_back(0);
    Put("b", longer);
    EXPECT_TRUE(PC_File::ImageReadFrombinary(Wide("b")).IsNull());
}

TEST_F(Snapshots, SwappedChunksAreRefused) {
    ASSERT_TRUE(PC_File::ImageSaveTobinary(TestPictures::Noise(1024, 512, 1), Wide("a")));
    Bytes bytes = Get("a");
    std::swap_ranges(bytes.begin() + 4096, bytes.begin() + 4096 + (1 << 20), bytes.begin() + 4096 + (1 << 20));
    Put("b", bytes);
    EXPECT_TRUE(PC_File::ImageReadFrombinary(Wide("b")).IsNull());
}
