// SPDX-License-Identifier: GPL-3.0-or-later
// Which frames there are, what they are called, and their thumbnails.
#include "FrameFolder.h"
#include "Language.h"

namespace {

class FrameCatalogue : public testing::Test {
  protected:
    QStringList Names(int kind) const {
        ReadFrames();
        QStringList names;
        for (const int number : FramesOfKind(kind)) {
            FrameEntry frame;
            EXPECT_TRUE(FindFrame(number, frame));
            EXPECT_EQ(frame.kind, kind);
            names << frame.Name();
        }
        return names;
    }
    FrameFolder folder;
};

}  // namespace

TEST_F(FrameCatalogue, IsEmptyWithoutFiles) {
    EXPECT_TRUE(Names(FrameSimple).empty());
    EXPECT_TRUE(Names(FrameOrnate).empty());
    EXPECT_TRUE(FramesOfKind(FrameNone).empty());
    EXPECT_TRUE(FramesOfKind(7).empty());
}

TEST_F(FrameCatalogue, ListsBothKindsOfSimpleFramesByName) {
    folder.AddNine(QStringLiteral("beta"));
    folder.AddStrip(QStringLiteral("Alpha"));
    folder.AddStrip(QStringLiteral("gamma"));
    folder.AddOverlay(QStringLiteral("delta"));
    EXPECT_EQ(Names(FrameSimple),
              QStringList({QStringLiteral("Alpha"), QStringLiteral("beta"), QStringLiteral("gamma")}));
    EXPECT_EQ(Names(FrameOrnate), QStringList(QStringLiteral("delta")));
}

TEST_F(FrameCatalogue, TheStripCountsWhereBothLieThere) {
    folder.AddNine(QStringLiteral("twin"));
    const QString strip = folder.AddStrip(QStringLiteral("twin"));
    EXPECT_EQ(Names(FrameSimple).size(), 1);
    FrameEntry frame;
    FindFrame(FramesOfKind(FrameSimple).front(), frame);
    EXPECT_EQ(frame.path, strip);
}

TEST_F(FrameCatalogue, AThumbnailWithoutItsFrameIsNotListedNorAFrameWithoutThumbnail) {
    folder.WriteThumbnail(FrameSimple, QStringLiteral("lonely.jpg"));
    folder.WriteThumbnail(FrameOrnate, QStringLiteral("astray.jpg"));
    QFile::remove(folder.Folder(FrameSimple) + QStringLiteral("/none.png"));
    folder.AddStrip(QStringLiteral("hidden"));
    QFile::remove(folder.Folder(FrameSimple) + QStringLiteral("/hidden.png"));
    EXPECT_TRUE(Names(FrameSimple).empty());
    EXPECT_TRUE(Names(FrameOrnate).empty());
}

TEST_F(FrameCatalogue, ExtensionsAreComparedWithoutCase) {
    const QString path = folder.AddStrip(QStringLiteral("Shout"));
    QFile::rename(path, folder.Folder(FrameSimple) + QStringLiteral("/Shout.NLF"));
    QFile::rename(folder.Folder(FrameSimple) + QStringLiteral("/Shout.png"),
                  folder.Folder(FrameSimple) + QStringLiteral("/Shout.PNG"));
    EXPECT_EQ(Names(FrameSimple), QStringList(QStringLiteral("Shout")));
}

TEST_F(FrameCatalogue, LinksFoldersAndOtherFilesArePassedOver) {
    const QString inside = folder.Folder(FrameSimple);
    folder.AddStrip(QStringLiteral("real"));
    QFile::link(inside + QStringLiteral("/real.png"), inside + QStringLiteral("/linked.png"));
    QFile::link(inside + QStringLiteral("/real.nlf"), inside + QStringLiteral("/linked.nlf"));
    folder.WriteThumbnail(FrameSimple, QStringLiteral("half.png"));
    QFile::link(inside + QStringLiteral("/real.nlf"), inside + QStringLiteral("/half.nlf"));
    QDir(inside).mkdir(QStringLiteral("folder.png"));
    folder.Write(FrameSimple, QStringLiteral("folder.nlf"), {1, 2, 3});
    folder.Write(FrameSimple, QStringLiteral("notes.txt"), {1, 2, 3});
    folder.Write(FrameSimple, QStringLiteral("notes.nlf"), {1, 2, 3});
    folder.WriteThumbnail(FrameSimple, QStringLiteral("caught.png"));
    QDir(inside).mkdir(QStringLiteral("caught.nlf"));
    EXPECT_EQ(Names(FrameSimple), QStringList(QStringLiteral("real")));
}

TEST_F(FrameCatalogue, OfTwoThumbnailsOfAFrameOneIsListed) {
    folder.AddStrip(QStringLiteral("once"));
    folder.WriteThumbnail(FrameSimple, QStringLiteral("once.jpg"));
    EXPECT_EQ(Names(FrameSimple).size(), 1);
}

TEST_F(FrameCatalogue, KnownStemsAreCalledInTheLanguageAndOthersByThemselves) {
    folder.AddStrip(QStringLiteral("Wood"));
    folder.AddStrip(QStringLiteral("My own = [frame]"));
    SetLanguage(QStringLiteral("1033"));
    EXPECT_EQ(Names(FrameSimple), QStringList({QStringLiteral("My own = [frame]"), QStringLiteral("Wood")}));
    SetLanguage(QStringLiteral("2052"));
    EXPECT_EQ(Names(FrameSimple).last(), QStringLiteral("木框"));
    SetLanguage(QStringLiteral("1033"));
}

TEST_F(FrameCatalogue, ANumberStaysItsFramesOwn) {
    const QString path = folder.AddStrip(QStringLiteral("first"));
    Names(FrameSimple);
    const int number = FramesOfKind(FrameSimple).front();
    EXPECT_EQ(FrameNumber(FrameSimple, path), number);
    EXPECT_NE(FrameNumber(FrameOrnate, path), number);
    folder.AddStrip(QStringLiteral("before all"));
    QFile::remove(path);
    Names(FrameSimple);
    FrameEntry frame;
    ASSERT_TRUE(FindFrame(number, frame));
    EXPECT_EQ(frame.path, path);
    EXPECT_FALSE(FindFrame(-1, frame));
    EXPECT_TRUE(frame.path.isEmpty());
    EXPECT_FALSE(FindFrame(1 << 20, frame));
}

TEST_F(FrameCatalogue, ThumbnailsKeepTheirProportionAndSmallOnesTheirSize) {
    const auto place = [&](int width, int height, double scale) {
        const QString file = folder.Write(FrameSimple, QStringLiteral("t.png"),
                                          FrameBuilder::Png(TestPictures::Plain(width, height, 0xFF203040)));
        Bitmap drawn(int(70 * scale), int(70 * scale));
        EXPECT_TRUE(DrawFrameThumbnail(file, scale, drawn));
        int left = drawn.Width(), top = drawn.Height(), right = -1, bottom = -1;
        for (int y = 0; y < drawn.Height(); ++y)
            for (int x = 0; x < drawn.Width(); ++x) {
                if (TestPictures::PixelAt(drawn, x, y) == 0xFFFFFFFF) continue;
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        return std::array{left, top, right - left + 1, bottom - top + 1};
    };
    EXPECT_EQ(place(40, 30, 1.0), (std::array{15, 20, 40, 30})) << "its own size, in the middle";
    EXPECT_EQ(place(70, 70, 1.0), (std::array{0, 0, 70, 70}));
    EXPECT_EQ(place(140, 70, 1.0), (std::array{0, 17, 70, 35}));
    EXPECT_EQ(place(60, 280, 1.0), (std::array{27, 0, 15, 70}));
    EXPECT_EQ(place(140, 140, 2.0), (std::array{0, 0, 140, 140})) << "sharp on a fine screen";
    EXPECT_EQ(place(20, 10, 2.0), (std::array{50, 60, 40, 20})) << "as large to the eye as on a plain one";
}

TEST_F(FrameCatalogue, ThumbnailsThatAreNoneOrTooLargeAreRefused) {
    const Bitmap ground = TestPictures::Plain(70, 70, 0xFF112233);
    Bitmap drawn = ground;
    EXPECT_FALSE(DrawFrameThumbnail(folder.Folder(FrameSimple) + QStringLiteral("/none.png"), 1.0, drawn));
    EXPECT_FALSE(DrawFrameThumbnail(folder.Write(FrameSimple, QStringLiteral("x.png"), {1, 2, 3, 4}), 1.0, drawn));
    const QString wide = folder.Write(FrameSimple, QStringLiteral("wide.png"),
                                      FrameBuilder::Png(TestPictures::Plain(4097, 1, 0xFF203040)));
    EXPECT_FALSE(DrawFrameThumbnail(wide, 1.0, drawn));
    FrameBuilder::Bytes heavy = FrameBuilder::Png(TestPictures::Plain(9, 9, 0xFF203040));
    heavy.resize((8 << 20) + 1);
    EXPECT_FALSE(DrawFrameThumbnail(folder.Write(FrameSimple, QStringLiteral("heavy.png"), heavy), 1.0, drawn));
    EXPECT_EQ(drawn, ground);
}

TEST(FrameArt, AllTwentyFourComeWithTheProgramAndCanBeUsed) {
    ReadFrames();
    const Bitmap picture = TestPictures::Face(640, 480);
    for (const int kind : {FrameSimple, FrameOrnate}) {
        const std::vector<int> frames = FramesOfKind(kind);
        EXPECT_EQ(frames.size(), 12u);
        for (const int number : frames) {
            FrameEntry frame;
            ASSERT_TRUE(FindFrame(number, frame));
            SCOPED_TRACE(frame.path.toStdString());
            for (const char* language : {"1033", "2052"}) {
                SetLanguage(QLatin1String(language));
                EXPECT_FALSE(LanguageText(QStringLiteral("ids_frame_") + QFileInfo(frame.path).baseName()).isEmpty());
            }
            FrameParams params;
            params.FramePath = frame.path;
            params.FrameType = kind;
            const Bitmap framed = params.Apply(picture, 1.0f);
            ASSERT_FALSE(framed.IsNull());
            EXPECT_FALSE(framed == picture);
            if (kind == FrameSimple)
                EXPECT_GT(framed.Width(), picture.Width());
            else
                EXPECT_EQ(framed.Width(), picture.Width());
            Bitmap thumbnail(140, 140);
            EXPECT_TRUE(DrawFrameThumbnail(frame.thumbnail, 2.0, thumbnail));
        }
    }
    SetLanguage(QStringLiteral("1033"));
}

TEST(FrameArt, TheMiddleOfAPictureInASimpleFrameKeepsItsBytes) {
    ReadFrames();
    const Bitmap picture = TestPictures::Noise(1400, 1300, 5);
    for (const int number : FramesOfKind(FrameSimple)) {
        FrameEntry frame;
        ASSERT_TRUE(FindFrame(number, frame));
        FrameParams params;
        params.FramePath = frame.path;
        params.FrameType = FrameSimple;
        const Bitmap framed = params.Apply(picture, 1.0f);
        // The picture's middle row is somewhere in the frame's: find it by its middle pixels.
        const auto* wanted = reinterpret_cast<const std::uint32_t*>(picture.Row(650)) + 700;
        bool found = false;
        for (int y = 600; y < framed.Height() && !found; ++y) {
            const auto* row = reinterpret_cast<const std::uint32_t*>(framed.Row(y));
            for (int x = 600; x + 400 < framed.Width() && !found; ++x)
                found = std::equal(wanted, wanted + 300, row + x);
        }
        EXPECT_TRUE(found) << frame.path.toStdString();
    }
}
