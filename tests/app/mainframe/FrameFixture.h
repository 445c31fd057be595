// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <QtCore/QPoint>
#include <QtCore/QString>

#include "Bitmap.h"
#include "CBaseWnd.h"
#include "CMainFrameWnd.h"
#include "Driver.h"

class QFileDialog;

// The whole program behind its main window, in the test's own home, with the pictures that a test needs in a folder
// beside it. Large pictures are opened as they are unless a test sets another choice.
class FrameTest : public testing::Test {
  public:
    // The middle of the red pupil in Photo().
    static QPoint RedEye();

  protected:
    void SetUp() override;
    void TearDown() override;

    // Shows the frame and waits until its picture is open or the welcome window is up.
    void Show(const QString& picture = {}, ToolTable tools = BuiltInTools());
    CMainFrameWnd& Frame() { return *m_frame; }
    CMidWnd& Mid() { return m_frame->Mid(); }

    // Writes a picture; format by the suffix. Returns its path.
    QString WritePicture(const QString& name, const Bitmap& picture);
    // A portrait-like picture of 900 × 1200 in photo.png.
    QString Photo();
    static Bitmap PhotoPixels();
    static Bitmap Load(const QString& path);
    // Saves what is on show through the save window, as the file type of that index in its list (.jpg, .png, .bmp), and
    // gives back what the file holds.
    Bitmap Saved(const QString& name, int type = 1);
    // Writes a value of the settings.
    static void Configure(const char* section, const char* key, const QString& value);
    // The clicks counted so far for a code.
    static int Clicks(const char* code);
    // Runs `act`, which shows a message box, and returns its text after answering it by a button.
    static QString MessageOf(const std::function<void()>& act, const QString& answer = QStringLiteral("BtnOk"));
    // Answers the save question that `act` raises by a button of it; "Esc" presses that key.
    static void AnswerSaveQuestion(const std::function<void()>& act, const char* answer);
    // Opens the photo and changes it.
    void ShowChanged(ToolTable tools = BuiltInTools());
    // Saves under a name in the save window that is up, and closes it when it stays.
    void SaveAs(const QString& name);
    // Runs `act`, which raises the open dialog, lets `inside` look at it, and cancels it.
    static void LookAtOpenDialog(const std::function<void()>& act, const std::function<void(QFileDialog&)>& inside);

    QString m_folder;

  private:
    std::unique_ptr<CMainFrameWnd> m_frame;
};
