// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "AppPaths.h"
#include "FrameBuilder.h"
#include "FrameCatalogue.h"
#include "TestPictures.h"

// The folders of frames of a test's own: the program's data lies in a new folder while the object lives.
class FrameFolder {
  public:
    FrameFolder() : m_former(qgetenv("QUINCE_HOME")) {
        for (const QString& entry :
             QDir(QString::fromUtf8(m_former)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot))
            if (entry != QStringLiteral("Sucai"))
                QFile::link(QString::fromUtf8(m_former) + u'/' + entry, m_home.filePath(entry));
        qputenv("QUINCE_HOME", m_home.path().toUtf8());
        for (const int kind : {FrameSimple, FrameOrnate}) QDir().mkpath(Folder(kind));
    }
    ~FrameFolder() {
        qputenv("QUINCE_HOME", m_former);
        ReadFrames();
    }
    static QString Folder(int kind) {
        return AppPath(QStringLiteral("Sucai/Biankuang/") +
                       (kind == FrameOrnate ? QStringLiteral("XuanCai") : QStringLiteral("JianDan")));
    }
    static QString Write(int kind, const QString& name, const FrameBuilder::Bytes& bytes) {
        const QString path = Folder(kind) + u'/' + name;
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
        return path;
    }
    static QString WriteThumbnail(int kind, const QString& name, int width = 20, int height = 16) {
        return Write(kind, name, FrameBuilder::Png(TestPictures::Face(width, height)));
    }
    // A frame of each kind of file, with a thumbnail.
    static QString AddStrip(const QString& stem, int border = 9) {
        FrameBuilder::Strip file;
        file.strip = TestPictures::Noise(2 * border + 3, 2 * border + 3, 4);
        file.extraWidth = file.extraHeight = 2 * border;
        file.pictureX = file.pictureY = border;
        file.pieces = {{{border, border},
                        {3, border},
                        {border, border},
                        {border, 3},
                        {border, 3},
                        {border, border},
                        {3, border},
                        {border, border}}};
        WriteThumbnail(FrameSimple, stem + QStringLiteral(".png"));
        return Write(FrameSimple, stem + QStringLiteral(".nlf"), file.File());
    }
    static QString AddNine(const QString& stem, int border = 7) {
        FrameBuilder::NinePart file;
        for (std::size_t i = 0; i < 9; ++i)
            if (i != 4) file.parts[i] = TestPictures::Noise(border, border, static_cast<std::uint32_t>(i) + 2);
        file.extraWidth = file.extraHeight = 2 * border;
        file.pictureX = file.pictureY = border;
        WriteThumbnail(FrameSimple, stem + QStringLiteral(".png"));
        return Write(FrameSimple, stem + QStringLiteral(".vnbkwz"), file.File());
    }
    static QString AddOverlay(const QString& stem, std::uint32_t seed = 5) {
        FrameBuilder::Overlay file;
        file.picture = TestPictures::Noise(30, 20, seed, false);
        WriteThumbnail(FrameOrnate, stem + QStringLiteral(".png"));
        return Write(FrameOrnate, stem + QStringLiteral(".vnbkxc"), file.File());
    }

  private:
    QByteArray m_former;
    QTemporaryDir m_home;
};
