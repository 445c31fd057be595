// SPDX-License-Identifier: GPL-3.0-or-later
#include "HttpEncoder.h"

namespace Tamar {

qsizetype CHttpEncoderW::AnsiEncodeLen(const QString& text) {
    return AnsiEncode(text).size();
}

QByteArray CHttpEncoderW::AnsiEncode(const QString& text) {
    return text.toLocal8Bit();
}

QByteArray CHttpEncoderW::Utf8Encode(const QString& text) {
    return text.toUtf8();
}

QByteArray CHttpEncoderW::UrlEncodeA(const QByteArray& bytes) {
    return bytes.toPercentEncoding();
}

}  // namespace Tamar
