// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtGui/QFontDatabase>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include "Families.h"
#include "TextShape.h"
#include "VerticalScript.h"

namespace {

QSizeF SizeOf(const QString& text, TextLook look = {QStringLiteral("Arial")}) {
    const auto shape = TextShape::Make(text, look);
    return shape ? shape->Size() : QSizeF();
}

QImage Drawn(const QString& text, TextLook look = {QStringLiteral("Arial")}, const QColor& colour = Qt::black) {
    const auto shape = TextShape::Make(text, look);
    constexpr double em = 60;
    QImage image((shape->Size() * em).toSize() + QSize(2, 2), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    shape->Draw(painter, {}, em, colour);
    return image;
}

int Inked(const QImage& image, const QRect& part) {
    int inked = 0;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            if (image.valid(x, y)) inked += qAlpha(image.pixel(x, y)) > 64;
    return inked;
}
int Inked(const QImage& image) {
    return Inked(image, image.rect());
}

bool HasColour(const QImage& image) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor at = QColor::fromRgb(image.pixel(x, y));
            if (qAlpha(image.pixel(x, y)) > 200 && at.saturation() > 60) return true;
        }
    return false;
}

// The picture that a font draws for what it does not have.
bool IsMissing(const QString& character) {
    return Drawn(character) == Drawn(QString(QChar(0xFFFE)));
}

}  // namespace

TEST(TextShape, ThereIsNoneWithoutTextOrFamily) {
    EXPECT_EQ(TextShape::Make({}, {QStringLiteral("Arial")}), nullptr);
    EXPECT_EQ(TextShape::Make(QStringLiteral("a"), {}), nullptr);
}

TEST(TextShape, AFamilyThatIsNotInstalledFallsBackToTheSerifs) {
    EXPECT_EQ(SizeOf(QStringLiteral("Quick"), {QStringLiteral("No Such Family")}),
              SizeOf(QStringLiteral("Quick"), {QStringLiteral("serif")}));
}

TEST(TextShape, AFamilyOfTheSameMetricsStandsForArial) {
    if (!QFontDatabase::hasFamily(QStringLiteral("Arial"))) {
        ASSERT_TRUE(QFontDatabase::hasFamily(QStringLiteral("Liberation Sans")));
        EXPECT_EQ(InstalledFamily(QStringLiteral("Arial")), QStringLiteral("Liberation Sans"));
    }
    EXPECT_TRUE(TextFamilies().contains(QStringLiteral("Arial")));
    EXPECT_TRUE(InstalledFamily(QStringLiteral("No Such Family")).isEmpty());
}

TEST(TextShape, LinesBreakAtLineFeeds) {
    const QSizeF one = SizeOf(QStringLiteral("First")), two = SizeOf(QStringLiteral("First\nx"));
    EXPECT_NEAR(two.height(), 2 * one.height(), 0.01);
    EXPECT_NEAR(two.width(), one.width(), 0.01);
    EXPECT_NEAR(SizeOf(QStringLiteral("First\n\nx")).height(), 3 * one.height(), 0.01);
    EXPECT_NEAR(SizeOf(QStringLiteral("First\n")).height(), 2 * one.height(), 0.01);
}

TEST(TextShape, BlanksTakeTheirRoom) {
    EXPECT_GT(SizeOf(QStringLiteral("a   ")).width(), SizeOf(QStringLiteral("a")).width());
    EXPECT_GT(SizeOf(QStringLiteral("  ")).width(), 0);
}

TEST(TextShape, BoldItalicAndUnderlineAreSeen) {
    const QString text = QStringLiteral("Hamburg");
    const int plain = Inked(Drawn(text));
    EXPECT_GT(Inked(Drawn(text, {QStringLiteral("Arial"), true})), plain * 11 / 10);
    EXPECT_FALSE(Drawn(text, {QStringLiteral("Arial"), false, true}) == Drawn(text));
    EXPECT_GT(Inked(Drawn(text, {QStringLiteral("Arial"), false, false, true})), plain * 11 / 10);
}

TEST(TextShape, AFaceThatAFamilyLacksIsMade) {
    const TextLook bold{QStringLiteral("Noto Sans CJK SC"), true},
        italic{QStringLiteral("Noto Sans CJK SC"), false, true};
    const QString text = QStringLiteral("文字");
    EXPECT_GT(Inked(Drawn(text, bold)), Inked(Drawn(text, {QStringLiteral("Noto Sans CJK SC")})));
    EXPECT_FALSE(Drawn(text, italic) == Drawn(text, {QStringLiteral("Noto Sans CJK SC")}));
}

TEST(TextShape, ScriptsThatTheFamilyLacksComeFromOthers) {
    for (const char* text : {"文", "か", "한", "ش", "ש", "Ж", "Ω", "ñ"})
        EXPECT_FALSE(IsMissing(QString::fromUtf8(text))) << text;
}

TEST(TextShape, ScriptsWithoutALeaningFaceAreNotLost) {
    const TextLook leaning{QStringLiteral("Arial"), true, true};
    for (const char* text : {"سلام", "שלום", "文字"}) {
        const QString word = QString::fromUtf8(text);
        const QImage upright = Drawn(word), drawn = Drawn(word, leaning);
        EXPECT_NEAR(drawn.width(), upright.width(), upright.width() / 3) << text;
        EXPECT_FALSE(drawn == Drawn(QString(word.size(), QChar(0xFFFE)), leaning)) << text;
    }
}

TEST(TextShape, ArabicIsShapedAndReadFromTheRight) {
    // Joined letters are narrower than the same ones alone.
    EXPECT_LT(SizeOf(QStringLiteral("ببب")).width(), 3 * SizeOf(QStringLiteral("ب")).width() * 0.9);
    // The first letter, alef, is taller than meem and stands at the right.
    const QImage drawn = Drawn(QStringLiteral("ا     م"));
    const auto topOf = [&](int from, int to) {
        for (int y = 0; y < drawn.height(); ++y)
            if (Inked(drawn, QRect(QPoint(from, y), QPoint(to, y))) > 0) return y;
        return drawn.height();
    };
    EXPECT_LT(topOf(drawn.width() / 2, drawn.width() - 1), topOf(0, drawn.width() / 2) - 5);
}

TEST(TextShape, ALineFromRightToLeftBeginsAtTheRight) {
    const QImage drawn = Drawn(QStringLiteral("a long line of text\nשלום"));
    const QRect lower(0, drawn.height() / 2, drawn.width() / 2, drawn.height() / 2);
    EXPECT_EQ(Inked(drawn, lower), 0);
    EXPECT_GT(Inked(drawn, lower.translated(drawn.width() / 2, 0)), 50);
}

TEST(TextShape, CombiningMarksStandOnTheirLetter) {
    EXPECT_NEAR(SizeOf(QString::fromUtf8("e\u0301")).width(), SizeOf(QStringLiteral("e")).width(), 0.02);
    EXPECT_GT(Inked(Drawn(QString::fromUtf8("e\u0301"))), Inked(Drawn(QStringLiteral("e"))));
}

TEST(TextShape, EmojiHaveTheirColours) {
    ASSERT_FALSE(EmojiFamily().isEmpty());
    for (const char* family : {"Arial", "DejaVu Sans"}) {
        EXPECT_TRUE(HasColour(Drawn(QString::fromUtf8("😀"), {QLatin1String(family)}))) << family;
        EXPECT_TRUE(HasColour(Drawn(QString::fromUtf8("❤\uFE0F"), {QLatin1String(family)}))) << family;
    }
    EXPECT_FALSE(HasColour(Drawn(QStringLiteral("123 ❤"))));
}

TEST(TextShape, ASequenceOfEmojiIsOne) {
    const QString flag = QString::fromUtf8("🇫🇷");
    EXPECT_NEAR(SizeOf(flag).width(), SizeOf(QString::fromUtf8("😀")).width(), 0.2);
    EXPECT_LT(SizeOf(QString::fromUtf8("👍🏽")).width(), 1.6 * SizeOf(QString::fromUtf8("👍")).width());
}

TEST(TextShape, ASilhouetteHasNoColours) {
    const auto shape = TextShape::Make(QString::fromUtf8("😀"), {QStringLiteral("Arial")});
    QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    shape->Draw(painter, {5, 5}, 60, Qt::black, TextShape::Colours::Silhouette);
    EXPECT_GT(Inked(image), 500);
    EXPECT_FALSE(HasColour(image));
}

TEST(TextShape, GrowsInProportionToItsSize) {
    const auto shape = TextShape::Make(QStringLiteral("Proportion"), {QStringLiteral("Arial")});
    for (const double em : {8.0, 26.0, 90.0, 300.0}) {
        QImage image((shape->Size() * em).toSize() + QSize(2, 2), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        shape->Draw(painter, {}, em, Qt::black);
        painter.end();
        double sum = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) sum += qAlpha(image.pixel(x, y)) / 255.0;
        EXPECT_NEAR(sum / (em * em), 1.05, 0.25) << em;
    }
}

TEST(TextShape, KnownLinesAreTakenOver) {
    const TextLook look{QStringLiteral("Arial")};
    const auto before = TextShape::Make(QStringLiteral("one\ntwo"), look);
    const auto after = TextShape::Make(QStringLiteral("one\ntwo three"), look, before.get());
    const auto fresh = TextShape::Make(QStringLiteral("one\ntwo three"), look);
    EXPECT_EQ(after->Size(), fresh->Size());
    const auto image = [](const TextShape& shape) {
        QImage drawn(300, 150, QImage::Format_ARGB32_Premultiplied);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        shape.Draw(painter, {}, 40, Qt::black);
        return drawn;
    };
    EXPECT_TRUE(image(*after) == image(*fresh));
}

// ---- columns

TEST(VerticalScript, SaysWhatStandsUpright) {
    for (const char* upright : {"文", "か", "カ", "한", "！", "😀", "A\uFE0F\u20E3"})
        EXPECT_EQ(UprightFormOf(QString::fromUtf8(upright)) == UprightForm::Upright,
                  QString::fromUtf8(upright)[0] != u'A')
            << upright;
    for (const char* sideways : {"A", "é", "ش", "「", "（", "ー", "1", ""})
        EXPECT_EQ(UprightFormOf(QString::fromUtf8(sideways)), UprightForm::Sideways) << sideways;
    for (const char* mark : {"、", "。", "，", "．"})
        EXPECT_EQ(UprightFormOf(QString::fromUtf8(mark)), UprightForm::UpperRight) << mark;
}

TEST(TextShape, AVerticalTextHasTheBoxOfTheFlatOneSwapped) {
    for (const char* text : {"One line", "文字", "Two\nlines here", "שלום"}) {
        TextLook look{QStringLiteral("Arial")};
        const QSizeF flat = SizeOf(QString::fromUtf8(text), look);
        look.vertical = true;
        // What the turn of single glyphs adds is ink that reaches out of the line.
        EXPECT_NEAR(SizeOf(QString::fromUtf8(text), look).width(), flat.height(), 0.2) << text;
        EXPECT_NEAR(SizeOf(QString::fromUtf8(text), look).height(), flat.width(), 0.2) << text;
    }
}

TEST(TextShape, ColumnsGoFromRightToLeftAndGlyphsDownward) {
    TextLook look{QStringLiteral("Noto Sans CJK SC")};
    look.vertical = true;
    // A full block and then a thin stroke: heavy above; the second column, which is short, at the left.
    const QImage drawn = Drawn(QStringLiteral("国一一一\n国"), look);
    const int width = drawn.width() / 2, height = drawn.height() / 4;
    const auto cell = [&](int column, int row) {
        return Inked(drawn, QRect(column * width, row * height, width, height));
    };
    EXPECT_GT(cell(1, 0), 2 * cell(1, 1));
    EXPECT_GT(cell(1, 3), 0);
    EXPECT_GT(cell(0, 0), 100);
    EXPECT_EQ(cell(0, 3), 0);
    // 一 is wider than high: it stands upright.
    const QImage stroke = Drawn(QStringLiteral("一"), look);
    QRect ink;
    for (int y = 0; y < stroke.height(); ++y)
        for (int x = 0; x < stroke.width(); ++x)
            if (qAlpha(stroke.pixel(x, y)) > 64) ink |= QRect(x, y, 1, 1);
    EXPECT_GT(ink.width(), 4 * ink.height());
}
