// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QDragEnterEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include "AppPaths.h"
#include "BitmapView.h"
#include "CHistoryManager.h"
#include "FakeCompanion.h"
#include "FrameFixture.h"
#include "Language.h"
#include "Messages.h"
#include "TestPictures.h"

namespace {

class Losing : public FrameTest {
  protected:
    void DropFile(const QString& path) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter(QPoint(400, 300), Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&Frame(), &enter);
        QDropEvent drop(QPointF(400, 300), Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&Frame(), &drop);
    }
    QString Other() { return WritePicture(QStringLiteral("other.png"), TestPictures::Ramp(640, 480)); }
    void SaveCommand(const QString& name) {
        Driver::Modal([] { Driver::Key(Qt::Key_S, Qt::ControlModifier); }, QStringLiteral("EdtPath"),
                      [&] { SaveAs(name); });
    }
    bool IsClosed() { return !Frame().isVisible(); }
};

}  // namespace

TEST_F(Losing, AnUnchangedPictureClosesWithoutAQuestion) {
    Show(Photo());
    Frame().close();
    EXPECT_TRUE(IsClosed());
}

TEST_F(Losing, NoClosesAndThrowsTheWorkAway) {
    ShowChanged();
    AnswerSaveQuestion([&] { Frame().close(); }, "BtnCancel");
    EXPECT_TRUE(IsClosed());
}

TEST_F(Losing, EscAndTheCloseBoxStay) {
    ShowChanged();
    AnswerSaveQuestion([&] { Frame().close(); }, "Esc");
    EXPECT_FALSE(IsClosed());
    AnswerSaveQuestion([&] { Frame().close(); }, "BtnClose");
    EXPECT_FALSE(IsClosed());
}

TEST_F(Losing, YesClosesOnlyWhenAFileWasWritten) {
    ShowChanged();
    AnswerSaveQuestion(
        [&] {
            Driver::Modal([&] { Frame().close(); }, QStringLiteral("EdtPath"),
                          [] { Driver::Click(QStringLiteral("BtnSaveClose")); });
        },
        "BtnSave");
    EXPECT_FALSE(IsClosed()) << "the save window was closed without saving";
    AnswerSaveQuestion(
        [&] {
            Driver::Modal([&] { Frame().close(); }, QStringLiteral("EdtPath"), [&] { SaveAs(QStringLiteral("kept")); });
        },
        "BtnSave");
    EXPECT_TRUE(IsClosed());
    EXPECT_TRUE(QFile::exists(m_folder + QStringLiteral("/kept.jpg")));
}

TEST_F(Losing, WhatWasJustSavedIsNotAskedAbout) {
    ShowChanged();
    SaveCommand(QStringLiteral("kept"));
    EXPECT_TRUE(Mid().Canvas()->IsImageChanged()) << "it still differs from the opened picture";
    Frame().close();
    EXPECT_TRUE(IsClosed());
}

TEST_F(Losing, WorkAfterSavingIsAskedAboutAgain) {
    ShowChanged();
    SaveCommand(QStringLiteral("kept"));
    Driver::DragSlider(QStringLiteral("Duibidu"), 20);
    AnswerSaveQuestion([&] { Frame().close(); }, "Esc");
    EXPECT_FALSE(IsClosed());
}

TEST_F(Losing, UndoAndRedoBackToTheSavedStateNeedsNoQuestion) {
    ShowChanged();
    SaveCommand(QStringLiteral("kept"));
    Driver::Key(Qt::Key_Z, Qt::ControlModifier);
    Driver::Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    Frame().close();
    EXPECT_TRUE(IsClosed());
}

TEST_F(Losing, ADroppedFileIsOpened) {
    Show(Photo());
    DropFile(Other());
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), TestPictures::Ramp(640, 480));
}

TEST_F(Losing, ADropOnWorkAsksAndNoOpensIt) {
    ShowChanged();
    AnswerSaveQuestion([&] { DropFile(Other()); }, "BtnCancel");
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap().Width(), 640);
}

TEST_F(Losing, AfterSavingTheDropIsOver) {
    ShowChanged();
    const QString held = Mid().HeldPath();
    AnswerSaveQuestion(
        [&] {
            Driver::Modal([&] { DropFile(Other()); }, QStringLiteral("EdtPath"),
                          [&] { SaveAs(QStringLiteral("kept")); });
        },
        "BtnSave");
    EXPECT_EQ(Mid().HeldPath(), held);
    EXPECT_TRUE(QFile::exists(m_folder + QStringLiteral("/kept.jpg")));
}

TEST_F(Losing, AFailedDropLeavesTheWelcomeWindow) {
    Show();
    MessageOf([&] { DropFile(m_folder + QStringLiteral("/none.png")); });
    EXPECT_TRUE(Driver::IsThere(QStringLiteral("BtnExit")));
}

TEST_F(Losing, ADropWhileAModalWindowIsUpDoesNothing) {
    ShowChanged();
    const QString other = Other();
    Driver::Modal([] { Driver::Key(Qt::Key_S, Qt::ControlModifier); }, QStringLiteral("EdtPath"),
                  [&] {
                      DropFile(other);
                      Driver::Click(QStringLiteral("BtnSaveClose"));
                  });
    EXPECT_NE(Mid().HeldPath(), other);
}

TEST_F(Losing, ADropDuringATaskDoesNothing) {
    Show(Photo());
    const QString held = Mid().HeldPath();
    const QString other = Other();
    Mid().RunTask([&](CObjProgress&) { SendToMain([&] { DropFile(other); }); });
    EXPECT_EQ(Mid().HeldPath(), held);
}

TEST_F(Losing, ADropWhileAStrokeIsHeldDoesNothing) {
    ShowChanged();
    const QString held = Mid().HeldPath();
    const QString other = Other();
    for (int i = 0; i < 12; ++i) Driver::Click(QStringLiteral("BtnZoomIn"));
    QWidget* canvas = Mid().Canvas();
    QTest::mousePress(canvas, Qt::LeftButton, {}, canvas->rect().center());
    DropFile(other);
    EXPECT_EQ(Mid().HeldPath(), held);
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, canvas->rect().center());
}

TEST_F(Losing, APastedPictureIsOpened) {
    Show(Photo());
    QApplication::clipboard()->setImage(ViewOf(TestPictures::Ramp(320, 200)));
    Driver::Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), TestPictures::Ramp(320, 200));
}

TEST_F(Losing, APasteThatCanNotBeKeptIsToldAndLeavesTheSession) {
    Show(Photo());
    // A folder in the way of the file that the paste is to become.
    QFile::remove(AppPath(QStringLiteral("Temp/clipboard.png")));
    ASSERT_TRUE(MakeDirs(AppPath(QStringLiteral("Temp/clipboard.png/in the way"))));
    QApplication::clipboard()->setImage(ViewOf(TestPictures::Ramp(320, 200)));
    const QString text = MessageOf([] { Driver::Key(Qt::Key_V, Qt::ControlModifier); });
    EXPECT_EQ(text, LanguageText(QStringLiteral("ids_pasteerror")));
    EXPECT_FALSE(text.isEmpty());
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), PhotoPixels());
    EXPECT_TRUE(QDir(AppPath(QStringLiteral("Temp/clipboard.png"))).removeRecursively());
}

TEST_F(Losing, ASessionFileUnderTempCanNotBeCovered) {
    Show(Photo());
    QApplication::clipboard()->setImage(ViewOf(TestPictures::Ramp(320, 200)));
    Driver::Key(Qt::Key_V, Qt::ControlModifier);
    Driver::Modal([] { Driver::Key(Qt::Key_S, Qt::ControlModifier); }, QStringLiteral("EdtPath"),
                  [] {
                      EXPECT_FALSE(Driver::Find(QStringLiteral("BtnCover"))->isEnabled());
                      Driver::Click(QStringLiteral("BtnSaveClose"));
                  });
}

TEST_F(Losing, TheOpenButtonAsksFirst) {
    ShowChanged();
    AnswerSaveQuestion([] { Driver::Click(QStringLiteral("btnOpen")); }, "Esc");
    EXPECT_EQ(Clicks("8880501"), 1);
    EXPECT_TRUE(Mid().Canvas()->IsImageChanged());
}

TEST_F(Losing, ToolChangeAfterSavingNeedsNoQuestion) {
    ShowChanged();
    SaveCommand(QStringLiteral("kept"));
    Driver::Click(QStringLiteral("btnTab2"));
    ASSERT_NE(Mid().Tool(), 1);
    ASSERT_TRUE(Mid().Canvas()->IsImageChanged()) << "it still differs from the opened picture";
    ASSERT_TRUE(Mid().IsSafeToDiscard());
    Frame().close();
    EXPECT_TRUE(IsClosed());
}

TEST_F(Losing, ToolChangeBeforeSavingStillAsks) {
    ShowChanged();
    Driver::Click(QStringLiteral("btnTab2"));
    ASSERT_NE(Mid().Tool(), 1);
    AnswerSaveQuestion([&] { Frame().close(); }, "Esc");
    EXPECT_FALSE(IsClosed());
}

TEST_F(Losing, AnOpenSharingWindowIsBroughtUpInsteadOfClosing) {
    Show(Photo());
    {
        FakeCompanion companion(Companion::Twitter, "yes");
        Frame().close();
        EXPECT_FALSE(IsClosed());
        EXPECT_EQ(companion.Asked(), QStringList({QStringLiteral("visible?"), QStringLiteral("raise")}));
    }
    {
        FakeCompanion hidden(Companion::Facebook, "no");
        Frame().close();
        EXPECT_TRUE(IsClosed());
        EXPECT_EQ(hidden.Asked(), QStringList({QStringLiteral("visible?")}));
    }
}
