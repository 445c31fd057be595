// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStackedWidget>

#include "SaveFixture.h"

// The page after a save.

TEST_F(SaveWindow, OpenAnotherClosesWithYesWhenAPictureWasOpened) {
    QWidget* owner = nullptr;
    m_request.openAnother = [&](QWidget* dialogOwner) {
        owner = dialogOwner;
        EXPECT_EQ(m_savedCalls, 1) << "the session knows of the save before it opens another picture";
        return true;
    };
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        Click(window, "BtnSave");
        Click(window, "BtnSaveOpenFile");
        EXPECT_EQ(owner, &window);
    });
    EXPECT_EQ(Run().result, ResultYes);
    EXPECT_EQ(Clicks("888060601"), 1);
}

TEST_F(SaveWindow, OpenAnotherStaysWhenNothingWasOpened) {
    m_request.openAnother = [&](QWidget*) { return false; };
    m_script
        .On<CSaveWnd>([&](CSaveWnd& window) {
            Click(window, "BtnSave");
            Click(window, "BtnSaveOpenFile");
        })
        .On<CSaveWnd>([&](CSaveWnd& window) {
            EXPECT_EQ(Control<QStackedWidget>(window, "TabLaySave").currentIndex(), 1);
            EXPECT_EQ(Clicks("888060601"), 1);
            Click(window, "BtnSaveClose");
        });
    EXPECT_EQ(Run().result, ResultClose);
}

TEST_F(SaveWindow, OpenFolderShowsTheFolderThatWasSavedTo) {
    // The desktop's opener stands first in the search path and writes down what it is asked to show.
    const QString bin = Folder("bin"), told = m_home.filePath(QStringLiteral("told"));
    QFile opener(bin + QStringLiteral("/xdg-open"));
    ASSERT_TRUE(opener.open(QIODevice::WriteOnly));
    opener.write("#!/bin/sh\nprintf '%s' \"$1\" > '" + told.toUtf8() + ".part'\nmv '" + told.toUtf8() + ".part' '" +
                 told.toUtf8() + "'\n");
    opener.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    opener.close();
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", bin.toUtf8() + ":" + path);
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        Click(window, "BtnSave");
        Click(window, "BtnSaveOpenPath");
        EXPECT_EQ(Clicks("888060602"), 1);
        Click(window, "BtnSaveClose");
    });
    EXPECT_TRUE(Run().written);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(told); }, 5000));
    EXPECT_EQ(QString::fromUtf8(FileBytes(told)), Documents());
    qputenv("PATH", path);
}

TEST_F(SaveWindow, OpenFolderDoesNothingWhenTheFolderIsGone) {
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        Click(window, "BtnSave");
        EXPECT_TRUE(QDir(Documents()).removeRecursively());
        Click(window, "BtnSaveOpenPath");
        EXPECT_EQ(Clicks("888060602"), 1);
        Click(window, "BtnSaveClose");
    });
    EXPECT_TRUE(Run().written);
}

TEST_F(SaveWindow, SavedPageTellsWhereTheFileIs) {
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        Click(window, "BtnSave");
        const auto& text = Control<QLabel>(window, "TextSavedPath");
        EXPECT_EQ(text.toolTip(), Documents() + QStringLiteral("/portrait_copy.jpg"));
        EXPECT_FALSE(text.text().isEmpty());
        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(Run().result, ResultClose) << "a second Enter closes the window";
}
