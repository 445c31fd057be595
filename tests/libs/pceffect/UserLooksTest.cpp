// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "CubeFile.h"
#include "Lattice.h"
#include "TestPictures.h"
#include "UserLooks.h"
#include "WatchfulSink.h"

namespace {

class UserLooks : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(m_folder / name, std::ios::binary) << text;
    }
    std::vector<UserLook> Load() {
        m_lines.clear();
        return LoadUserLooks(m_folder, [this](const std::wstring& line) { m_lines.push_back(line); });
    }

    const std::filesystem::path m_folder = std::filesystem::temp_directory_path() / "quince_test_user_looks";
    std::vector<std::wstring> m_lines;
};

const std::string Negative =
    "TITLE \"Negative\"\nLUT_3D_SIZE 2\n1 1 1\n0 1 1\n1 0 1\n0 0 1\n1 1 0\n0 1 0\n1 0 0\n0 0 0\n";

}  // namespace

TEST_F(UserLooks, AreSortedByFileAndNamedByTitleOrFile) {
    Write("b.cube", Negative);
    Write("a soft one.CUBE", Negative.substr(Negative.find('\n') + 1));
    Write("c.cube", "TITLE \"\xE6\x9A\x96\"\n" + Negative.substr(Negative.find('\n') + 1));
    Write("readme.txt", "not a look");
    std::filesystem::create_directories(m_folder / "folder.cube");
    const auto looks = Load();
    ASSERT_EQ(looks.size(), 3u);
    EXPECT_EQ(looks[0].title, L"a soft one");
    EXPECT_EQ(looks[1].title, L"Negative");
    EXPECT_EQ(looks[2].title, L"\u6696");
    EXPECT_EQ(looks[1].file, m_folder / "b.cube");
}

TEST_F(UserLooks, ADamagedOneIsLeftOutWithOneLine) {
    Write("bad.cube", "LUT_3D_SIZE 2\n0 0\n");
    Write("good.cube", Negative);
    EXPECT_EQ(Load().size(), 1u);
    ASSERT_EQ(m_lines.size(), 1u);
    EXPECT_EQ(m_lines[0], L"Look left out: bad.cube: line 2: a point is three numbers");
    EXPECT_EQ(LoadUserLooks(m_folder, {}).size(), 1u);
}

TEST_F(UserLooks, NoFolderIsNoLooks) {
    std::filesystem::remove_all(m_folder);
    EXPECT_TRUE(Load().empty());
    EXPECT_TRUE(m_lines.empty());
}

TEST_F(UserLooks, ATitleThatIsNoUtf8BreaksNothing) {
    Write("x.cube", "TITLE \"a\xFF\xE2\x28\xA1\"\n" + Negative.substr(Negative.find('\n') + 1));
    const auto looks = Load();
    ASSERT_EQ(looks.size(), 1u);
    EXPECT_EQ(looks[0].title.front(), L'a');
}

TEST_F(UserLooks, ApplyTheTableAndKeepAlpha) {
    Write("n.cube", Negative);
    const auto looks = Load();
    ASSERT_EQ(looks.size(), 1u);
    const Bitmap source = TestPictures::Noise(50, 40, 3, false);
    Bitmap picture = source;
    ASSERT_NE(ApplyUserLook(looks[0], picture.MutablePixels(), 50, 40, nullptr, 0, 100), 0);
    for (std::size_t i = 0; i < source.ByteCount(); ++i)
        ASSERT_EQ(picture.Pixels()[i], i % 4 == 3 ? source.Pixels()[i] : 255 - source.Pixels()[i]);
}

TEST_F(UserLooks, AFineTableIsMetWithinOneLevel) {
    CubeTable table;
    table.size = 64;
    for (int i = 0; i < 64 * 64 * 64; ++i) {
        const float r = float(i % 64) / 63, g = float(i / 64 % 64) / 63, b = float(i / 4096) / 63;
        table.points.push_back({r * r, 0.5f * g + 0.5f * b, 1 - b * r});
    }
    Write("fine.cube", CubeText(table));
    const auto looks = Load();
    ASSERT_EQ(looks.size(), 1u);
    const Bitmap source = TestPictures::Noise(60, 60, 8);
    Bitmap picture = source;
    ASSERT_NE(ApplyUserLook(looks[0], picture.MutablePixels(), 60, 60, nullptr, 0, 100), 0);
    for (std::size_t i = 0; i < source.ByteCount(); i += 4) {
        const std::uint8_t *in = source.Pixels() + i, *out = picture.Pixels() + i;
        const Triple exact = table.At({in[2] / 255.0, in[1] / 255.0, in[0] / 255.0});
        for (int c = 0; c < 3; ++c) ASSERT_NEAR(out[2 - c], 255 * exact[c], 1.5);
    }
}

TEST_F(UserLooks, StopWhenAskedAndRefuseNothingness) {
    Write("n.cube", Negative);
    const auto looks = Load();
    ASSERT_EQ(looks.size(), 1u);
    Bitmap picture = TestPictures::Noise(1000, 300, 3);
    WatchfulSink sink(2);
    EXPECT_EQ(ApplyUserLook(looks[0], picture.MutablePixels(), 1000, 300, &sink, 0, 100), 0);
    EXPECT_EQ(ApplyUserLook({}, picture.MutablePixels(), 20, 400, nullptr, 0, 100), 0);
    EXPECT_EQ(ApplyUserLook(looks[0], nullptr, 20, 400, nullptr, 0, 100), 0);
}
