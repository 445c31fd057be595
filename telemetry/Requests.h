// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <QtCore/QByteArray>
#include <QtCore/QSize>
#include <QtCore/QString>

// The requests of the usage statistics, as they go out. `host` is "https://name:port". Values go in as they are; only
// characters that no URL may hold are written as percent signs. Any thread.

struct OpenFacts {
    int width = 0;
    int height = 0;
    QString format;    // the file's suffix
    int size = 0;      // in kilobytes
    int resize = 3;    // 1 reduced on opening, 2 larger than 2000 pixels, 3 neither
    int position = 0;  // always
    int name = 0;      // 1 for the sample picture
};

QString OpenRequest(const QString& host, const OpenFacts& picture);
// `lastVisit` in whole days, `time` the seconds of the last session as they are kept.
QString RunRequest(const QString& host, const QString& partner, const QString& client, QSize screen, qint64 lastVisit,
                   const QString& time);
QString UpdateRequest(const QString& host, const QString& partner, const QString& client);
QString ActiveRequest(const QString& host, const QString& partner, const QString& client, const QString& fullName);
QString InstallRequest(const QString& host, const QString& partner, const QString& client, const QString& fullName);

// The daily report of clicks: where it goes and what it says.
QString ClickRequest(const QString& host);
QByteArray ClickBody(const std::map<QString, int>& counts);

// "1920*1080".
QString ScreenText(QSize screen);
