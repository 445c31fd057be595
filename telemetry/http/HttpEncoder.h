// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace Tamar {

// Code pages that name no 8-bit character set.
constexpr unsigned CodePageUtf7 = 65000;
constexpr unsigned CodePageUtf8 = 65001;
// The system's own 8-bit encoding.
constexpr unsigned CodePageSystem = 0;

// Texts as bytes. Any thread.
class CHttpEncoderW {
  public:
    // How many bytes AnsiEncode gives.
    static qsizetype AnsiEncodeLen(const QString& text);
    // In the system's own encoding.
    static QByteArray AnsiEncode(const QString& text);
    static QByteArray Utf8Encode(const QString& text);
    // Letters, digits and -._~ stay; every other byte becomes % and two upper-case hexadecimal digits.
    static QByteArray UrlEncodeA(const QByteArray& bytes);
};

}  // namespace Tamar
