// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/socket.h>
#include <QtCore/QByteArray>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QString>

class QLocalSocket;

// What programs of this family say to one another over local sockets: one line asks, one line answers. Blocking, up to
// the deadline.

// The lock file that stands for a semaphore, one for each user and data folder.
QString LocalLockFile(const char* semaphore);
// The socket beside it, in the abstract namespace: the same for every spelling of the data folder.
QString LocalSocketName(const char* semaphore);

// User and process at the other end. False when the system does not tell.
bool PeerOf(int socket, ucred& peer);
// Milliseconds left, never below 0.
int Remaining(const QDeadlineTimer& deadline);
// Sends a line and waits for one; empty when none came in time.
QByteArray Exchange(QLocalSocket& socket, const QByteArray& request, const QDeadlineTimer& deadline);
