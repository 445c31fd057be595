// SPDX-License-Identifier: GPL-3.0-or-later
#include "WholeFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>

#include "TestHome.h"

namespace fs = std::filesystem;

class WholeFiles : public testing::Test {
  protected:
    void SetUp() override {
        folder = fs::path(TestHome::Path().toStdString()) / "whole";
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    static std::string Read(const fs::path& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    static void Put(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }
    int Entries() const { return static_cast<int>(std::distance(fs::directory_iterator(folder), {})); }
    fs::path folder;
};

TEST_F(WholeFiles, TheTargetAppearsOnlyOnCommit) {
    WholeFile file(folder / "a");
    ASSERT_TRUE(file.Open());
    ASSERT_TRUE(file.Write("new", 3));
    EXPECT_FALSE(fs::exists(folder / "a"));
    EXPECT_TRUE(file.Commit());
    EXPECT_EQ(Read(folder / "a"), "new");
    EXPECT_EQ(Entries(), 1);
}

TEST_F(WholeFiles, WithoutCommitTheOldFileStaysAndNothingIsLeft) {
    Put(folder / "a", "old");
    {
        WholeFile file(folder / "a");
        ASSERT_TRUE(file.Open());
        file.Write("new", 3);
    }
    EXPECT_EQ(Read(folder / "a"), "old");
    EXPECT_EQ(Entries(), 1);
}

TEST_F(WholeFiles, AMissingFolderIsRefused) {
    WholeFile file(folder / "none" / "a");
    EXPECT_FALSE(file.Open());
    EXPECT_FALSE(file.Write("x", 1));
    EXPECT_FALSE(file.Commit());
}

TEST_F(WholeFiles, ALinkStaysALinkAndItsTargetIsWritten) {
    Put(folder / "real", "old");
    fs::create_symlink("real", folder / "link");
    WholeFile file(folder / "link");
    ASSERT_TRUE(file.Open());
    file.Write("new", 3);
    ASSERT_TRUE(file.Commit());
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(Read(folder / "real"), "new");
}

TEST_F(WholeFiles, PermissionsOfTheOldFileAreKept) {
    Put(folder / "a", "old");
    ::chmod((folder / "a").c_str(), 0640);
    WholeFile file(folder / "a");
    ASSERT_TRUE(file.Open());
    file.Write("new", 3);
    ASSERT_TRUE(file.Commit());
    struct stat now = {};
    ::stat((folder / "a").c_str(), &now);
    EXPECT_EQ(now.st_mode & 0777, 0640u);
}

TEST_F(WholeFiles, ATargetThatIsAFolderFailsAndStays) {
    fs::create_directory(folder / "dir");
    WholeFile file(folder / "dir");
    ASSERT_TRUE(file.Open());
    file.Write("x", 1);
    EXPECT_FALSE(file.Commit());
    EXPECT_TRUE(fs::is_directory(folder / "dir"));
}
