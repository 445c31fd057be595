// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "StringParams.h"

// The part of StringParams that makes its name.

namespace {

// The widths by which a list row of the name is filled, in units of its own: a narrow character and a wide one.
constexpr int NarrowWidth = 12, WideWidth = 25;
constexpr char16_t FirstWide = 0x100;
constexpr int HeadWidth = 71, WholeWidth = 150, TailWidth = 73;

int WidthOf(QChar character) {
    return character.unicode() < FirstWide ? NarrowWidth : WideWidth;
}

// The end of a text that is too long to be shown whole.
QString TailOf(const QString& text) {
    int sum = 0;
    qsizetype first = text.size();
    while (first > 0) {
        sum += WidthOf(text[first - 1]);
        if (sum > TailWidth) break;
        --first;
    }
    if (first < text.size() && text[first].isLowSurrogate()) ++first;  // no half of a character
    return text.mid(first);
}

QString Shortened(const QString& text) {
    QString head;
    int sum = 0;
    for (const QChar character : text) {
        sum += WidthOf(character);
        if (sum < HeadWidth) head += character;
        if (sum > WholeWidth) {
            if (!head.isEmpty() && head.back().isHighSurrogate()) head.chop(1);
            const QString tail = TailOf(text);
            return tail.isEmpty() ? text : head + QStringLiteral("...") + tail;
        }
    }
    return text;
}

QString CellName(int cell) {
    static const std::array<QString, 9> names{u"左上"_qs, u"中上"_qs, u"右上"_qs, u"左中"_qs, u"正中"_qs,
                                              u"右中"_qs, u"左下"_qs, u"中下"_qs, u"右下"_qs};
    return cell >= 0 && cell < 9 ? names[static_cast<std::size_t>(cell)] : QString();
}

}  // namespace

QString StringParams::GetStepName() const {
    if (m_text.isEmpty()) return {};
    QString plain = m_text;
    plain.remove(u'\n');
    const QString start = u"添加文字“"_qs + Shortened(plain) + u"”位置："_qs;
    switch (m_placement) {
        case Custom:
            return start + u"自定义"_qs;
        case NineGrid:
            return start + u"九宫格"_qs + CellName(m_gridCell);
        case Tiled:
            return start + u"平铺"_qs;
        default:
            return QStringLiteral("stringParams wrong");
    }
}
