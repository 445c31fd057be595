// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSet>

// True when an interface other than the loopback is up and carries a route. Nothing is sent. Any thread.
bool IsNetworkAlive();

// The interfaces that carry a route, from the texts of the system's two routing tables; the loopback and link-local
// routes, which every interface has, do not count.
QSet<QByteArray> RoutedInterfaces(const QByteArray& ipv4Table, const QByteArray& ipv6Table);
