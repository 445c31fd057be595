// SPDX-License-Identifier: GPL-3.0-or-later
#include "ContactSheet.h"

#include <gtest/gtest.h>

#include <QtGui/QGuiApplication>

#include "LookShelf.h"
#include "PC_Dsp.h"
#include "TestPictures.h"

namespace {

// Text is drawn on the sheet, which needs a font system.
QImage Drawn(const ContactSheet& sheet, const Bitmap& picture, const std::filesystem::path& program,
             const std::vector<int>& indexes, QString& error) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int count = 1;
    char name[] = "test", *arguments[] = {name, nullptr};
    delete QCoreApplication::instance();
    const QGuiApplication application(count, arguments);
    return sheet.Draw(picture, program, indexes, error);
}

}  // namespace

TEST(ContactSheet, ShowsThePictureInEachLook) {
    const Bitmap picture = TestPictures::Face(300, 200);
    ContactSheet sheet;
    sheet.tileWidth = 90;
    sheet.columns = 2;
    sheet.withOriginal = true;
    QString error;
    const QImage drawn = Drawn(sheet, picture, QUINCE_RESOURCES, {3, 40}, error);
    ASSERT_FALSE(drawn.isNull()) << error.toStdString();
    EXPECT_EQ(drawn.size(), QSize(10 + 2 * 100, 10 + 2 * (60 + 26 + 10)));
    const Bitmap small = PC_Dsp::Resample(picture, 90, 60);
    // The original first, then the looks row by row.
    for (const auto& [index, corner] : {std::pair{-1, QPoint(10, 10)}, {3, QPoint(110, 10)}, {40, QPoint(10, 106)}}) {
        Bitmap tile = small;
        if (index >= 0) {
            const auto look = LookShelf::Take(QUINCE_RESOURCES, index);
            ASSERT_TRUE(look);
            ASSERT_NE(look->Apply(tile.MutablePixels(), 90, 60, {}), 0);
        }
        for (const QPoint& at : {QPoint(0, 0), QPoint(45, 30), QPoint(89, 59)})
            EXPECT_EQ(drawn.pixel(corner + at), TestPictures::PixelAt(tile, at.x(), at.y())) << index;
    }
}

TEST(ContactSheet, NamesTheLookThatCannotBeRead) {
    QString error;
    EXPECT_TRUE(Drawn({}, TestPictures::Face(40, 40), "/nowhere", {2}, error).isNull());
    EXPECT_TRUE(error.contains(QString::fromStdString(LookShelf::FileName(2)))) << error.toStdString();
}
