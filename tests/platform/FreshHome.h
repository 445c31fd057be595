// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "AppPaths.h"

// A test whose AppDir is an empty folder of its own.
class FreshHome : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(m_folder.isValid());
        m_before = qgetenv("QUINCE_HOME");
        qputenv("QUINCE_HOME", m_folder.path().toUtf8());
    }
    void TearDown() override { qputenv("QUINCE_HOME", m_before); }

    // Writes AppDir/name, with its folder.
    static void Put(const QString& name, const QByteArray& bytes) {
        const QString path = AppPath(name);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    static QByteArray Get(const QString& name) {
        QFile file(AppPath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static bool Has(const QString& name) { return QFile::exists(AppPath(name)); }

  private:
    QTemporaryDir m_folder;
    QByteArray m_before;
};
