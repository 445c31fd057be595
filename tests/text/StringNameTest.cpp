// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "TextDrawing.h"

namespace {

QString NameOf(const QString& text) {
    return TextDrawing::Text(text).GetStepName();
}

QString Custom(const QString& shown) {
    return QStringLiteral("添加文字“%1”位置：自定义").arg(shown);
}

}  // namespace

TEST(StringName, IsEmptyWithoutAText) {
    EXPECT_EQ(NameOf({}), QString());
}

TEST(StringName, ShowsATextOfUpToTheFullWidthWhole) {
    // A narrow character counts 12, a wide one 25; 150 is still whole.
    EXPECT_EQ(NameOf(QStringLiteral("abcdefghijkl")), Custom(QStringLiteral("abcdefghijkl")));
    EXPECT_EQ(NameOf(QStringLiteral("一二三四五六")), Custom(QStringLiteral("一二三四五六")));
}

TEST(StringName, ShortensWhatIsWiderToHeadAndTail) {
    EXPECT_EQ(NameOf(QStringLiteral("abcdefghijklm")), Custom(QStringLiteral("abcde...hijklm")));
    EXPECT_EQ(NameOf(QStringLiteral("一二三四五六七")), Custom(QStringLiteral("一二...六七")));
    EXPECT_EQ(NameOf(QStringLiteral("ab一二三四五六z")), Custom(QStringLiteral("ab一...五六z")));
}

TEST(StringName, LeavesLineBreaksOut) {
    EXPECT_EQ(NameOf(QStringLiteral("one\ntwo\n")), Custom(QStringLiteral("onetwo")));
}

TEST(StringName, NeverCutsACharacterInTwo) {
    const QString name = NameOf(QString::fromUtf8("😀😀😀😀a😀😀😀"));
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (name[i].isHighSurrogate()) {
            ASSERT_TRUE(i + 1 < name.size() && name[i + 1].isLowSurrogate());
            ++i;
        } else {
            EXPECT_FALSE(name[i].isLowSurrogate());
        }
    }
}

TEST(StringName, SaysThePlacement) {
    StringParams text = TextDrawing::Text(QStringLiteral("a"));
    text.SetPlacement(StringParams::Tiled);
    EXPECT_EQ(text.GetStepName(), QStringLiteral("添加文字“a”位置：平铺"));
    const char16_t* cells[] = {u"左上", u"中上", u"右上", u"左中", u"正中", u"右中", u"左下", u"中下", u"右下"};
    text.SetPlacement(StringParams::NineGrid);
    for (int cell = 0; cell < 9; ++cell) {
        text.SetGridCell(cell);
        EXPECT_EQ(text.GetStepName(), QStringLiteral("添加文字“a”位置：九宫格") + QString::fromUtf16(cells[cell]));
    }
    text.SetPlacement(3);
    EXPECT_EQ(text.GetStepName(), QStringLiteral("stringParams wrong"));
}
