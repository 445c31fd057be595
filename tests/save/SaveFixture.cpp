// SPDX-License-Identifier: GPL-3.0-or-later
#include "SaveFixture.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>

#include "AppPaths.h"
#include "ClickCount.h"
#include "Language.h"
#include "TestPictures.h"

void SaveWindow::SetUp() {
    ASSERT_TRUE(m_home.isValid());
    qputenv("HOME", m_home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", m_home.filePath(QStringLiteral("config")).toUtf8());
    SetLanguage(QStringLiteral("1033"));
    SetLastSaveFolder({});
    ClickCounts().Clear();
    ASSERT_TRUE(MakeTempPrivate());
    m_owner.setGeometry(200, 100, 1024, 730);
    m_owner.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_owner));
    m_request.picture = TestPictures::Face(320, 240);
    m_request.file = &m_file;
    m_request.sourcePath = Folder("pictures") + QStringLiteral("/portrait.jpg");
    m_request.saved = [this](const QString&) { ++m_savedCalls; };
}

void SaveWindow::TearDown() {
    SetLastSaveFolder({});
    SetLanguage(QStringLiteral("1033"));
}

void SaveWindow::OpenSource(const QString& path) {
    const bool png = path.endsWith(QLatin1String("png"), Qt::CaseInsensitive);
    ASSERT_NE(m_file.OnSaveQuick(path.toStdWString().c_str(), TestPictures::Plain(40, 30, 0xFF808080), png ? 2 : 1, 90),
              0);
    ASSERT_FALSE(m_file.OnLoadImage(path.toStdWString().c_str(), nullptr, 0, 100, nullptr).IsNull());
    m_request.sourcePath = path;
}

SaveOutcome SaveWindow::Run(AfterSave afterSave) {
    m_request.afterSave = afterSave;
    return RunSaveWindow(&m_owner, m_request);
}

QString SaveWindow::Folder(const char* name) {
    const QString folder = m_home.filePath(QLatin1String(name));
    EXPECT_TRUE(QDir().mkpath(folder));
    return folder;
}

Bitmap SaveWindow::Load(const QString& path) const {
    PC_File reader;
    return reader.OnLoadImage(path.toStdWString().c_str(), nullptr, 0, 100, nullptr);
}

QByteArray FileBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool IsJpeg(const QString& path) {
    return FileBytes(path).startsWith("\xFF\xD8\xFF");
}

bool IsPng(const QString& path) {
    return FileBytes(path).startsWith("\x89PNG\r\n\x1A\n");
}

bool IsBmp(const QString& path) {
    return FileBytes(path).startsWith("BM");
}

int Clicks(const char* code) {
    const auto counts = ClickCounts().Counts();
    const auto found = counts.find(QLatin1String(code));
    return found == counts.end() ? 0 : found->second;
}

void ChooseType(const QWidget& window, int index) {
    auto& combo = Control<QComboBox>(window, "ComboFileType");
    combo.setFocus();
    while (combo.currentIndex() < index) QTest::keyClick(&combo, Qt::Key_Down);
    while (combo.currentIndex() > index) QTest::keyClick(&combo, Qt::Key_Up);
}
