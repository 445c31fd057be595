// SPDX-License-Identifier: GPL-3.0-or-later
#include "Network.h"

#include <ifaddrs.h>
#include <net/if.h>

#include <QtCore/QFile>
#include <QtCore/QList>
#include <QtCore/QString>

namespace {

constexpr unsigned RouteUp = 0x0001;
constexpr unsigned RouteReject = 0x0200;

QByteArray ReadTable(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool Usable(const QByteArray& flags) {
    bool number = false;
    const unsigned value = flags.toUInt(&number, 16);
    return number && (value & RouteUp) && !(value & RouteReject);
}

}  // namespace

QSet<QByteArray> RoutedInterfaces(const QByteArray& ipv4Table, const QByteArray& ipv6Table) {
    QSet<QByteArray> names;
    // Name, destination, gateway, flags, ...; the heading has no number for flags.
    for (const QByteArray& line : ipv4Table.split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        const bool linkLocal = fields.size() > 1 && fields[1].right(4).toUpper() == "FEA9";
        if (fields.size() > 3 && Usable(fields[3]) && !linkLocal) names.insert(fields[0]);
    }
    // Destination, its length, source, its length, next hop, metric, two counts, flags, name.
    for (const QByteArray& line : ipv6Table.split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        const bool linkLocal = fields[0].startsWith("fe80") || fields[0].startsWith("ff");
        if (fields.size() > 9 && Usable(fields[8]) && !linkLocal) names.insert(fields[9]);
    }
    names.remove("lo");
    return names;
}

bool IsNetworkAlive() {
    const QSet<QByteArray> routed = RoutedInterfaces(ReadTable(QStringLiteral("/proc/net/route")),
                                                     ReadTable(QStringLiteral("/proc/net/ipv6_route")));
    ifaddrs* list = nullptr;
    if (routed.isEmpty() || ::getifaddrs(&list) != 0) return false;
    bool alive = false;
    for (const ifaddrs* entry = list; entry && !alive; entry = entry->ifa_next) {
        constexpr unsigned up = IFF_UP | IFF_RUNNING;
        alive = (entry->ifa_flags & up) == up && !(entry->ifa_flags & IFF_LOOPBACK) && routed.contains(entry->ifa_name);
    }
    ::freeifaddrs(list);
    return alive;
}
