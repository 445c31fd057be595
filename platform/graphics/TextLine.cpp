// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextLine.h"

#include <algorithm>
#include <QtCore/QTextBoundaryFinder>
#include <QtGui/QFont>
#include <QtGui/QTextLayout>

#include "Families.h"
#include "VerticalScript.h"

namespace {

// Where the middle of an ideograph stands above the baseline, in em: its square reaches from 0.12 below to 0.88 above.
constexpr double UprightMiddle = 0.38;

QFont FontOf(const TextLook& look) {
    QFont font;
    font.setFamilies({FamilyFor(look.family)});
    font.setPixelSize(TextEm);
    font.setBold(look.bold);
    font.setItalic(look.italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::PreferOutline));
    return font;
}

// A cluster that is meant to be a picture: one of the planes of emoji, or any character that asks for it.
bool IsEmoji(QStringView cluster) {
    constexpr char16_t asPicture = 0xFE0F;
    if (cluster.size() > 1 && cluster.contains(QChar(asPicture))) return true;
    if (cluster.size() < 2 || !cluster[0].isHighSurrogate()) return false;
    const char32_t first = QChar::surrogateToUcs4(cluster[0], cluster[1]);
    return first >= 0x1F1E6 && first <= 0x1FAFF;
}

// Many families have emoji in outlines; the coloured ones go before.
QList<QTextLayout::FormatRange> EmojiRanges(const QString& text, const QFont& font) {
    QList<QTextLayout::FormatRange> ranges;
    const QString family = EmojiFamily();
    if (family.isEmpty()) return ranges;
    QFont coloured = font;
    coloured.setFamilies(QStringList(family) + font.families());
    coloured.setBold(false);
    coloured.setItalic(false);
    QTextBoundaryFinder clusters(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype from = 0, end = 0; (end = clusters.toNextBoundary()) >= 0; from = end) {
        if (!IsEmoji(QStringView(text).mid(from, end - from))) continue;
        QTextCharFormat format;
        format.setFont(coloured);
        ranges.push_back({static_cast<int>(from), static_cast<int>(end - from), format});
    }
    return ranges;
}

bool LacksGlyph(const QTextLine& line, int from, int length) {
    for (const QGlyphRun& run : line.glyphRuns(from, length))
        if (run.glyphIndexes().contains(0)) return true;
    return false;
}

// A family that has a script may have it in its upright face alone: what the leaning or bold face lacks is taken from
// there.
QList<QTextLayout::FormatRange> UprightRanges(const QTextLine& line, const QString& text, QFont font) {
    QList<QTextLayout::FormatRange> ranges;
    if (!(font.bold() || font.italic()) || !LacksGlyph(line, 0, static_cast<int>(text.size()))) return ranges;
    font.setItalic(false);
    font.setBold(false);
    QTextCharFormat format;
    format.setFont(font);
    QTextBoundaryFinder clusters(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype from = 0, end = 0; (end = clusters.toNextBoundary()) >= 0; from = end) {
        const int first = static_cast<int>(from), length = static_cast<int>(end - from);
        if (!LacksGlyph(line, first, length)) continue;
        // Letters that join must lie in one range.
        if (!ranges.empty() && ranges.back().start + ranges.back().length == first)
            ranges.back().length += length;
        else
            ranges.push_back({first, length, format});
    }
    return ranges;
}

QTextLine LayOut(QTextLayout& layout, const QList<QTextLayout::FormatRange>& formats) {
    layout.setFormats(formats);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setPosition({0, 0});
    layout.endLayout();
    return line;
}

// A stretch of the text whose glyphs stand upright in a column, or lie on their side.
struct Stretch {
    int from;
    int length;
    UprightForm form;
};

std::vector<Stretch> StretchesOf(const QString& text) {
    std::vector<Stretch> stretches;
    QTextBoundaryFinder clusters(QTextBoundaryFinder::Grapheme, text);
    for (int from = 0; clusters.toNextBoundary() >= 0;) {
        const int end = static_cast<int>(clusters.position());
        const UprightForm form = UprightFormOf(text.mid(from, end - from));
        const bool joins = form == UprightForm::Sideways && !stretches.empty() && stretches.back().form == form;
        if (joins)
            stretches.back().length += end - from;
        else
            stretches.push_back({from, end - from, form});
        from = end;
    }
    return stretches;
}

// The line lies on its side, so an upright glyph is turned back about the middle of its cell.
QTransform UprightAt(double middle, double across, double baseline, UprightForm form) {
    QTransform transform;
    transform.translate(middle, across);
    transform.rotate(-90);
    if (form == UprightForm::UpperRight) transform.translate(0.55 * TextEm, -0.55 * TextEm);
    transform.translate(-middle, UprightMiddle * TextEm - baseline);
    return transform;
}

void AddVertical(const QTextLine& line, TextLine& made) {
    for (const Stretch& stretch : StretchesOf(made.text)) {
        GlyphShapes shapes;
        for (const QGlyphRun& run : line.glyphRuns(stretch.from, stretch.length)) shapes.Add(run, {});
        QTransform transform;
        if (stretch.form != UprightForm::Sideways) {
            const double first = line.cursorToX(stretch.from), last = line.cursorToX(stretch.from + stretch.length);
            transform = UprightAt((first + last) / 2, made.height / 2, line.ascent(), stretch.form);
        }
        made.shapes.Add(shapes, transform);
    }
}

void AddUnderline(const QFont& font, const QTextLine& line, TextLine& made) {
    const QRawFont face = QRawFont::fromFont(font);
    const double thickness = std::max(face.lineThickness(), TextEm / 20.0);
    const double middle = line.ascent() + std::max(face.underlinePosition(), thickness);
    made.shapes.AddRect({0, middle - thickness / 2, made.width, thickness});
}

}  // namespace

std::shared_ptr<const TextLine> TextLine::Make(const QString& text, const TextLook& look) {
    auto made = std::make_shared<TextLine>();
    made->text = text;
    const QFont font = FontOf(look);
    QTextLayout layout(text, font);
    QTextOption option;
    option.setUseDesignMetrics(true);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    QList<QTextLayout::FormatRange> formats = EmojiRanges(text, font);
    QTextLine line = LayOut(layout, formats);
    if (const auto upright = UprightRanges(line, text, font); !upright.isEmpty())
        line = LayOut(layout, formats += upright);
    made->width = line.naturalTextWidth();
    made->height = line.ascent() + line.descent() + std::max(0.0, line.leading());
    made->rightToLeft = text.isRightToLeft();
    if (look.vertical)
        AddVertical(line, *made);
    else
        for (const QGlyphRun& run : line.glyphRuns()) made->shapes.Add(run, {});
    if (look.underline && made->width > 0) AddUnderline(font, line, *made);
    return made;
}
