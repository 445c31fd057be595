// SPDX-License-Identifier: GPL-3.0-or-later
// Want of memory in the whole program: each act is done once for each of its large blocks, with that block failing. The
// act has then not happened, the user was told once at most, and it works when it is tried again.
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include "AdjustSliders.h"
#include "AppPaths.h"
#include "CAdjustWnd.h"
#include "CChunCaiShowWnd.h"
#include "CCutWnd.h"
#include "CEffectWnd.h"
#include "CHistoryManager.h"
#include "CImageFrameWnd.h"
#include "CMidTopEditTool.h"
#include "CMoPiWnd.h"
#include "CMRYiJianMeiYanWnd.h"
#include "CRotateWnd.h"
#include "CSizeWnd.h"
#include "CWordWnd.h"
#include "FailingMemory.h"
#include "FrameCatalogue.h"
#include "FrameFixture.h"
#include "Language.h"
#include "Strokes.h"
#include "TestPictures.h"

namespace {

constexpr int Adjust = 1, Crop = 2, Rotate = 3, Resize = 4, Text = 5, Frames = 6, Effects = 7, Looks = 8, Smooth = 10,
              Spots = 11, Enlarge = 12, Circles = 13, RedEye = 15, Slim = 16, Lips = 17;

// Reads every message box as a user would, and keeps its text.
class Reader : public QObject {
  public:
    Reader() {
        m_timer.setInterval(5);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            texts << box->text();
            box->defaultButton() ? box->defaultButton()->click() : box->reject();
        });
        m_timer.start();
    }
    QStringList texts;

  private:
    QTimer m_timer;
};

struct Act {
    const char* name;
    // The tool on show, what was done before, and the act.
    int tool;
    std::function<void(CMidWnd&)> before;
    std::function<void(CMidWnd&)> act;
    int leastBlocks = 1;
};

std::ostream& operator<<(std::ostream& out, const Act& act) {
    return out << act.name;
}

template <class Wnd>
Wnd& CanvasOf(CMidWnd& mid) {
    return *qobject_cast<Wnd*>(mid.Canvas());
}

void Nothing(CMidWnd&) {}
void SetBrightness(CMidWnd& mid) {
    CanvasOf<CAdjustWnd>(mid).CommitValue(AdjustIndex::Brightness, 30);
}
void TurnOnce(CMidWnd& mid) {
    CanvasOf<CRotateWnd>(mid).Turn(&CRotateLogic::TurnRight);
}
void CropOnce(CMidWnd& mid) {
    CanvasOf<CCutWnd>(mid).SetSelectionSize(600, 700);
    CanvasOf<CCutWnd>(mid).CropToSelection();
}
void RunEffect5(CMidWnd& mid) {
    CanvasOf<CEffectWnd>(mid).RunLook(5);
}
void Fade(CMidWnd& mid) {
    RunEffect5(mid);
    CanvasOf<CEffectWnd>(mid).SetStrength(40, false);
}
void RunLook3(CMidWnd& mid) {
    CanvasOf<CMRYiJianMeiYanWnd>(mid).RunLook(3);
}
void PutFrame(CMidWnd& mid, int kind, const QString& file) {
    CanvasOf<CImageFrameWnd>(mid).RunLook(FrameNumber(kind, ResourcePath(QStringLiteral("Sucai/Biankuang/") + file)));
}
void PutMat(CMidWnd& mid) {
    PutFrame(mid, FrameSimple, QStringLiteral("JianDan/MatWhite.vnbkwz"));
}
void PutGoldLine(CMidWnd& mid) {
    PutFrame(mid, FrameSimple, QStringLiteral("JianDan/GoldLine.nlf"));
}
void PutStars(CMidWnd& mid) {
    PutFrame(mid, FrameOrnate, QStringLiteral("XuanCai/Stars.vnbkxc"));
}
void PutLace(CMidWnd& mid) {
    PutFrame(mid, FrameOrnate, QStringLiteral("XuanCai/Lace.vnbkxc"));
}
void FadeStars(CMidWnd& mid) {
    PutStars(mid);
    CanvasOf<CImageFrameWnd>(mid).SetStrength(40, false);
}
void PutMatAndUndo(CMidWnd& mid) {
    PutMat(mid);
    mid.Canvas()->OnUndo();
}
void PaintOnce(CMidWnd& mid) {
    CBaseWnd& canvas = *mid.Canvas();
    const QPoint middle = canvas.rect().center();
    Strokes::Draw(canvas, Strokes::Line(middle - QPoint(60, 20), middle + QPoint(60, 20), 12));
}
// A canvas keeps what its sliders said.
void PaintRed(CMidWnd& mid) {
    auto& canvas = CanvasOf<CChunCaiShowWnd>(mid);
    canvas.SetStrength(50);
    canvas.SetColor(208, 66, 64);
    PaintOnce(mid);
}
void PaintSmooth(CMidWnd& mid) {
    CanvasOf<CMoPiWnd>(mid).SetStrength(10);
    PaintOnce(mid);
}
void PaintAndUndo(CMidWnd& mid) {
    PaintOnce(mid);
    mid.Canvas()->OnUndo();
}
void EraseOnce(CMidWnd& mid) {
    CBaseWnd& canvas = *mid.Canvas();
    Strokes::Draw(canvas, {canvas.rect().center()}, Qt::AltModifier);
}
void ClickRedEye(CMidWnd& mid) {
    const ViewGeometry& geometry = CanvasOf<CViewWnd>(mid).Geometry();
    Strokes::Draw(*mid.Canvas(), {geometry.ToClient(QPointF(FrameTest::RedEye())).toPoint()});
}
void AddText(CMidWnd& mid) {
    CanvasOf<CWordWnd>(mid).AddText(QStringLiteral("Memory"), {});
}
void AddTextAndUndo(CMidWnd& mid) {
    AddText(mid);
    mid.Canvas()->OnUndo();
}
void DeleteText(CMidWnd& mid) {
    QTest::keyClick(mid.Canvas(), Qt::Key_Delete);
}
void CropAndUndo(CMidWnd& mid) {
    CropOnce(mid);
    mid.Canvas()->OnUndo();
}

const Act Acts[] = {
    {"slider", Adjust, Nothing, SetBrightness},
    {"otherGroup", Adjust, SetBrightness,
     [](CMidWnd& mid) { CanvasOf<CAdjustWnd>(mid).CommitValue(AdjustIndex::Hue, 20); }},
    {"scene", Adjust, SetBrightness, [](CMidWnd& mid) { CanvasOf<CAdjustWnd>(mid).RunScene(2); }},
    {"reset", Adjust, SetBrightness, [](CMidWnd& mid) { CanvasOf<CAdjustWnd>(mid).Reset(&CAdjustLogic::ResetBasic); },
     0},
    {"crop", Crop, Nothing, CropOnce},
    {"turn", Rotate, Nothing, TurnOnce},
    {"flip", Rotate, TurnOnce, [](CMidWnd& mid) { CanvasOf<CRotateWnd>(mid).Turn(&CRotateLogic::FlipLeftRight); }},
    {"angle", Rotate, TurnOnce, [](CMidWnd& mid) { CanvasOf<CRotateWnd>(mid).SetAngle(7); }},
    {"restore", Rotate, TurnOnce, [](CMidWnd& mid) { CanvasOf<CRotateWnd>(mid).RestoreEntry(); }},
    {"resize", Resize, Nothing, [](CMidWnd& mid) { CanvasOf<CSizeWnd>(mid).ApplySize(1000, 800); }},
    {"effect", Effects, Nothing, RunEffect5},
    {"secondEffect", Effects, Fade, [](CMidWnd& mid) { CanvasOf<CEffectWnd>(mid).RunLook(20); }},
    {"strength", Effects, RunEffect5, [](CMidWnd& mid) { CanvasOf<CEffectWnd>(mid).SetStrength(40, false); }},
    {"frame", Frames, Nothing, PutMat},
    {"stripFrame", Frames, Nothing, PutGoldLine},
    {"ornateFrame", Frames, Nothing, PutStars},
    {"ornateFrameOfAlpha", Frames, PutMat, PutLace},
    {"secondFrame", Frames, FadeStars, PutMat},
    {"frameStrength", Frames, PutStars, [](CMidWnd& mid) { CanvasOf<CImageFrameWnd>(mid).SetStrength(40, false); }},
    {"undoFrame", Frames, PutMat, [](CMidWnd& mid) { mid.Canvas()->OnUndo(); }},
    {"redoFrame", Frames, PutMatAndUndo, [](CMidWnd& mid) { mid.Canvas()->OnRedo(); }},
    {"toolChangeFramed", Frames, FadeStars, [](CMidWnd& mid) { mid.SwitchTool(Adjust); }},
    {"stroke", Lips, Nothing, PaintOnce},
    {"brushStrength", Lips, PaintRed, [](CMidWnd& mid) { CanvasOf<CChunCaiShowWnd>(mid).SetStrength(20); }},
    {"brushColour", Lips, PaintRed, [](CMidWnd& mid) { CanvasOf<CChunCaiShowWnd>(mid).SetColor(40, 90, 200); }},
    {"undoBrush", Lips, PaintOnce, [](CMidWnd& mid) { mid.Canvas()->OnUndo(); }},
    {"redoBrush", Lips, PaintAndUndo, [](CMidWnd& mid) { mid.Canvas()->OnRedo(); }},
    {"directStroke", Smooth, Nothing, PaintOnce},
    {"directValue", Smooth, PaintSmooth, [](CMidWnd& mid) { CanvasOf<CMoPiWnd>(mid).SetStrength(30); }},
    {"look", Looks, Nothing, RunLook3},
    {"push", Slim, Nothing, PaintOnce},
    {"secondPush", Slim, PaintOnce, PaintOnce},
    {"undoPush", Slim, PaintOnce, [](CMidWnd& mid) { mid.Canvas()->OnUndo(); }},
    {"redoPush", Slim, PaintAndUndo, [](CMidWnd& mid) { mid.Canvas()->OnRedo(); }},
    {"revertPush", Slim, PaintOnce, [](CMidWnd& mid) { mid.Canvas()->OnRevert(); }},
    {"swell", Enlarge, Nothing, PaintOnce},
    {"toolChangePushed", Slim, PaintOnce, [](CMidWnd& mid) { mid.SwitchTool(Enlarge); }},
    {"undoDirect", Smooth, PaintOnce, [](CMidWnd& mid) { mid.Canvas()->OnUndo(); }},
    {"spot", Spots, Nothing, PaintOnce},
    {"secondSpot", Spots, PaintOnce, PaintOnce, 0},
    {"undoSpot", Spots, PaintOnce, [](CMidWnd& mid) { mid.Canvas()->OnUndo(); }},
    {"circle", Circles, Nothing, PaintOnce},
    {"erasedCircle", Circles, PaintOnce, EraseOnce, 0},
    {"redEye", RedEye, Nothing, ClickRedEye},
    {"toolChangeRepaired", Spots, PaintOnce, [](CMidWnd& mid) { mid.SwitchTool(Circles); }, 0},
    {"undo", Crop, CropOnce, [](CMidWnd& mid) { mid.Canvas()->OnUndo(); }},
    {"undoPending", Rotate, TurnOnce, [](CMidWnd& mid) { mid.Canvas()->OnUndo(); }},
    {"undoFaded", Effects, Fade, [](CMidWnd& mid) { mid.Canvas()->OnUndo(); }},
    {"redo", Crop, CropAndUndo, [](CMidWnd& mid) { mid.Canvas()->OnRedo(); }},
    {"jump", Crop, CropOnce, [](CMidWnd& mid) { mid.Canvas()->OnHistoryJump(0); }},
    {"revert", Effects, Fade, [](CMidWnd& mid) { mid.Canvas()->OnRevert(); }},
    {"toolChange", Adjust, SetBrightness, [](CMidWnd& mid) { mid.SwitchTool(Rotate); }},
    {"toolChangePainted", Lips, PaintOnce, [](CMidWnd& mid) { mid.SwitchTool(Smooth); }},
    {"toolChangePending", Rotate, TurnOnce, [](CMidWnd& mid) { mid.SwitchTool(Effects); }, 0},
    {"toolChangeFaded", Effects, Fade, [](CMidWnd& mid) { mid.SwitchTool(Adjust); }},
    {"text", Text, Nothing, AddText, 0},
    {"restyledText", Text, AddText,
     [](CMidWnd& mid) {
         CanvasOf<CWordWnd>(mid).SetText(QStringLiteral("Longer by far"));
         CanvasOf<CWordWnd>(mid).SettleChange();
     },
     0},
    {"movedText", Text, AddText, [](CMidWnd& mid) { QTest::keyClick(mid.Canvas(), Qt::Key_Right); }, 0},
    {"deletedText", Text, AddText, DeleteText, 0},
    {"undoText", Text, AddText, [](CMidWnd& mid) { mid.Canvas()->OnUndo(); }, 0},
    {"redoText", Text, AddTextAndUndo, [](CMidWnd& mid) { mid.Canvas()->OnRedo(); }, 0},
    {"revertText", Text, AddText, [](CMidWnd& mid) { mid.Canvas()->OnRevert(); }},
    {"toolChangeText", Text, AddText, [](CMidWnd& mid) { mid.SwitchTool(Adjust); }},
};

class OutOfMemory : public FrameTest, public testing::WithParamInterface<Act> {
  protected:
    struct Seen {
        Bitmap picture;
        int tool;
        std::vector<QString> steps;
        int currentNo;
        bool changed;
        bool operator==(const Seen&) const = default;
    };
    Seen Look() {
        CHistoryManager& history = CHistoryManager::Instance();
        return {Mid().Canvas()->GetShowBitmap(), Mid().Tool(), history.GetStepNames(), history.m_currentNo,
                Mid().Canvas()->IsImageChanged()};
    }
    void Begin() {
        ASSERT_TRUE(Mid().OpenImage(Photo()));
        Mid().SwitchTool(GetParam().tool);
        GetParam().before(Mid());
    }
    void TearDown() override {
        FailingMemory::FailNth(0);
        FrameTest::TearDown();
    }
};

}  // namespace

TEST_P(OutOfMemory, TheActHasNotHappenedAndWorksWhenTriedAgain) {
    Show(Photo());
    Begin();
    const Seen before = Look();
    Begin();  // nothing that a look computed is kept
    FailingMemory::FailNth(0);
    GetParam().act(Mid());
    const int blocks = FailingMemory::Asked();
    const Seen done = Look();
    EXPECT_GE(blocks, GetParam().leastBlocks);
    for (int n = 1; n <= blocks; ++n) {
        SCOPED_TRACE(testing::Message() << "block " << n << " of " << blocks);
        Begin();
        Reader reader;
        FailingMemory::FailNth(n);
        GetParam().act(Mid());
        FailingMemory::FailNth(0);
        EXPECT_LE(reader.texts.size(), 1);
        const Seen after = Look();
        if (reader.texts.empty()) {
            // What failed was not needed, such as the overview's picture.
            EXPECT_TRUE(after == done);
            continue;
        }
        EXPECT_EQ(reader.texts.first(), LanguageText(QStringLiteral("ids_outofmemory")));
        EXPECT_EQ(after.picture, before.picture);
        EXPECT_EQ(after.tool, before.tool);
        EXPECT_EQ(after.steps, before.steps);
        EXPECT_EQ(after.currentNo, before.currentNo);
        EXPECT_EQ(after.changed, before.changed);
        GetParam().act(Mid());
        EXPECT_TRUE(Look() == done);
    }
}

INSTANTIATE_TEST_SUITE_P(Acts, OutOfMemory, testing::ValuesIn(Acts),
                         [](const auto& act) { return std::string(act.param.name); });

namespace {

class OpenWithoutMemory : public OutOfMemory {};

}  // namespace

// Opening has a file's own message where its reader finds no memory; the session stays in any case.
TEST_P(OpenWithoutMemory, TheFormerPictureStays) {
    Show(Photo());
    const QString other = WritePicture(QStringLiteral("other.jpg"), TestPictures::Face(800, 900));
    const auto open = [&] { return Mid().OpenImage(other); };
    FailingMemory::FailNth(0);
    ASSERT_TRUE(open());
    const int blocks = FailingMemory::Asked();
    const Bitmap opened = Mid().Canvas()->GetShowBitmap();
    for (int n = 1; n <= blocks; ++n) {
        SCOPED_TRACE(testing::Message() << "block " << n << " of " << blocks);
        Begin();
        const Seen before = Look();
        const QString held = Mid().HeldPath();
        Reader reader;
        FailingMemory::FailNth(n);
        const bool succeeded = open();
        FailingMemory::FailNth(0);
        EXPECT_EQ(reader.texts.size(), succeeded ? 0 : 1);
        if (!succeeded) {
            EXPECT_TRUE(Look() == before);
            EXPECT_EQ(Mid().HeldPath(), held);
            GetParam().act(Mid());  // the former session goes on
            ASSERT_TRUE(open());
        }
        EXPECT_TRUE(Mid().Canvas()->GetShowBitmap() == opened);
    }
}

INSTANTIATE_TEST_SUITE_P(Acts, OpenWithoutMemory, testing::Values(Acts[1], Acts[4], Acts[6], Acts[12], Acts[13]),
                         [](const auto& act) { return std::string(act.param.name); });

TEST_F(FrameTest, CompareWithoutMemoryIsNotEnteredAndWorksAgain) {
    Show(Photo());
    SetBrightness(Mid());
    for (const int mode : {1, 2}) {
        FailingMemory::FailNth(0);
        Mid().SetCompareMode(mode);
        const int blocks = FailingMemory::Asked();
        Mid().SetCompareMode(0);
        for (int n = 1; n <= blocks; ++n) {
            CanvasOf<CAdjustWnd>(Mid()).CommitValue(AdjustIndex::Brightness, 30 + n);  // what was kept is stale
            Reader reader;
            FailingMemory::FailNth(n);
            Mid().SetCompareMode(mode);
            FailingMemory::FailNth(0);
            EXPECT_EQ(Mid().CompareMode() == 0, reader.texts.size() == 1) << n;
            Mid().SetCompareMode(0);
            Mid().SetCompareMode(mode);
            EXPECT_EQ(Mid().CompareMode(), mode);
            Mid().SetCompareMode(0);
            EXPECT_TRUE(Mid().Canvas()->isVisible());
        }
    }
}

TEST_F(FrameTest, SavingWithoutMemoryForTheResultSaysSoAndWorksAgain) {
    Show(Photo());
    SetBrightness(Mid());
    Reader reader;
    FailingMemory::FailNth(1);
    EXPECT_FALSE(Frame().RunSaveCommand());
    FailingMemory::FailNth(0);
    EXPECT_EQ(reader.texts, QStringList{LanguageText(QStringLiteral("ids_outofmemory"))});
    EXPECT_TRUE(Saved(QStringLiteral("after")) == Mid().Canvas()->GetShowBitmap());
}

TEST_F(FrameTest, SavingWithoutMemoryForTheFileSaysSoAndWorksWhenTriedAgain) {
    Show(Photo());
    SetBrightness(Mid());
    const char* suffixes[] = {".jpg", ".png", ".bmp"};
    for (int type = 0; type < 3; ++type) {
        bool failed = true;
        for (int n = 1; failed; ++n) {
            const QString name = QStringLiteral("try%1").arg(n);
            Driver::Modal([] { Driver::Click(QStringLiteral("btnSave")); }, QStringLiteral("EdtPath"),
                          [&] {
                              Driver::Type(QStringLiteral("EdtPath"), m_folder);
                              Driver::Type(QStringLiteral("EdtName"), name);
                              Driver::ChooseItem(QStringLiteral("ComboFileType"), type);
                              Reader reader;
                              FailingMemory::FailNth(n);
                              Driver::Click(QStringLiteral("BtnSave"));
                              failed = FailingMemory::HasFailed();
                              FailingMemory::FailNth(0);
                              EXPECT_LE(reader.texts.size(), 1);
                              if (!reader.texts.empty()) Driver::Click(QStringLiteral("BtnSave"));
                              Driver::Click(QStringLiteral("BtnSaveClose"));
                          });
            const Bitmap saved = Load(m_folder + QLatin1Char('/') + name + QLatin1String(suffixes[type]));
            EXPECT_EQ(saved.Width(), PhotoPixels().Width()) << type << ", block " << n;
        }
    }
}
