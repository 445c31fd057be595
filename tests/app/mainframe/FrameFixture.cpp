// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrameFixture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <QtCore/QDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMessageBox>

#include "AppFolders.h"
#include "AppPaths.h"
#include "CHistoryManager.h"
#include "ClickCount.h"
#include "IniFile.h"
#include "Language.h"
#include "PC_File.h"
#include "SavePlan.h"
#include "StartUp.h"
#include "Style.h"
#include "TestHome.h"
#include "TestPictures.h"

void FrameTest::SetUp() {
    QFile::remove(AppPath(QStringLiteral("Config.ini")));
    PrepareFolders();
    Configure("Tip", "DlgOpenImageLessen", QStringLiteral("2"));
    SetLanguage(QStringLiteral("1033"));
    SettleTitle();
    Style::Apply(*qApp);
    ClickCounts().Clear();
    m_folder = TestHome::Path() + QStringLiteral("/pictures");
    QDir(m_folder).removeRecursively();
    QDir().mkpath(m_folder);
    SetLastSaveFolder(m_folder);
}

void FrameTest::TearDown() {
    m_frame.reset();
}

void FrameTest::Show(const QString& picture, ToolTable tools) {
    m_frame = std::make_unique<CMainFrameWnd>(picture, std::move(tools));
    m_frame->move(0, 0);
    m_frame->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_frame.get()));
    m_frame->activateWindow();
    Driver::WaitFor(QStringLiteral("the picture or the welcome window"), [&] {
        return (Mid().HasImage() && !Mid().IsBusy()) || Driver::IsThere(QStringLiteral("BtnWelEdit"));
    });
}

QString FrameTest::WritePicture(const QString& name, const Bitmap& picture) {
    const QString path = m_folder + QLatin1Char('/') + name;
    const int format = name.endsWith(u".jpg")   ? VN_IMAGE_FORMAT_JPEG
                       : name.endsWith(u".bmp") ? VN_IMAGE_FORMAT_BMP
                                                : VN_IMAGE_FORMAT_PNG;
    EXPECT_NE(PC_File().OnSaveQuick(path.toStdWString().c_str(), picture, format, 95), 0);
    return path;
}

namespace {

// Teeth between lips in the middle of the picture, for the tools that look for them.
void AddSmile(Bitmap& picture) {
    std::uint8_t* pixels = picture.MutablePixels();
    const int middleX = picture.Width() / 2, middleY = picture.Height() / 2;
    for (int y = middleY - 60; y < middleY + 60; ++y)
        for (int x = middleX - 170; x < middleX + 170; ++x) {
            const bool tooth = std::abs(x - middleX) < 130 && std::abs(y - middleY) < 26;
            const std::array<int, 3> colour = tooth ? std::array{178, 210, 226} : std::array{98, 96, 186};
            std::uint8_t* p = pixels + y * picture.Stride() + std::ptrdiff_t{4} * x;
            for (int c = 0; c < 3; ++c) p[c] = static_cast<std::uint8_t>(colour[c] + p[c] % 5 - 2);
        }
}

// A red pupil in the left eye, for the tool that looks for one.
void AddRedEye(Bitmap& picture) {
    std::uint8_t* pixels = picture.MutablePixels();
    const QPoint eye = FrameTest::RedEye();
    for (int y = eye.y() - 12; y < eye.y() + 12; ++y)
        for (int x = eye.x() - 12; x < eye.x() + 12; ++x) {
            const double share = std::clamp(9.5 - std::hypot(x - eye.x(), y - eye.y()), 0.0, 1.0);
            std::uint8_t* p = pixels + y * picture.Stride() + std::ptrdiff_t{4} * x;
            const std::array<int, 3> red{42, 30, 214};
            for (int c = 0; c < 3; ++c) p[c] = static_cast<std::uint8_t>(p[c] + share * (red[c] - p[c]));
        }
}

}  // namespace

QPoint FrameTest::RedEye() {
    return {342, 528};
}

Bitmap FrameTest::PhotoPixels() {
    static const Bitmap photo = [] {
        Bitmap face = TestPictures::Face(900, 1200);
        AddSmile(face);
        AddRedEye(face);
        return face;
    }();
    return photo;
}

QString FrameTest::Photo() {
    return WritePicture(QStringLiteral("photo.png"), PhotoPixels());
}

Bitmap FrameTest::Saved(const QString& name, int type) {
    Driver::Modal([] { Driver::Click(QStringLiteral("btnSave")); }, QStringLiteral("EdtPath"),
                  [&] {
                      Driver::Type(QStringLiteral("EdtPath"), m_folder);
                      Driver::Type(QStringLiteral("EdtName"), name);
                      Driver::ChooseItem(QStringLiteral("ComboFileType"), type);
                      Driver::Click(QStringLiteral("BtnSave"));
                      Driver::Click(QStringLiteral("BtnSaveClose"));
                  });
    const char* suffixes[] = {".jpg", ".png", ".bmp"};
    return Load(m_folder + QLatin1Char('/') + name + QLatin1String(suffixes[type]));
}

Bitmap FrameTest::Load(const QString& path) {
    return PC_File().OnLoadImage(path.toStdWString().c_str(), nullptr, 0, 100, nullptr);
}

void FrameTest::Configure(const char* section, const char* key, const QString& value) {
    WriteProfileString(QLatin1String(section), QLatin1String(key), value, AppPath(QStringLiteral("Config.ini")));
}

int FrameTest::Clicks(const char* code) {
    const auto counts = ClickCounts().Counts();
    const auto entry = counts.find(QLatin1String(code));
    return entry == counts.end() ? 0 : entry->second;
}

QString FrameTest::MessageOf(const std::function<void()>& act, const QString& answer) {
    QString text;
    Driver::Modal(act, answer, [&] {
        const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box) text = box->text();
        Driver::Click(answer);
    });
    return text;
}

void FrameTest::AnswerSaveQuestion(const std::function<void()>& act, const char* answer) {
    Driver::Modal(act, QStringLiteral("BtnCancel"), [=] {
        if (QLatin1String(answer) == u"Esc")
            Driver::Key(Qt::Key_Escape);
        else
            Driver::Click(QLatin1String(answer));
    });
}

void FrameTest::ShowChanged(ToolTable tools) {
    Show(Photo(), std::move(tools));
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    ASSERT_TRUE(Mid().Canvas()->IsImageChanged());
}

void FrameTest::SaveAs(const QString& name) {
    Driver::Type(QStringLiteral("EdtPath"), m_folder);
    Driver::Type(QStringLiteral("EdtName"), name);
    Driver::Click(QStringLiteral("BtnSave"));
    Driver::Wait(50);
    if (Driver::IsThere(QStringLiteral("BtnSaveOpenPath"))) Driver::Click(QStringLiteral("BtnSaveClose"));
}

void FrameTest::LookAtOpenDialog(const std::function<void()>& act, const std::function<void(QFileDialog&)>& inside) {
    Driver::Modal(act, QStringLiteral("fileNameEdit"), [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        inside(*dialog);
        dialog->reject();
    });
}
