// SPDX-License-Identifier: GPL-3.0-or-later
// The effect tool in the real main window, by mouse and keyboard events only.
#include <QtCore/QCoreApplication>
#include <QtCore/QMimeData>
#include <QtGui/QDropEvent>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStackedWidget>

#include "CEffect.h"
#include "CEffectListView.h"
#include "CHistoryManager.h"
#include "CLeftPanel.h"
#include "CSetAlphaWnd.h"
#include "CTeXiaoPanel.h"
#include "EffectCatalogue.h"
#include "FrameFixture.h"
#include "TestPictures.h"

namespace {

class EffectTool : public FrameTest {
  protected:
    static Bitmap OnShow(CMidWnd& mid) { return mid.Canvas()->GetShowBitmap(); }
    CTeXiaoPanel& Panel() { return *static_cast<CTeXiaoPanel*>(Frame().LeftPanel().Panel(7)); }
    int Selected(int category) { return Panel().List(category)->SelectedItem(); }

    void Choose(const char* stem, int rows, int row) {
        const QString list = QStringLiteral("ListView") + QLatin1String(stem);
        if (Panel().List(Panel().Category())->objectName() != list)
            Driver::Click(QStringLiteral("Btn") + QLatin1String(stem));
        Driver::WaitForRows(list, rows);
        Driver::ClickRow(list, row);
        Driver::WaitFor(QStringLiteral("the effect"), [&] { return !Mid().IsBusy(); });
    }
    static bool IsStrengthShown() { return Driver::IsThere(QStringLiteral("SliderSetAlpha")); }
    static QString StrengthText() {
        return qobject_cast<QLabel*>(Driver::Find(QStringLiteral("TextSetAlpha")))->text();
    }
    void DropFile(const QString& path) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter(QPoint(400, 300), Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&Frame(), &enter);
        QDropEvent drop(QPointF(400, 300), Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&Frame(), &drop);
    }

    // What the library makes of a picture.
    static Bitmap With(Bitmap picture, int effect) {
        EXPECT_TRUE(RunEffect(picture, effect, EffectResourceDir()));
        return picture;
    }
    static Bitmap With(const Bitmap& picture, int effect, int percent) {
        Bitmap result = With(picture, effect);
        Bitmap source = picture;
        CEffect::Effect_AlphaAdJust(result.MutablePixels(), source.MutablePixels(), result.Width(), result.Height(),
                                    1.0 - percent * 0.01);
        return result;
    }
};

}  // namespace

TEST_F(EffectTool, ASessionWithEffectsOfThreeCategories) {
    const Bitmap photo = PhotoPixels();
    auto& history = CHistoryManager::Instance();
    Show(Photo());
    Driver::Click(QStringLiteral("btnTexiao"));
    EXPECT_EQ(Mid().Tool(), 7);
    EXPECT_FALSE(IsStrengthShown());

    // Three categories; each effect replaces the one before.
    Choose("Film", 8, 1);
    EXPECT_EQ(OnShow(Mid()), With(photo, 1));
    Choose("Vintage", 7, 2);
    EXPECT_EQ(OnShow(Mid()), With(photo, 25));
    Choose("Lomo", 8, 4);
    EXPECT_EQ(OnShow(Mid()), With(photo, 19));
    EXPECT_EQ(history.m_count, 2) << "one step for the effects of a visit";
    EXPECT_EQ(StrengthText(), QStringLiteral("100%"));

    Driver::DragSlider(QStringLiteral("SliderSetAlpha"), 62);
    EXPECT_EQ(StrengthText(), QStringLiteral("62%"));
    const Bitmap faded = With(photo, 19, 62);
    EXPECT_EQ(OnShow(Mid()), faded);

    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_EQ(OnShow(Mid()), photo);
    EXPECT_FALSE(IsStrengthShown());
    EXPECT_EQ(Selected(4), -1);
    Driver::Click(QStringLiteral("BtnRedo"));
    EXPECT_EQ(OnShow(Mid()), faded);
    EXPECT_EQ(StrengthText(), QStringLiteral("62%"));
    EXPECT_EQ(Selected(4), 4);

    // To adjust and back: the effect is in the picture now.
    Driver::Click(QStringLiteral("btnJichubianji"));
    EXPECT_EQ(Mid().Tool(), 1);
    EXPECT_FALSE(IsStrengthShown());
    EXPECT_EQ(OnShow(Mid()), faded);
    Driver::Click(QStringLiteral("btnTexiao"));
    EXPECT_FALSE(IsStrengthShown());
    EXPECT_EQ(OnShow(Mid()), faded);
    Choose("BW", 7, 3);
    Driver::DragSlider(QStringLiteral("SliderSetAlpha"), 50);
    const Bitmap stacked = With(faded, 39, 50);
    EXPECT_EQ(OnShow(Mid()), stacked);
    EXPECT_EQ(history.m_count, 3);

    Driver::Click(QStringLiteral("BtnOriginal"));
    EXPECT_EQ(OnShow(Mid()), photo);
    EXPECT_FALSE(IsStrengthShown());
    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_EQ(OnShow(Mid()), stacked);

    Driver::Modal([] { Driver::Click(QStringLiteral("btnSave")); }, QStringLiteral("EdtPath"),
                  [&] {
                      Driver::Type(QStringLiteral("EdtPath"), m_folder);
                      Driver::Type(QStringLiteral("EdtName"), QStringLiteral("effects"));
                      Driver::ChooseItem(QStringLiteral("ComboFileType"), 1);
                      Driver::Click(QStringLiteral("BtnSave"));
                      Driver::Click(QStringLiteral("BtnSaveClose"));
                  });
    EXPECT_EQ(Load(m_folder + QStringLiteral("/effects.png")), stacked);
}

TEST_F(EffectTool, EveryCategoryIsAPageOfTheOneTool) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnTexiao"));
    CBaseWnd* canvas = Mid().Canvas();
    int page = 1;
    for (const char* name : {"BtnPola", "BtnVintage", "BtnLomo", "BtnFade", "BtnBW", "BtnLeaker"}) {
        Driver::Click(QLatin1String(name));
        const auto* stack = qobject_cast<QStackedWidget*>(Driver::Find(QStringLiteral("TabLayoutUI_TeXiao")));
        EXPECT_EQ(stack->currentIndex(), page++) << name;
    }
    EXPECT_EQ(Mid().Canvas(), canvas) << "a page whose tool is active leaves the canvas untouched";
    for (const char* code : {"8880302", "8880303", "8880304", "8880305", "8880306", "8880307"})
        EXPECT_EQ(Clicks(code), 1) << code;
    EXPECT_EQ(Clicks("8880301"), 0);
}

TEST_F(EffectTool, TheStrengthWindowMovesWithTheMainWindow) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnTexiao"));
    Choose("Film", 8, 0);
    const QWidget* strength = Panel().Strength();
    EXPECT_EQ(strength->pos(), QPoint(260, Frame().height() - 150));
    const QPoint before = strength->mapToGlobal(QPoint());
    Frame().move(Frame().pos() + QPoint(60, 20));
    Driver::Wait(50);
    EXPECT_EQ(strength->mapToGlobal(QPoint()) - before, QPoint(60, 20));
    Frame().resize(1200, 800);
    Driver::Wait(50);
    EXPECT_EQ(strength->pos(), QPoint(260, 800 - 150));
}

TEST_F(EffectTool, OpeningDroppingAndClosingStopAFill) {
    Show(Photo());
    const QString other = WritePicture(QStringLiteral("other.png"), TestPictures::Face(640, 480));
    Driver::Click(QStringLiteral("btnTexiao"));
    Driver::Click(QStringLiteral("BtnFade"));
    DropFile(other);
    EXPECT_EQ(OnShow(Mid()).Width(), 640);
    EXPECT_EQ(Panel().Category(), 1) << "the lists begin anew with the new picture";
    EXPECT_EQ(Panel().List(5)->count(), 0);
    Driver::WaitForRows(QStringLiteral("ListViewFilm"), 8);
    Driver::Click(QStringLiteral("BtnFade"));
    ASSERT_TRUE(Frame().OpenFile(Photo()));
    Driver::WaitForRows(QStringLiteral("ListViewFilm"), 8);
    Driver::Click(QStringLiteral("BtnFade"));
    Frame().close();
    EXPECT_FALSE(Panel().IsFilling());
}

TEST_F(EffectTool, AFailedOpeningLeavesEffectAndStrengthAsTheyWere) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnTexiao"));
    Choose("Film", 8, 2);
    Driver::DragSlider(QStringLiteral("SliderSetAlpha"), 30);
    const Bitmap shown = OnShow(Mid());
    MessageOf([&] { Frame().OpenFile(m_folder + QStringLiteral("/none.png")); });
    EXPECT_EQ(OnShow(Mid()), shown);
    EXPECT_EQ(StrengthText(), QStringLiteral("30%"));
    Driver::WaitForRows(QStringLiteral("ListViewFilm"), 8);
    EXPECT_EQ(Selected(1), 2);
}

TEST_F(EffectTool, ChoosingAnEffectLeavesCompare) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnTexiao"));
    Choose("Film", 8, 2);
    Mid().SetCompareMode(2);
    Choose("Film", 8, 3);
    EXPECT_EQ(Mid().CompareMode(), 0);
    Mid().SetCompareMode(2);
    Driver::DragSlider(QStringLiteral("SliderSetAlpha"), 30);
    EXPECT_EQ(Mid().CompareMode(), 0);
    EXPECT_TRUE(Mid().Canvas()->isVisible());
}

TEST_F(EffectTool, WithoutAPictureTheListsAreEmpty) {
    Show();
    Driver::Key(Qt::Key_F3);
    EXPECT_EQ(Mid().Tool(), 7);
    EXPECT_EQ(Panel().List(1)->count(), 0);
    EXPECT_FALSE(Panel().IsFilling());
    ASSERT_TRUE(Frame().OpenFile(Photo()));
    Driver::WaitForRows(QStringLiteral("ListViewFilm"), 8);
}

TEST_F(EffectTool, TheWelcomeWindowLeadsToTheEffects) {
    Show();
    const QString photo = Photo();
    Driver::Modal([] { Driver::Click(QStringLiteral("BtnWelTeXiao")); }, QStringLiteral("fileNameEdit"),
                  [&] { Driver::ChooseFile(photo); });
    Driver::WaitFor(QStringLiteral("the tool"), [&] { return Mid().Tool() == 7; });
    Driver::WaitForRows(QStringLiteral("ListViewFilm"), 8);
}
