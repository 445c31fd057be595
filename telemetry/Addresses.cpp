// SPDX-License-Identifier: GPL-3.0-or-later
#include "Addresses.h"

#include <functional>

#include "AppPaths.h"
#include "HttpSend.h"
#include "HttpUrl.h"
#include "IniFile.h"

namespace {

const QString Section = QStringLiteral("Addresses");
const QString SwitchSection = QStringLiteral("Network");
const QString SwitchKey = QStringLiteral("Statistics");

using Tamar::CHttpUrlAnalyzer;

QString HostOf(const QString& text) {
    if (text.isEmpty()) return {};
    const QString url = text.contains(QLatin1String("://")) ? text : QStringLiteral("https://") + text;
    const CHttpUrlAnalyzer parts = CHttpUrlAnalyzer::Analyze(url);
    if (!parts.IsValid() || parts.Path() != u"/") return {};
    if (!parts.IsSecure() && !IsLoopbackHost(parts.Host())) return {};
    const QLatin1String scheme(parts.IsSecure() ? "https" : "http");
    return QStringLiteral("%1://%2:%3").arg(scheme, parts.Host(), QString::number(parts.Port()));
}

QString PageOf(const QString& text) {
    const CHttpUrlAnalyzer parts = CHttpUrlAnalyzer::Analyze(text);
    return parts.IsValid() && parts.IsSecure() ? text : QString();
}

Addresses Read(const std::function<QString(const QString&)>& value) {
    Addresses addresses;
    addresses.analytics = HostOf(value(QStringLiteral("Analytics")));
    addresses.data = HostOf(value(QStringLiteral("Data")));
    addresses.feedback = HostOf(value(QStringLiteral("Feedback")));
    addresses.website = PageOf(value(QStringLiteral("Website")));
    addresses.update = PageOf(value(QStringLiteral("Update")));
    return addresses;
}

}  // namespace

Addresses ReadAddresses() {
    const QString file = ResourcePath(QStringLiteral("Addresses.ini"));
    return Read([&](const QString& key) { return GetProfileString(Section, key, QString(), file).trimmed(); });
}

Addresses AddressesFrom(const QByteArray& bytes) {
    return Read([&](const QString& key) { return ProfileStringFromBytes(bytes, Section, key, QString()).trimmed(); });
}

bool StatisticsAllowed() {
    return GetProfileInt(SwitchSection, SwitchKey, 1, ConfigIni()) != 0;
}

void AllowStatistics(bool allow) {
    WriteProfileString(SwitchSection, SwitchKey, allow ? QStringLiteral("1") : QStringLiteral("0"), ConfigIni());
}
