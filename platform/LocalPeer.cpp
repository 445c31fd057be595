// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocalPeer.h"

#include <algorithm>
#include <QtNetwork/QLocalSocket>

bool PeerOf(int socket, ucred& peer) {
    socklen_t size = sizeof(peer);
    return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0;
}

int Remaining(const QDeadlineTimer& deadline) {
    return static_cast<int>(std::max<qint64>(0, deadline.remainingTime()));
}

QByteArray Exchange(QLocalSocket& socket, const QByteArray& request, const QDeadlineTimer& deadline) {
    socket.write(request + '\n');
    while (!socket.canReadLine()) {
        const int wait = Remaining(deadline);
        if (wait == 0 || !socket.waitForReadyRead(wait)) return {};
    }
    return socket.readLine().trimmed();
}
