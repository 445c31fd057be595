// SPDX-License-Identifier: GPL-3.0-or-later
// The frame tool's canvas and panel, by mouse.
#include <QtWidgets/QStackedWidget>

#include "ClickCount.h"
#include "FrameFolder.h"
#include "FrameHost.h"

namespace {

class FramePanel : public testing::Test {
  protected:
    void SetUp() override {
        ClickCounts().Clear();
        strip = folder.AddStrip(QStringLiteral("a strip"), 12);
        nine = folder.AddNine(QStringLiteral("nine"), 7);
        overlay = folder.AddOverlay(QStringLiteral("overlay"), 5);
        second = folder.AddOverlay(QStringLiteral("second"), 6);
        host = std::make_unique<FrameHost>();
        picture = TestPictures::Face(400, 301);
        host->Open(picture);
        ASSERT_TRUE(host->WaitLoaded(FrameSimple));
    }
    void TearDown() override { host = nullptr; }

    static int Clicks(const char* code) {
        const auto counts = ClickCounts().Counts();
        const auto found = counts.find(QLatin1String(code));
        return found == counts.end() ? 0 : found->second;
    }
    Bitmap With(const QString& path, int kind) const {
        FrameParams params;
        params.FramePath = path;
        params.FrameType = kind;
        return params.Apply(picture, 1.0f);
    }
    Bitmap OnShow() { return host->canvas->GetShowBitmap(); }
    void ShowOrnate() {
        host->Click("BtnXuanCai");
        ASSERT_TRUE(host->WaitLoaded(FrameOrnate));
    }

    FrameFolder folder;
    QString strip, nine, overlay, second;
    Bitmap picture;
    std::unique_ptr<FrameHost> host;
};

TEST_F(FramePanel, OpensOnTheSimpleFramesWithTheirRows) {
    EXPECT_EQ(host->panel->Category(), FrameSimple);
    EXPECT_EQ(host->Names(FrameSimple), QStringList({QStringLiteral("a strip"), QStringLiteral("nine")}));
    EXPECT_EQ(host->List(FrameOrnate)->count(), 0) << "a page is filled when it is first shown";
    EXPECT_FALSE(host->IsStrengthShown());
    ShowOrnate();
    EXPECT_EQ(host->Names(FrameOrnate), QStringList({QStringLiteral("overlay"), QStringLiteral("second")}));
    EXPECT_EQ(host->panel->Find<QStackedWidget>(QStringLiteral("TabLayoutUI_Frame"))->currentIndex(), 1);
    for (const char* button : {"BtnJianDan", "BtnXuanCai"})
        EXPECT_TRUE(host->panel->Find<QAbstractButton>(QLatin1String(button))->isVisible());
}

TEST_F(FramePanel, ARowIsItsThumbnail) {
    const double scale = host->canvas->PixelRatio();
    Bitmap expected(int(70 * scale), int(70 * scale));
    ASSERT_TRUE(DrawFrameThumbnail(folder.Folder(FrameSimple) + QStringLiteral("/a strip.png"), scale, expected));
    host->Leave();
    host = std::make_unique<FrameHost>();
    host->history.OpenImage(picture);
    host->canvas->SetShowBitmap(picture);
    host->panel->OnFrameMessage(ImageLoadedMessage{CImageFrameWnd::Facts.number});
    ASSERT_TRUE(host->WaitLoaded(FrameSimple));
    std::vector<HandOffMessage> rows;
    for (const FrameMessage& message : host->messages)
        if (const auto* row = std::get_if<HandOffMessage>(&message)) rows.push_back(*row);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].text, QStringLiteral("a strip"));
    EXPECT_EQ(rows[0].thumbnail, expected);
}

TEST_F(FramePanel, AThumbnailThatIsNoneHasNoRow) {
    host = nullptr;
    folder.AddStrip(QStringLiteral("middle"));
    folder.Write(FrameSimple, QStringLiteral("middle.png"), {1, 2, 3});
    host = std::make_unique<FrameHost>();
    host->Open(picture);
    ASSERT_TRUE(host->WaitLoaded(FrameSimple));
    EXPECT_EQ(host->Names(FrameSimple), QStringList({QStringLiteral("a strip"), QStringLiteral("nine")}));
    host->Choose(FrameSimple, 1);
    EXPECT_EQ(OnShow(), With(nine, FrameSimple)) << "a row's frame is its own";
}

TEST_F(FramePanel, ThumbnailsAreMadeOnce) {
    const CEffectListItem* row = host->List(FrameSimple)->Row(0);
    host->Leave();
    host->Enter();
    host->Open(TestPictures::Face(90, 90));
    QTest::qWait(50);
    EXPECT_EQ(host->List(FrameSimple)->Row(0), row);
    EXPECT_EQ(host->List(FrameSimple)->count(), 2);
}

TEST_F(FramePanel, ASimpleFrameIsAppliedByAClickAndNeverHasAStrength) {
    host->Choose(FrameSimple, 0);
    EXPECT_EQ(OnShow(), With(strip, FrameSimple));
    EXPECT_EQ(host->List(FrameSimple)->SelectedItem(), 0);
    EXPECT_FALSE(host->IsStrengthShown());
    EXPECT_EQ(Clicks("888020402"), 1);
    EXPECT_EQ(Clicks("888020403"), 0);
    EXPECT_EQ(host->Sent<SizeNews>(), 1) << "the status bar hears of the new size";
    int width = 0, height = 0;
    host->canvas->GetImageSize(&width, &height);
    EXPECT_EQ(QSize(width, height), QSize(424, 325));
    host->Undo();
    host->canvas->GetImageSize(&width, &height);
    EXPECT_EQ(QSize(width, height), QSize(400, 301));
    EXPECT_EQ(host->List(FrameSimple)->SelectedItem(), -1);
    host->Redo();
    EXPECT_FALSE(host->IsStrengthShown());
    EXPECT_EQ(host->List(FrameSimple)->SelectedItem(), 0);
}

TEST_F(FramePanel, AnOrnateFrameIsFadedByTheStrengthWindow) {
    ShowOrnate();
    host->Choose(FrameOrnate, 0);
    EXPECT_EQ(OnShow(), With(overlay, FrameOrnate));
    EXPECT_EQ(Clicks("888020403"), 1);
    ASSERT_TRUE(host->IsStrengthShown());
    EXPECT_EQ(host->Slider()->value(), 100);
    host->DragStrength(40);
    EXPECT_EQ(host->canvas->Alpha(), 40);
    const Bitmap faded = OnShow();
    EXPECT_FALSE(faded == With(overlay, FrameOrnate));
    host->Undo();
    EXPECT_EQ(OnShow(), picture);
    EXPECT_FALSE(host->IsStrengthShown());
    host->Redo();
    EXPECT_EQ(OnShow(), faded);
    ASSERT_TRUE(host->IsStrengthShown());
    EXPECT_EQ(host->Slider()->value(), 40);
    EXPECT_EQ(host->List(FrameOrnate)->SelectedItem(), 0);
    host->Choose(FrameOrnate, 1);
    EXPECT_EQ(OnShow(), With(second, FrameOrnate));
    EXPECT_EQ(host->Slider()->value(), 100) << "every frame begins at full strength";
}

TEST_F(FramePanel, ASimpleFrameInPlaceOfAnOrnateOneHidesTheStrength) {
    ShowOrnate();
    host->Choose(FrameOrnate, 0);
    host->Click("BtnJianDan");
    EXPECT_TRUE(host->IsStrengthShown()) << "the ornate frame is still in force";
    host->Choose(FrameSimple, 1);
    EXPECT_FALSE(host->IsStrengthShown());
    EXPECT_EQ(host->List(FrameOrnate)->SelectedItem(), -1);
    EXPECT_EQ(OnShow(), With(nine, FrameSimple));
}

TEST_F(FramePanel, LeavingHidesTheStrengthAndCountsAChange) {
    ShowOrnate();
    host->Choose(FrameOrnate, 0);
    host->Leave();
    EXPECT_FALSE(host->IsStrengthShown());
    EXPECT_EQ(Clicks("888020401"), 1);
    host->Enter();
    EXPECT_FALSE(host->IsStrengthShown());
    EXPECT_EQ(OnShow(), With(overlay, FrameOrnate));
}

TEST_F(FramePanel, AFrameThatCantBeUsedIsToldOnceAndChangesNothing) {
    ShowOrnate();
    host->Choose(FrameOrnate, 1);
    host->DragStrength(70);
    const Bitmap shown = OnShow();
    folder.Write(FrameOrnate, QStringLiteral("overlay.vnbkxc"), {1, 2, 3});
    host->Choose(FrameOrnate, 0);
    EXPECT_EQ(host->told, std::vector<QString>{QStringLiteral("ids_frameerror")});
    EXPECT_EQ(OnShow(), shown);
    EXPECT_EQ(host->List(FrameOrnate)->SelectedItem(), 1);
    ASSERT_TRUE(host->IsStrengthShown());
    EXPECT_EQ(host->Slider()->value(), 70);
    EXPECT_EQ(Clicks("888020403"), 1);
}

TEST_F(FramePanel, AFrameThatIsLostBehindAnUndoIsTold) {
    host->Choose(FrameSimple, 0);
    host->Undo();
    EXPECT_TRUE(host->told.empty());
    QFile::remove(strip);
    QFile::remove(host->canvas->Logic().LookFile());
    host->Redo();
    EXPECT_EQ(host->told, std::vector<QString>{QStringLiteral("ids_framelost")});
    EXPECT_EQ(OnShow(), picture);
}

TEST_F(FramePanel, ChoosingLeavesCompare) {
    host->compareMode = 2;
    host->Choose(FrameSimple, 0);
    EXPECT_EQ(host->compareMode, 0);
}

TEST_F(FramePanel, EscStopsAFrame) {
    host->cancelAt = 1.0f;
    host->Choose(FrameSimple, 0);
    EXPECT_EQ(OnShow(), picture);
    EXPECT_TRUE(host->told.empty()) << "the user knows";
    EXPECT_EQ(Clicks("888020402"), 0);
}

TEST_F(FramePanel, WithoutFilesThePagesAreEmpty) {
    host = nullptr;
    for (const int kind : {FrameSimple, FrameOrnate}) QDir(folder.Folder(kind)).removeRecursively();
    host = std::make_unique<FrameHost>();
    host->Open(picture);
    ASSERT_TRUE(host->WaitLoaded(FrameSimple));
    ShowOrnate();
    EXPECT_EQ(host->List(FrameSimple)->count() + host->List(FrameOrnate)->count(), 0);
}

TEST(FrameNames, FitTheirStripInBothLanguages) {
    for (const char* language : {"1033", "2052"}) {
        FrameHost host{QString(QLatin1String(language))};
        host.Open(TestPictures::Face(100, 120));
        ASSERT_TRUE(host.WaitLoaded(FrameSimple));
        host.Click("BtnXuanCai");
        ASSERT_TRUE(host.WaitLoaded(FrameOrnate));
        for (const int kind : {FrameSimple, FrameOrnate}) {
            ASSERT_EQ(host.List(kind)->count(), 12);
            for (int i = 0; i < 12; ++i) {
                const auto* label = host.List(kind)->Row(i)->Find<QLabel>(QStringLiteral("TxtEffectName"));
                EXPECT_EQ(label->text(), host.List(kind)->Row(i)->Name()) << "cut to fit";
            }
        }
    }
}

TEST(FrameNames, ALongNameIsCutWhereItIsShownAndWholeWhereItIsTold) {
    FrameFolder folder;
    const QString name = QStringLiteral("The very longest name of a frame");
    folder.AddStrip(name);
    FrameHost host;
    host.Open(TestPictures::Face(100, 120));
    ASSERT_TRUE(host.WaitLoaded(FrameSimple));
    const CEffectListItem* row = host.List(FrameSimple)->Row(0);
    EXPECT_EQ(row->Name(), name);
    EXPECT_EQ(host.List(FrameSimple)->item(0)->toolTip(), name);
    const auto* label = row->Find<QLabel>(QStringLiteral("TxtEffectName"));
    EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), 70);
}

}  // namespace
