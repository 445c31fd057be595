// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

// The addresses that whoever installs the program gives it, in section [Addresses] of Addresses.ini. The file ships
// with all of them empty, and the program then uses no network at all. Any thread.
//
// A host is written "example.org", "https://example.org:8443" or, for this machine alone, "http://127.0.0.1:8080". An
// address that is none (another scheme, a path, a user's name, plain http to another machine) counts as empty.
struct Addresses {
    // "https://host:port"; paths are put behind it.
    QString analytics;
    QString data;
    QString feedback;
    // Whole addresses of pages, https only.
    QString website;
    // Where the separate updater looks; it reads the file itself. Without one it is not started.
    QString update;

    bool HasStatistics() const { return !analytics.isEmpty() || !data.isEmpty(); }
};

Addresses ReadAddresses();
// The same from the bytes of such a file.
Addresses AddressesFrom(const QByteArray& bytes);

// Whether the user lets usage statistics be sent ([Network] Statistics of Config.ini, which is on by default).
bool StatisticsAllowed();
void AllowStatistics(bool allow);
