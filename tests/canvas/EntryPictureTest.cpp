// SPDX-License-Identifier: GPL-3.0-or-later
#include "EntryPicture.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include "TestHome.h"
#include "TestPictures.h"

namespace {

QString PathOf(const char* name) {
    return TestHome::Path() + QStringLiteral("/Temp/Entry/") + QString::fromLatin1(name);
}

}  // namespace

TEST(EntryPicture, GivesBackThePictureLastKept) {
    EntryPicture entry(PathOf("a.bin"));
    EXPECT_TRUE(entry.Read().IsNull());
    for (const int seed : {1, 2}) {
        const Bitmap picture = TestPictures::Noise(40 + seed, 30, static_cast<std::uint32_t>(seed), false);
        entry.Keep(picture);
        EXPECT_TRUE(entry.Read() == picture);
        EXPECT_FALSE(entry.Read().SharesPixelsWith(picture)) << "it lies in the file";
    }
}

TEST(EntryPicture, DeletesItsFile) {
    {
        EntryPicture entry(PathOf("b.bin"));
        entry.Keep(TestPictures::Ramp(20, 10));
        EXPECT_TRUE(QFile::exists(entry.Path()));
    }
    EXPECT_FALSE(QFile::exists(PathOf("b.bin")));
}

TEST(EntryPicture, KeepsInMemoryWhatCanNotBeWritten) {
    ASSERT_TRUE(QDir().mkpath(PathOf("c.bin")));
    const Bitmap picture = TestPictures::Ramp(20, 10);
    {
        EntryPicture entry(PathOf("c.bin"));
        entry.Keep(picture);
        EXPECT_TRUE(entry.Read().SharesPixelsWith(picture));
    }
    QDir().rmdir(PathOf("c.bin"));
}

TEST(EntryPicture, ADamagedFileGivesNothing) {
    EntryPicture entry(PathOf("d.bin"));
    entry.Keep(TestPictures::Ramp(20, 10));
    QFile file(entry.Path());
    ASSERT_TRUE(file.resize(60));
    EXPECT_TRUE(entry.Read().IsNull());
}
