// SPDX-License-Identifier: GPL-3.0-or-later
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

#include "KillLoop.h"
#include "PictureFolder.h"
#include "TestPictures.h"

using SaveSafety = PictureFolder;

namespace {

// A small file system of its own, gone with the object.
class SmallDisk {
  public:
    SmallDisk(const std::filesystem::path& at, const char* size) : m_at(at) {
        std::filesystem::create_directories(at);
        m_mounted = ::mount("tmpfs", at.c_str(), "tmpfs", 0, size) == 0;
    }
    ~SmallDisk() {
        if (m_mounted) ::umount2(m_at.c_str(), MNT_DETACH);
    }
    bool Mounted() const { return m_mounted; }

  private:
    std::filesystem::path m_at;
    bool m_mounted;
};

}  // namespace

TEST_F(SaveSafety, AFullDiskFailsTheSaveAndKeepsTheOldFile) {
    const SmallDisk disk(At("disk"), "size=512k");
    if (!disk.Mounted()) GTEST_SKIP() << "no right to mount a small disk";
    Put("disk/a", {1, 2, 3});
    const Bitmap picture = TestPictures::Noise(900, 900, 1);
    for (const int format : {1, 2, 3}) {
        EXPECT_EQ(files.OnSaveQuick(Wide("disk/a").c_str(), picture, format, 95), 0) << format;
        EXPECT_EQ(Get("disk/a"), (Bytes{1, 2, 3}));
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(At("disk")), {}), 1) << "no rest of the attempt";
    }
    EXPECT_EQ(files.OnSaveHDJpeg(Wide("disk/a").c_str(), picture, 95, 0, NULL, 0, 100), 0);
    EXPECT_NE(files.OnSaveQuick(Wide("disk/b").c_str(), TestPictures::Ramp(50, 50), 1, 90), 0);
}

TEST_F(SaveSafety, AFullDiskFailsASnapshotAndWhatItLeftIsRefused) {
    const SmallDisk disk(At("disk"), "size=512k");
    if (!disk.Mounted()) GTEST_SKIP() << "no right to mount a small disk";
    EXPECT_FALSE(PC_File::ImageSaveTobinary(TestPictures::Noise(900, 900, 1), Wide("disk/a")));
    EXPECT_TRUE(PC_File::ImageReadFrombinary(Wide("disk/a")).IsNull());
    const Bitmap small = TestPictures::Noise(90, 90, 1);
    EXPECT_TRUE(PC_File::ImageSaveTobinary(small, Wide("disk/a")));
    EXPECT_TRUE(PC_File::ImageReadFrombinary(Wide("disk/a")) == small);
}

TEST_F(SaveSafety, AKilledSaveLeavesTheOldOrTheNewFileWhole) {
    const Bitmap pictures[2] = {TestPictures::Noise(900, 700, 1), TestPictures::Noise(700, 900, 2)};
    int interrupted = 0;
    for (const int format : {VN_IMAGE_FORMAT_JPEG, VN_IMAGE_FORMAT_PNG, VN_IMAGE_FORMAT_BMP}) {
        // Pixels, not bytes: the colour profile in a file may hold the time at which its process made it.
        Bitmap whole[2];
        for (int which = 0; which < 2; ++which) {
            ASSERT_NE(files.OnSaveQuick(Wide("reference").c_str(), pictures[which], format, 92), 0);
            whole[which] = files.OnLoadImage(Wide("reference").c_str(), nullptr, 0, 100, nullptr);
        }
        std::filesystem::create_directories(At("target"));
        int seen[2] = {};
        KillLoop::Run(
            {.kills = 40, .seed = static_cast<std::uint32_t>(format)},
            [&](int round) {
                return files.OnSaveQuick(Wide("target/a").c_str(), pictures[round % 2], format, 92) != 0;
            },
            [&](int kill) {
                const Bitmap found = files.OnLoadImage(Wide("target/a").c_str(), nullptr, 0, 100, nullptr);
                const bool first = found == whole[0], second = found == whole[1];
                ASSERT_NE(first, second) << "kill " << kill << ", format " << format << (found ? "" : ": unreadable");
                ++seen[second];
                // A temporary file tells that the kill came in the middle of a save.
                interrupted += std::distance(std::filesystem::directory_iterator(At("target")), {}) > 1;
                std::filesystem::remove_all(At("target"));
                std::filesystem::create_directories(At("target"));
            });
        EXPECT_GT(seen[0], 0) << format;
        EXPECT_GT(seen[1], 0) << format;
    }
    EXPECT_GT(interrupted, 0) << "some kills must come in the middle of a save";
}

TEST_F(SaveSafety, AKilledSnapshotIsWholeOrRefused) {
    const Bitmap pictures[2] = {TestPictures::Noise(700, 500, 1), TestPictures::Noise(700, 500, 2)};
    int refused = 0;
    KillLoop::Run(
        {.kills = 60, .seed = 2},
        [&](int round) { return PC_File::ImageSaveTobinary(pictures[round % 2], Wide("snapshot")); },
        [&](int kill) {
            const Bitmap found = PC_File::ImageReadFrombinary(Wide("snapshot"));
            ASSERT_TRUE(found.IsNull() || found == pictures[0] || found == pictures[1]) << "kill " << kill;
            refused += found.IsNull();
        });
    EXPECT_GT(refused, 0) << "some kills must come in the middle of a snapshot";
}
