// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>

#include "BitmapView.h"
#include "CanvasSupport.h"
#include "CEffectListView.h"
#include "Language.h"
#include "TestHome.h"

namespace {

class EffectList : public testing::Test {
  protected:
    EffectList() {
        SetLanguage(QStringLiteral("1033"));
        // The room and the scroll bar that the panel gives it.
        window.setStyleSheet(QStringLiteral("QScrollBar:vertical { width: 10px; }"));
        window.resize(243, 420);
        list = new CEffectListView(&window);
        list->setGeometry(0, 0, 243, 420);
        QObject::connect(list, &CEffectListView::ItemSelect, [this](int row) { chosen.push_back(row); });
        for (int i = 0; i < 8; ++i)
            list->AddEffectItem(QStringLiteral("Look %1").arg(i), 0xFF398CEAu, {},
                                TestPictures::Plain(70, 96, 0xFF000000u + unsigned(i) * 0x10));
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    void Click(int row) {
        list->scrollToItem(list->item(row));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
    }
    std::vector<int> Selected() const {
        std::vector<int> rows;
        for (int i = 0; i < list->count(); ++i)
            if (list->Row(i)->IsSelected()) rows.push_back(i);
        return rows;
    }

    QWidget window;
    CEffectListView* list = nullptr;
    std::vector<int> chosen;
};

TEST_F(EffectList, ShowsThreeTilesSideBySide) {
    const QRect first = list->visualItemRect(list->item(0));
    EXPECT_EQ(first.size(), QSize(77, 126));
    EXPECT_EQ(list->visualItemRect(list->item(1)).topLeft(), first.topLeft() + QPoint(77, 0));
    EXPECT_EQ(list->visualItemRect(list->item(2)).topLeft(), first.topLeft() + QPoint(154, 0));
    EXPECT_EQ(list->visualItemRect(list->item(3)).topLeft(), first.topLeft() + QPoint(0, 126));
}

TEST_F(EffectList, StillShowsThreeBesideItsScrollBar) {
    list->setGeometry(0, 0, 243, 200);
    QTest::qWait(20);
    ASSERT_TRUE(list->verticalScrollBar()->isVisible());
    EXPECT_EQ(list->visualItemRect(list->item(2)).top(), list->visualItemRect(list->item(0)).top());
}

TEST_F(EffectList, ARowShowsThumbnailNameAndColour) {
    const CEffectListItem* row = list->Row(5);
    EXPECT_EQ(row->Name(), QStringLiteral("Look 5"));
    const auto* thumb = row->Find<QWidget>(QStringLiteral("HorLayEffect"));
    const auto* name = row->Find<QLabel>(QStringLiteral("TxtEffectName"));
    EXPECT_EQ(thumb->size(), QSize(70, 96));
    EXPECT_EQ(name->size(), QSize(70, 20));
    EXPECT_EQ(name->y(), thumb->y() + 96);
    const QImage shown = list->Row(5)->grab().toImage();
    const double scale = shown.devicePixelRatio();
    const auto at = [&](int x, int y) { return shown.pixelColor(int(x * scale), int(y * scale)).rgb(); };
    EXPECT_EQ(at(thumb->x() + 35, thumb->y() + 48), 0xFF000050u);
    EXPECT_EQ(at(name->x() + 3, name->y() + 2), 0xFF398CEAu);
    EXPECT_EQ(list->item(5)->data(Qt::AccessibleTextRole).toString(), QStringLiteral("Look 5"));
    EXPECT_EQ(list->item(5)->toolTip(), QStringLiteral("Look 5"));
}

TEST_F(EffectList, TheOverlayLiesOverTheThumbnail) {
    QImage frame(70, 96, QImage::Format_ARGB32);
    frame.fill(Qt::transparent);
    for (int x = 0; x < 70; ++x)
        for (int y = 40; y < 56; ++y) frame.setPixel(x, y, 0xFFFF0000u);
    const QString path = TestHome::Path() + QStringLiteral("/overlay.png");
    ASSERT_TRUE(frame.save(path));
    list->AddEffectItem(QStringLiteral("Framed"), 0xFF398CEAu, QStringLiteral("file='%1' dest='0,0,70,96' ").arg(path),
                        TestPictures::Plain(70, 96, 0xFF00FF00u));
    CEffectListItem* row = list->Row(8);
    QTest::qWait(20);  // a new row gets its place with the next layout
    const auto* thumb = row->Find<QWidget>(QStringLiteral("HorLayEffect"));
    EXPECT_TRUE(thumb->property("bkimage").toString().startsWith(QStringLiteral("file='")));
    const QImage shown = row->grab().toImage();
    const double scale = shown.devicePixelRatio();
    const auto at = [&](int x, int y) {
        return shown.pixelColor(int((thumb->x() + x) * scale), int((thumb->y() + y) * scale)).rgb();
    };
    EXPECT_EQ(at(35, 48), 0xFFFF0000u);
    EXPECT_EQ(at(35, 20), 0xFF00FF00u);
}

TEST_F(EffectList, AClickTellsTheRowAndSelectsNothing) {
    Click(4);
    EXPECT_EQ(chosen, std::vector<int>{4});
    EXPECT_EQ(list->SelectedItem(), -1);
    Click(4);
    EXPECT_EQ(chosen, (std::vector<int>{4, 4})) << "the same row can be chosen again";
}

TEST_F(EffectList, SelectingMovesTheOneSelection) {
    list->SelectItem(2);
    EXPECT_EQ(Selected(), std::vector<int>{2});
    list->SelectItem(6);
    EXPECT_EQ(Selected(), std::vector<int>{6});
    EXPECT_EQ(list->SelectedItem(), 6);
    list->ClearSelected();
    EXPECT_TRUE(Selected().empty());
    EXPECT_TRUE(chosen.empty());
}

TEST_F(EffectList, NegativeMissingHiddenAndDisabledRowsAreRefused) {
    list->SelectItem(2);
    list->item(3)->setHidden(true);
    list->item(4)->setFlags(Qt::NoItemFlags);
    for (const int row : {-1, 8, 3, 4}) {
        list->SelectItem(row);
        EXPECT_EQ(list->SelectedItem(), 2) << row;
    }
}

TEST_F(EffectList, TheSelectedTileHasARing) {
    const QImage before = list->Row(1)->grab().toImage();
    list->SelectItem(1);
    EXPECT_NE(list->Row(1)->grab().toImage(), before);
}

TEST_F(EffectList, ArrowsMoveAndEnterChooses) {
    list->setFocus(Qt::TabFocusReason);
    QTest::keyClick(list, Qt::Key_Right);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(list->currentRow(), 4);
    EXPECT_TRUE(chosen.empty());
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) QTest::keyClick(list, key);
    EXPECT_EQ(chosen, (std::vector<int>{4, 4, 4}));
}

TEST_F(EffectList, TheKeyboardsRowShowsWhileTheListHasTheFocus) {
    list->clearFocus();
    const QImage before = list->Row(0)->grab().toImage();
    list->setFocus(Qt::TabFocusReason);
    EXPECT_NE(list->Row(0)->grab().toImage(), before);
    list->clearFocus();
    EXPECT_EQ(list->Row(0)->grab().toImage(), before);
}

TEST_F(EffectList, EmptyingForgetsTheSelection) {
    list->SelectItem(2);
    list->Empty();
    EXPECT_EQ(list->count(), 0);
    EXPECT_EQ(list->SelectedItem(), -1);
}

TEST_F(EffectList, NamesAreReadableOnEveryColour) {
    EXPECT_EQ(CEffectListItem::TextColourOn(QColor(0x1F, 0x18, 0x18)), QColor(Qt::white));
    EXPECT_NE(CEffectListItem::TextColourOn(QColor(0xCC, 0xC1, 0xC3)), QColor(Qt::white));
}

}  // namespace
