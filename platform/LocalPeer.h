// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/socket.h>
#include <QtCore/QByteArray>
#include <QtCore/QDeadlineTimer>

class QLocalSocket;

// What programs of this family say to one another over local sockets: one line asks, one line answers. Blocking, up to
// the deadline.

// User and process at the other end. False when the system does not tell.
bool PeerOf(int socket, ucred& peer);
// Milliseconds left, never below 0.
int Remaining(const QDeadlineTimer& deadline);
// Sends a line and waits for one; empty when none came in time.
QByteArray Exchange(QLocalSocket& socket, const QByteArray& request, const QDeadlineTimer& deadline);
