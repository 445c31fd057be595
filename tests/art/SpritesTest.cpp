// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>

namespace {

const QString Stage = QStringLiteral(QUINCE_STAGE_DIR "/Images/");

QImage Staged(const char* name) {
    return QImage(Stage + QLatin1String(name));
}

}  // namespace

TEST(Sprites, ExistAtOneAndTwoTimesTheirSize) {
    const struct {
        const char* name;
        int width, height;
    } sprites[] = {{"Loading/login_bg", 300, 100},
                   {"Loading/loading", 297, 27},
                   {"ThumbWnd/thumb_bg", 187, 216},
                   {"ThumbWnd/thumb_close", 15, 15},
                   {"ThumbWnd/thumb_close_h", 15, 15},
                   {"Button/btn_compare_save", 174, 42},
                   {"Button/btn_compare_save_h", 174, 42},
                   {"Button/btn_compare_before", 104, 42},
                   {"Button/btn_compare_before_h", 104, 42},
                   {"Button/btn_delete", 96, 32},
                   {"Button/btn_rotate", 96, 32}};
    for (const auto& sprite : sprites) {
        const QString base = Stage + QLatin1String(sprite.name);
        EXPECT_EQ(QImage(base + QStringLiteral(".png")).size(), QSize(sprite.width, sprite.height)) << sprite.name;
        EXPECT_EQ(QImage(base + QStringLiteral("@2x.png")).size(), QSize(2 * sprite.width, 2 * sprite.height))
            << sprite.name;
    }
}

TEST(Sprites, SpinnerShowsElevenDifferentFrames) {
    const QImage strip = Staged("Loading/loading.png");
    std::vector<QImage> frames;
    for (int i = 0; i < 11; ++i) frames.push_back(strip.copy(27 * i, 0, 27, 27));
    for (std::size_t i = 0; i < frames.size(); ++i) {
        for (std::size_t k = i + 1; k < frames.size(); ++k) EXPECT_NE(frames[i], frames[k]) << i << ' ' << k;
        EXPECT_EQ(frames[i].pixelColor(0, 0).alpha(), 0);
    }
}

TEST(Sprites, TextureTilesWithoutASeam) {
    const QImage tile = Staged("TextureBrush/TextureBrush.jpg");
    ASSERT_EQ(tile.size(), QSize(16, 16));
    EXPECT_EQ(Staged("TextureBrush/TextureBrush@2x.jpg").size(), QSize(32, 32));
    // Opposite quarters match, neighbours differ by little: it must not shout behind a picture.
    EXPECT_NEAR(qGray(tile.pixel(3, 3)), qGray(tile.pixel(11, 11)), 2);
    const int step = qGray(tile.pixel(3, 3)) - qGray(tile.pixel(11, 3));
    EXPECT_GE(step, 8);
    EXPECT_LE(step, 32);
}

TEST(Sprites, ProgramIconHasEverySizeAndIsGolden) {
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QImage icon(Stage + QStringLiteral("Icons/quince_%1.png").arg(size));
        ASSERT_EQ(icon.size(), QSize(size, size));
        const QColor flesh = icon.pixelColor(size * 2 / 5, size * 3 / 5);
        EXPECT_GT(flesh.red(), 200);
        EXPECT_GT(flesh.red(), flesh.blue() + 60);
        EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
    }
}

TEST(Icons, AreStrokedAlikeAndDrawSomething) {
    const QDir folder(Stage + QStringLiteral("Icons"));
    const QStringList names = folder.entryList({QStringLiteral("*.svg")});
    EXPECT_GT(names.size(), 60);
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        QSvgRenderer renderer(text);
        ASSERT_TRUE(renderer.isValid()) << qPrintable(name);
        if (name == QStringLiteral("quince.svg")) continue;
        EXPECT_EQ(text.count("stroke=\"#2B2F36\""), 1) << qPrintable(name);
        EXPECT_TRUE(text.contains("viewBox=\"0 0 20 20\"")) << qPrintable(name);
        EXPECT_TRUE(text.contains("stroke-width=\"1.5\"")) << qPrintable(name);
        QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter);
        painter.end();
        int drawn = 0;
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 40; ++x) drawn += qAlpha(image.pixel(x, y)) > 128 ? 1 : 0;
        }
        EXPECT_GE(drawn, 8) << qPrintable(name);
    }
}

TEST(Staging, EveryResourceLiesBesideTheProgramUnchanged) {
    const QDir source(QStringLiteral(QUINCE_SOURCE_DIR "/resources"));
    for (const QString& name : QDir(source.filePath(QStringLiteral("Images/Icons"))).entryList(QDir::Files)) {
        QFile from(source.filePath(QStringLiteral("Images/Icons/")) + name);
        QFile to(Stage + QStringLiteral("Icons/") + name);
        ASSERT_TRUE(from.open(QIODevice::ReadOnly));
        ASSERT_TRUE(to.open(QIODevice::ReadOnly)) << qPrintable(name);
        EXPECT_EQ(from.readAll(), to.readAll()) << qPrintable(name);
    }
    EXPECT_TRUE(QDir(QStringLiteral(QUINCE_STAGE_DIR "/Resources")).exists());
}
