// SPDX-License-Identifier: GPL-3.0-or-later
#include "Requests.h"

#include <initializer_list>
#include <utility>

#include "ClientId.h"
#include "HttpUrl.h"
#include "Version.h"

namespace {

const QString Software = QStringLiteral("QUINCE_PC");

using Keys = std::initializer_list<std::pair<const char*, QString>>;

QString Request(const QString& host, const char* path, Keys keys) {
    QString url = host + QLatin1String(path) + QStringLiteral("?software=") + Software + QStringLiteral("&version=") +
                  GetVersionText();
    for (const auto& [key, value] : keys) url += u'&' + QLatin1String(key) + u'=' + value;
    return Tamar::WithLegalCharacters(url);
}

}  // namespace

QString OpenRequest(const QString& host, const OpenFacts& picture) {
    return Request(host, "/open.json",
                   {{"width", QString::number(picture.width)},
                    {"height", QString::number(picture.height)},
                    {"format", picture.format},
                    {"size", QString::number(picture.size)},
                    {"resize", QString::number(picture.resize)},
                    {"position", QString::number(picture.position)},
                    {"name", QString::number(picture.name)}});
}

// The name of the system is left empty.
QString RunRequest(const QString& host, const QString& partner, const QString& client, QSize screen, qint64 lastVisit,
                   const QString& time) {
    return Request(host, "/run.json",
                   {{"partner", partner},
                    {"client", client},
                    {"os", {}},
                    {"resolution", ScreenText(screen)},
                    {"last_visit", QString::number(lastVisit)},
                    {"time", time}});
}

QString UpdateRequest(const QString& host, const QString& partner, const QString& client) {
    return Request(host, "/update.json", {{"partner", partner}, {"client", client}});
}

QString ActiveRequest(const QString& host, const QString& partner, const QString& client, const QString& fullName) {
    return Request(host, "/active.json",
                   {{"partner", partner}, {"client", client}, {"startup", {}}, {"fullname", fullName}});
}

// Names of the system, the browser and its first page are left empty: they are the user's own business.
QString InstallRequest(const QString& host, const QString& partner, const QString& client, const QString& fullName) {
    return Request(host, "/install.json",
                   {{"partner", partner},
                    {"client", client},
                    {"os", {}},
                    {"browser", {}},
                    {"homepage", {}},
                    {"v", GetClientCheckValue(partner, client)},
                    {"fullname", fullName}});
}

QString ClickRequest(const QString& host) {
    return host + QStringLiteral("/action.php");
}

// As many bytes as the text has characters, which is all of it, since codes are digits.
QByteArray ClickBody(const std::map<QString, int>& counts) {
    QString body = QStringLiteral("software=%1&version=%2&content=").arg(Software, GetVersionText());
    for (const auto& [code, count] : counts) body += code + u'!' + QString::number(count) + u'|';
    return body.toLocal8Bit().left(body.size());
}

QString ScreenText(QSize screen) {
    return QStringLiteral("%1*%2").arg(screen.width()).arg(screen.height());
}
