// SPDX-License-Identifier: GPL-3.0-or-later
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <thread>

#include "Parallel.h"
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
    const Bitmap pictures[2] = {TestPictures::Face(400, 300, 0xFFD9A184u, 1),
                                TestPictures::Face(300, 400, 0xFF805030u, 2)};
    Bytes whole[3][2];
    for (const int format : {1, 2, 3})
        for (int which = 0; which < 2; ++which) {
            ASSERT_NE(files.OnSaveQuick(Wide("reference").c_str(), pictures[which], format, 92), 0);
            whole[format - 1][which] = Get("reference");
        }
    std::mt19937 random(1);
    int seen[2] = {};
    for (int round = 0; round < 120; ++round) {
        const int format = 1 + round % 3;
        ASSERT_NE(files.OnSaveQuick(Wide("target").c_str(), pictures[0], format, 92), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            // The pool's threads did not come along; one thread does all.
            SetWorkerCount(1);
            PC_File own;
            for (int i = 1;; ++i) own.OnSaveQuick(Wide("target").c_str(), pictures[i % 2], format, 92);
        }
        std::this_thread::sleep_for(std::chrono::microseconds(500 + random() % 30000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const Bytes found = Get("target");
        const bool old = found == whole[format - 1][0], fresh = found == whole[format - 1][1];
        ASSERT_TRUE(old || fresh) << "round " << round << ", " << found.size() << " bytes";
        ++seen[fresh];
    }
    EXPECT_GT(seen[0], 0);
    EXPECT_GT(seen[1], 0) << "the kills came too early to mean anything";
}

TEST_F(SaveSafety, AKilledSnapshotIsWholeOrRefused) {
    const Bitmap pictures[2] = {TestPictures::Noise(700, 500, 1), TestPictures::Noise(700, 500, 2)};
    std::mt19937 random(2);
    for (int round = 0; round < 60; ++round) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            SetWorkerCount(1);
            for (int i = 0;; ++i) PC_File::ImageSaveTobinary(pictures[i % 2], Wide("snapshot"));
        }
        std::this_thread::sleep_for(std::chrono::microseconds(500 + random() % 8000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const Bitmap found = PC_File::ImageReadFrombinary(Wide("snapshot"));
        ASSERT_TRUE(found.IsNull() || found == pictures[0] || found == pictures[1]);
    }
}
