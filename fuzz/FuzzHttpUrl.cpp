// SPDX-License-Identifier: GPL-3.0-or-later
// Splitting of URLs: any bytes may be one. What is taken for valid splits the same when it is put together again, and a
// text with its illegal characters written as percent signs holds no more of them.
#include <cstdlib>
#include <string>

#include "HttpSend.h"
#include "HttpUrl.h"

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using Tamar::CHttpUrlAnalyzer;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const CHttpUrlAnalyzer url = CHttpUrlAnalyzer::Analyze(text);
    const auto narrow = Tamar::CHttpUrlAnalyzerT<std::string>::Analyze(text.toStdString());
    Require(narrow.IsValid() == url.IsValid() && narrow.Port() == url.Port());
    IsLoopbackHost(text);
    const QString legal = Tamar::WithLegalCharacters(text);
    Require(Tamar::WithLegalCharacters(legal) == legal);
    for (const QChar c : legal) Require(c.unicode() > 0x20 && c.unicode() < 0x7F);
    if (!url.IsValid()) return 0;
    Require(!url.Host().isEmpty() && url.Port() > 0 && url.Port() < 65536 && url.Path().startsWith(u'/'));
    const QString again =
        QStringLiteral("%1://%2:%3").arg(QLatin1String(url.IsSecure() ? "https" : "http"), url.Host()).arg(url.Port()) +
        url.Path();
    const CHttpUrlAnalyzer second = CHttpUrlAnalyzer::Analyze(again);
    Require(second.IsValid() && second.IsSecure() == url.IsSecure() && second.Host() == url.Host() &&
            second.Port() == url.Port() && second.Path() == url.Path());
    return 0;
}
