// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QFile>
#include <QtGui/QImage>
#include <QtWidgets/QStackedWidget>

#include "BitmapView.h"
#include "ClickCount.h"
#include "EffectHost.h"

namespace {

class EffectPanel : public testing::Test {
  protected:
    void SetUp() override {
        ClickCounts().Clear();
        picture = TestPictures::Face(400, 300);
        host.Open(picture);
        ASSERT_TRUE(host.WaitLoaded(1));
    }
    static int Clicks(const char* code) {
        const auto counts = ClickCounts().Counts();
        const auto found = counts.find(QLatin1String(code));
        return found == counts.end() ? 0 : found->second;
    }
    int Page() const { return host.panel->Find<QStackedWidget>(QStringLiteral("TabLayoutUI_TeXiao"))->currentIndex(); }
    QStringList Names(int category) const {
        QStringList names;
        for (int i = 0; i < host.List(category)->count(); ++i) names << host.List(category)->Row(i)->Name();
        return names;
    }
    static QStringList Promised(int category) {
        QStringList names;
        for (const int index : EffectsOfCategory(category)) names << GetEffectName(index);
        return names;
    }
    bool WaitCovers() const {
        return QTest::qWaitFor([&] { return !host.Button("BtnLeaker")->property("bkimage").toString().isEmpty(); });
    }

    Bitmap picture;
    EffectHost host;
};

constexpr const char* Buttons[] = {"BtnFilm", "BtnPola", "BtnVintage", "BtnLomo", "BtnFade", "BtnBW", "BtnLeaker"};
constexpr const char* Covers[] = {"Film.jpg", "Pola.jpg", "Vintage.jpg", "Lomo.jpg",
                                  "Fade.jpg", "BW.jpg",   "Leaker.jpg"};

TEST_F(EffectPanel, OpensOnFilmWithItsRows) {
    EXPECT_EQ(host.panel->Category(), 1);
    EXPECT_EQ(Page(), 0);
    EXPECT_TRUE(host.Button("BtnFilm")->isChecked());
    EXPECT_EQ(Names(1), Promised(1));
    for (int category = 2; category <= 7; ++category) EXPECT_EQ(host.List(category)->count(), 0);
    EXPECT_EQ(Clicks("8880301"), 0) << "opening is no click of the user";
    EXPECT_FALSE(host.IsStrengthShown());
}

TEST_F(EffectPanel, EveryCategoryFillsWithItsEffects) {
    for (int category = 2; category <= 7; ++category) {
        host.Click(Buttons[category - 1]);
        ASSERT_TRUE(host.WaitLoaded(category));
        EXPECT_EQ(Page(), category - 1);
        EXPECT_EQ(Names(category), Promised(category));
    }
}

TEST_F(EffectPanel, ARowIsTheEffectOnAPieceOfThePicture) {
    const double scale = host.canvas->PixelRatio();
    const Bitmap base = host.canvas->ThumbnailBase(CLookListPanel::ThumbnailSize, scale);
    EXPECT_EQ(base.Width(), int(70 * scale));
    EXPECT_EQ(base.Height(), int(96 * scale));
    int rows = 0;
    for (const FrameMessage& message : host.messages) {
        const auto* row = std::get_if<HandOffMessage>(&message);
        if (!row) continue;
        EXPECT_EQ(row->tool, CEffectWnd::Facts.number);
        EXPECT_EQ(row->value, rows++) << "rows come in order";
        EXPECT_EQ(row->colour, GetEffectInfo(row->value).Colour);
        EXPECT_TRUE(row->thumbnail == EffectHost::Effect(base, row->value));
        EXPECT_TRUE(row->background.endsWith(QStringLiteral("/film/%1.png' dest='0,0,70,96' ").arg(rows)))
            << row->background.toStdString();
    }
    EXPECT_EQ(rows, 8);
}

TEST_F(EffectPanel, CoversAreWrittenAndShownOnTheButtons) {
    ASSERT_TRUE(WaitCovers());
    for (int i = 0; i < 7; ++i) {
        const QString path = EffectHost::CoverPath(Covers[i]);
        const QImage cover(path);
        EXPECT_EQ(cover.size(), QSize(47, 47)) << Covers[i];
        EXPECT_EQ(host.Button(Buttons[i])->property("bkimage").toString(),
                  QStringLiteral("file='%1' dest='12,5,59,52' ").arg(path));
        const Bitmap expected = EffectHost::Effect(host.canvas->ThumbnailBase(CLookListPanel::CoverSize, 1.0),
                                                   FindCategory(i + 1)->coverIndex);
        EXPECT_LE(std::abs(qGray(cover.pixel(23, 23)) - qGray(ViewOf(expected).pixel(23, 23))), 12) << Covers[i];
    }
}

TEST_F(EffectPanel, AFineScreenGetsFineCovers) {
    ASSERT_TRUE(WaitCovers());
    const QImage fine(EffectHost::CoverPath("Film@2x.jpg"));
    if (host.canvas->PixelRatio() > 1.0)
        EXPECT_EQ(fine.size(), QSize(94, 94));
    else
        EXPECT_TRUE(fine.isNull());
}

TEST_F(EffectPanel, APictureNarrowerThanACoverStillYieldsFullCovers) {
    host.Open(TestPictures::Face(20, 300));
    ASSERT_TRUE(host.WaitLoaded(1));
    EXPECT_EQ(QImage(EffectHost::CoverPath("Film.jpg")).size(), QSize(47, 47));
    EXPECT_EQ(host.List(1)->count(), 8);
}

TEST_F(EffectPanel, CoversAndRowsAreMadeAnewFromThePictureWheneverThePanelOpens) {
    ASSERT_TRUE(WaitCovers());
    host.Choose(1, 2);
    host.Click("BtnBW");
    ASSERT_TRUE(host.WaitLoaded(6));
    host.Choose(6, 0);  // black and white
    const QImage before(EffectHost::CoverPath("Film.jpg"));
    host.Leave();
    host.Enter();
    EXPECT_EQ(host.panel->Category(), 1);
    EXPECT_EQ(host.List(6)->count(), 0);
    ASSERT_TRUE(host.WaitLoaded(1));
    EXPECT_NE(QImage(EffectHost::CoverPath("Film.jpg")), before);
}

TEST_F(EffectPanel, ALoadedCategoryMakesNoRowsAgain) {
    host.Click("BtnPola");
    ASSERT_TRUE(host.WaitLoaded(2));
    const CEffectListItem* row = host.List(1)->Row(0);
    host.messages.clear();
    host.Click("BtnFilm");
    QTest::qWait(50);
    EXPECT_EQ(host.List(1)->Row(0), row);
    EXPECT_EQ(host.List(1)->count(), 8);
    EXPECT_TRUE(host.messages.empty());
}

TEST_F(EffectPanel, ACategoryCountsItsClickWhenItIsChosen) {
    host.Click("BtnFilm");
    EXPECT_EQ(Clicks("8880301"), 0) << "it was on show already";
    EXPECT_TRUE(host.Button("BtnFilm")->isChecked());
    const char* codes[] = {"8880301", "8880302", "8880303", "8880304", "8880305", "8880306", "8880307"};
    for (const int i : {1, 2, 3, 4, 5, 6, 0}) {
        host.Click(Buttons[i]);
        EXPECT_EQ(Clicks(codes[i]), 1) << codes[i];
    }
}

TEST_F(EffectPanel, AStoppedFillIsNotLoadedAndItsRowsAreDropped) {
    host.Click("BtnPola");
    host.panel->OnFrameMessage(LeavingToolMessage{CEffectWnd::Facts.number});
    const int rows = host.List(2)->count();
    QTest::qWait(100);
    EXPECT_EQ(host.List(2)->count(), rows) << "what was under way is dropped";
    EXPECT_FALSE(host.panel->IsLoaded(2));
    // The opening came to nothing: the panel goes on, and a fill begins with the flag cleared.
    host.panel->OnFrameMessage(RefreshPanelMessage{CEffectWnd::Facts.number});
    ASSERT_TRUE(host.WaitLoaded(1));
    host.Click("BtnPola");
    ASSERT_TRUE(host.WaitLoaded(2));
    EXPECT_EQ(Names(2), Promised(2));
}

TEST_F(EffectPanel, AnotherCategoryDuringAFillStopsItAndComingBackFillsItAnew) {
    host.Click("BtnPola");
    host.Click("BtnVintage");
    EXPECT_FALSE(host.panel->IsLoaded(2));
    ASSERT_TRUE(host.WaitLoaded(3));
    host.Click("BtnPola");
    ASSERT_TRUE(host.WaitLoaded(2));
    EXPECT_EQ(Names(2), Promised(2));
    EXPECT_EQ(Names(3), Promised(3));
}

TEST_F(EffectPanel, ChangingTheCategoryAtOnceStillMakesTheCovers) {
    host.Leave();
    QDir(AppPath(QStringLiteral("Temp/TeXiao"))).removeRecursively();
    host.Enter();
    host.Click("BtnLeaker");
    ASSERT_TRUE(host.WaitLoaded(7));
    for (const char* cover : Covers) EXPECT_TRUE(QFile::exists(EffectHost::CoverPath(cover))) << cover;
}

TEST_F(EffectPanel, AFailedOpenFillsItsRowsFromTheSourceAgain) {
    const Bitmap base = host.canvas->ThumbnailBase(CLookListPanel::ThumbnailSize, host.canvas->PixelRatio());
    host.Choose(1, 3);
    host.messages.clear();
    host.panel->OnFrameMessage(LeavingToolMessage{CEffectWnd::Facts.number});
    host.panel->OnFrameMessage(RefreshPanelMessage{CEffectWnd::Facts.number});
    ASSERT_TRUE(host.WaitLoaded(1));
    int rows = 0;
    for (const FrameMessage& message : host.messages)
        if (const auto* row = std::get_if<HandOffMessage>(&message)) {
            ++rows;
            EXPECT_TRUE(row->thumbnail == EffectHost::Effect(base, row->value)) << "not effect over effect";
        }
    EXPECT_EQ(rows, 8);
    EXPECT_EQ(host.Selected(1), 3);
}

TEST_F(EffectPanel, TheStrengthWindowGoesWithItsPanel) {
    host.Choose(1, 3);
    const QPointer<QWidget> strength = host.panel->Strength();
    ASSERT_TRUE(strength);
    delete host.panel;
    EXPECT_FALSE(strength) << "it would call a panel that is gone";
    host.panel = new CTeXiaoPanel(host, &host.frame);
}

TEST_F(EffectPanel, ARowOfAnOlderFillIsDropped) {
    HandOffMessage stale;
    stale.tool = CEffectWnd::Facts.number;
    stale.list = 1;
    stale.text = QStringLiteral("stale");
    host.panel->OnFrameMessage(stale);
    EXPECT_EQ(host.List(1)->count(), 8);
}

TEST_F(EffectPanel, OpeningAPictureStopsAFill) {
    host.Click("BtnPola");
    host.Open(TestPictures::Face(200, 300, 0xFF8D5A3C));
    ASSERT_TRUE(host.WaitLoaded(1));
    EXPECT_EQ(host.List(1)->count(), 8);
    EXPECT_EQ(host.List(2)->count(), 0);
}

TEST_F(EffectPanel, DestroyingThePanelDuringAFillIsSafe) {
    host.Click("BtnPola");
    delete host.panel;
    host.panel = nullptr;
    QTest::qWait(30);
}

TEST_F(EffectPanel, RowsAreReachedByTheKeyboard) {
    CEffectListView* list = host.List(1);
    list->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(list->currentRow(), 0);
    QTest::keyClick(list, Qt::Key_Right);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(host.canvas->Look(), 4);
    EXPECT_EQ(host.Selected(1), 4);
}

TEST_F(EffectPanel, ControlsSayWhatTheyAre) {
    for (const char* name : Buttons) {
        EXPECT_FALSE(host.Button(name)->accessibleName().isEmpty()) << name;
        EXPECT_FALSE(host.Button(name)->toolTip().isEmpty()) << name;
    }
    for (int category = 1; category <= 8; ++category) EXPECT_FALSE(host.List(category)->accessibleName().isEmpty());
    EXPECT_EQ(host.List(1)->item(0)->data(Qt::AccessibleTextRole).toString(), GetEffectName(0));
}

TEST_F(EffectPanel, TheUsersCategoryShowsOnlyWithLooks) {
    EXPECT_FALSE(host.Button("BtnUser")->isVisible());
    const QString folder = TestHome::Path() + QStringLiteral("/Looks");
    QDir().mkpath(folder);
    QFile file(folder + QStringLiteral("/mine.cube"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    QByteArray cube = "TITLE \"My look\"\nLUT_3D_SIZE 2\n";
    for (int i = 0; i < 8; ++i)
        cube += QByteArray::number(1 - (i & 1)) + ' ' + QByteArray::number(i >> 1 & 1) + ' ' +
                QByteArray::number(i >> 2) + '\n';
    file.write(cube);
    file.close();
    {
        EffectHost mine;
        mine.Open(picture);
        ASSERT_TRUE(mine.WaitLoaded(1));
        EXPECT_TRUE(mine.Button("BtnUser")->isVisible());
        mine.Click("BtnUser");
        ASSERT_TRUE(mine.WaitLoaded(UserCategory));
        ASSERT_EQ(mine.List(UserCategory)->count(), 1);
        EXPECT_EQ(mine.List(UserCategory)->Row(0)->Name(), QStringLiteral("My look"));
        mine.Choose(UserCategory, 0);
        EXPECT_EQ(mine.canvas->Look(), 50);
        EXPECT_TRUE(mine.canvas->GetShowBitmap() == EffectHost::Effect(picture, 50));
        EXPECT_EQ(QImage(EffectHost::CoverPath("User.jpg")).size(), QSize(47, 47));
    }
    QDir(folder).removeRecursively();
    ReadUserLooks();
}

TEST(EffectNames, FitTheirStripInBothLanguages) {
    for (const char* language : {"1033", "2052"}) {
        EffectHost host{QString(QLatin1String(language))};
        host.Open(TestPictures::Face(100, 120));
        ASSERT_TRUE(host.WaitLoaded(1));
        const auto* label = host.List(1)->Row(0)->Find<QLabel>(QStringLiteral("TxtEffectName"));
        for (int i = 0; i < EffectCount; ++i)
            EXPECT_LE(label->fontMetrics().horizontalAdvance(GetEffectName(i)), 66)
                << language << ' ' << GetEffectName(i).toStdString();
        for (const char* name : Buttons)
            EXPECT_LE(host.Button(name)->fontMetrics().horizontalAdvance(host.Button(name)->text()), 64) << name;
    }
}

}  // namespace
