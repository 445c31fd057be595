// SPDX-License-Identifier: GPL-3.0-or-later
#include "CShareWnd.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QMimeData>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QPainter>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>

#include "Language.h"
#include "PC_File.h"
#include "Style.h"
#include "TestPictures.h"

namespace {

class Share : public testing::Test {
  protected:
    void SetUp() override {
        SetLanguage(QStringLiteral("1033"));
        Style::Apply(*qApp);
        m_path = qgetenv("PATH");
        qputenv("PATH", m_folder.filePath(QStringLiteral("bin")).toUtf8() + ":/usr/bin:/bin");
    }
    void TearDown() override {
        qputenv("PATH", m_path);
        SetLanguage(QStringLiteral("1033"));
    }

    // What the editor hands over: a file that is called PNG whatever it holds.
    QString Hand(int format) {
        const QString path = m_folder.filePath(QStringLiteral("SendImag.png"));
        EXPECT_NE(PC_File().OnSaveQuick(path.toStdWString().c_str(), TestPictures::Face(600, 400), format, 90), 0);
        return path;
    }
    // A desktop tool that writes down its arguments.
    void PutTool(const char* name) {
        const QString path = m_folder.filePath(QStringLiteral("bin/") + QLatin1String(name));
        QDir().mkpath(m_folder.filePath(QStringLiteral("bin")));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\nprintf '%s|' \"$@\" > \"${0%/*}/out\"\necho >> \"${0%/*}/out\"\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    // What the tool wrote down, once its line is whole: the file is there before its last byte is.
    QByteArray Written() const {
        QByteArray line;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                QFile file(m_folder.filePath(QStringLiteral("bin/out")));
                if (file.exists() && file.open(QIODevice::ReadOnly)) line = file.readAll();
                return line.endsWith('\n');
            },
            10000));
        return line;
    }
    static void Press(CShareWnd& window, const char* name) {
        QTest::mouseClick(window.Find<QWidget>(QLatin1String(name)), Qt::LeftButton);
    }
    static QString State(const CShareWnd& window) {
        return window.Find<QLabel>(QStringLiteral("TextShareState"))->text();
    }
    static QString Word(const char* key) { return LanguageText(QLatin1String(key), QStringLiteral("Share")); }

    QTemporaryDir m_folder;
    QByteArray m_path;
};

}  // namespace

TEST_F(Share, ShowsThePictureUnderItsTitle) {
    CShareWnd window(Hand(1), QStringLiteral("QUINCE Twitter"));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(window.windowTitle(), u"QUINCE Twitter");
    const auto* preview = window.Find<QLabel>(QStringLiteral("ConShowImage"));
    EXPECT_EQ(preview->pixmap().size(), QSize(345, 230) * window.devicePixelRatioF());
}

TEST_F(Share, TheCopyIsCalledWhatItIsAndGoesWithTheWindow) {
    const std::pair<int, const char*> kinds[] = {{1, "quince.jpg"}, {2, "quince.png"}, {3, "quince.bmp"}};
    for (const auto& [format, name] : kinds) {
        QString file;
        {
            const CShareWnd window(Hand(format), {});
            file = window.Picture().File();
            EXPECT_EQ(QFileInfo(file).fileName(), QLatin1String(name));
            EXPECT_TRUE(QFile::exists(file));
        }
        EXPECT_FALSE(QFile::exists(file));
    }
}

TEST_F(Share, CopyPutsPixelsAndFileIntoTheClipboard) {
    CShareWnd window(Hand(2), {});
    window.show();
    Press(window, "BtnCopy");
    const QMimeData* data = QApplication::clipboard()->mimeData();
    EXPECT_EQ(qvariant_cast<QImage>(data->imageData()).size(), QSize(600, 400));
    EXPECT_EQ(data->urls(), QList<QUrl>{QUrl::fromLocalFile(window.Picture().File())});
    EXPECT_EQ(State(window), Word("ids_share_copied"));
    QApplication::clipboard()->clear();
    QTest::keyClick(&window, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QApplication::clipboard()->mimeData()->hasImage());
}

TEST_F(Share, OpenFolderAndMailGoToTheDesktopsTools) {
    PutTool("xdg-open");
    PutTool("xdg-email");
    CShareWnd window(Hand(1), {});
    window.show();
    const QByteArray file = window.Picture().File().toUtf8();
    const auto forget = [&] { QFile::remove(m_folder.filePath(QStringLiteral("bin/out"))); };
    Press(window, "BtnOpenWith");
    EXPECT_EQ(Written(), file + "|\n");
    EXPECT_EQ(State(window), Word("ids_share_opened"));
    forget();
    Press(window, "BtnShowFolder");
    EXPECT_EQ(Written(), window.Picture().Folder().toUtf8() + "|\n");
    forget();
    Press(window, "BtnMail");
    EXPECT_EQ(Written(), "--subject|QUINCE|--attach|" + file + "|\n");
}

TEST_F(Share, ADesktopWithoutAToolIsTold) {
    qputenv("PATH", m_folder.path().toUtf8());
    CShareWnd window(Hand(1), {});
    window.show();
    for (const char* name : {"BtnOpenWith", "BtnMail", "BtnShowFolder"}) {
        Press(window, name);
        EXPECT_EQ(State(window), Word("ids_share_failed")) << name;
    }
}

TEST_F(Share, WithoutAPictureItSaysSoInBothLanguages) {
    QFile text(m_folder.filePath(QStringLiteral("text.png")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("no picture");
    text.close();
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        for (const QString& path : {QString(), QStringLiteral("/no/such.png"), text.fileName()}) {
            CShareWnd window(path, {});
            window.show();
            EXPECT_EQ(window.Find<QLabel>(QStringLiteral("TextShare"))->text(), Word("ids_share_nopicture"));
            for (const char* name : {"BtnCopy", "BtnOpenWith", "BtnMail", "BtnShowFolder"})
                EXPECT_FALSE(window.Find<QWidget>(QLatin1String(name))->isEnabled()) << name;
        }
    }
}

TEST_F(Share, EscClosesIt) {
    CShareWnd window(Hand(1), {});
    window.show();
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}
