// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QWidget>

#include "CSaveWnd.h"
#include "ModalScript.h"
#include "PC_File.h"

// A private home and documents folder, an owner window, a picture that was opened from a file, and the counts from
// zero.
class SaveWindow : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    // Puts a file there and takes it as the opened picture.
    void OpenSource(const QString& path);
    SaveOutcome Run(AfterSave afterSave = AfterSave::ShowPage);

    QString Documents() const { return m_home.filePath(QStringLiteral("Documents/QUINCE")); }
    QString Folder(const char* name);
    Bitmap Load(const QString& path) const;

    QTemporaryDir m_home;
    QWidget m_owner;
    SaveRequest m_request;
    PC_File m_file;
    ModalScript m_script;
    int m_savedCalls = 0;
};

QByteArray FileBytes(const QString& path);
bool IsJpeg(const QString& path);
bool IsPng(const QString& path);
bool IsBmp(const QString& path);
int Clicks(const char* code);
// Chooses an item of a combo as a user does.
void ChooseType(const QWidget& window, int index);
