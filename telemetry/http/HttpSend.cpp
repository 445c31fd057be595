// SPDX-License-Identifier: GPL-3.0-or-later
#include "HttpSend.h"

#include <QtCore/QStringList>

#include "HttpUrl.h"
#include "LoadModule.h"

namespace {

QuinceHttpFunction LoadEntry() {
    return reinterpret_cast<QuinceHttpFunction>(FindInModule("libquince_net.so", HttpEntryName));
}

bool IsByte(QStringView text) {
    bool number = false;
    const int value = text.toInt(&number);
    return number && value >= 0 && value <= 255 && text.size() <= 3 && text.front().isDigit();
}

}  // namespace

bool IsLoopbackHost(const QString& host) {
    if (host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0) return true;
    if (host == u"::1" || host == u"[::1]") return true;
    const QStringList bytes = host.split(u'.');
    if (bytes.size() != 4 || bytes[0] != u"127") return false;
    for (const QString& byte : bytes)
        if (byte.isEmpty() || !IsByte(byte)) return false;
    return true;
}

HttpAnswer HttpSend(HttpJob job) {
    HttpAnswer answer;
    const Tamar::CHttpUrlAnalyzer url = Tamar::CHttpUrlAnalyzer::Analyze(QString::fromStdString(job.url));
    job.loopback = IsLoopbackHost(url.Host());
    if (!url.IsValid() || (!url.IsSecure() && !job.loopback)) return answer;
    static const QuinceHttpFunction entry = LoadEntry();
    answer.error = HttpAnswer::NoModule;
    if (entry) entry(&job, &answer);
    return answer;
}
