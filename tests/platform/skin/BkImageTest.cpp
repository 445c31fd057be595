// SPDX-License-Identifier: GPL-3.0-or-later
#include "BkImage.h"

#include <gtest/gtest.h>

#include <QtGui/QImage>
#include <QtTest/QTest>

#include "TestHome.h"

TEST(BkImage, ReadsFileAndDestination) {
    const BkImage image = BkImage::Parse(QStringLiteral("file='/a b/c.png' dest='12,5,59,52' "));
    EXPECT_EQ(image.file, QStringLiteral("/a b/c.png"));
    EXPECT_EQ(image.dest, QRect(12, 5, 47, 47));
}

TEST(BkImage, MissingOrBrokenAttributesStayEmpty) {
    EXPECT_TRUE(BkImage::Parse(QString()).file.isEmpty());
    EXPECT_TRUE(BkImage::Parse(QStringLiteral("dest='1,2'")).dest.isNull());
}

TEST(ImageBox, ShowsAFileWrittenAnewUnderTheSameName) {
    const QString path = TestHome::Path() + QStringLiteral("/box.png");
    const QString attributes = QStringLiteral("file='%1' dest='0,0,10,10' ").arg(path);
    CImageBox box;
    box.resize(20, 20);
    for (const QColor color : {QColor(Qt::red), QColor(Qt::blue)}) {
        QImage picture(10, 10, QImage::Format_RGB32);
        picture.fill(color);
        ASSERT_TRUE(picture.save(path));
        box.SetImage(attributes);
        const QImage shown = box.grab().toImage();
        EXPECT_EQ(shown.pixelColor(5, 5), color);
        EXPECT_NE(shown.pixelColor(15, 15), color);
    }
}
