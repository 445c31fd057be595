// SPDX-License-Identifier: GPL-3.0-or-later
#include "Companions.h"

#include <unistd.h>
#include <QtNetwork/QLocalSocket>

#include "LocalPeer.h"

namespace {

// A window's class and title were used either way round by the companions' versions.
constexpr const char* Windows[] = {"QUINCE Twitter", "Twitter", "QUINCE Facebook", "Facebook"};

bool RaiseIfVisible(const QString& window, std::chrono::milliseconds patience) {
    const QDeadlineTimer deadline(patience);
    QLocalSocket socket;
    socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    socket.connectToServer(CompanionSocketName(window));
    if (!socket.waitForConnected(Remaining(deadline))) return false;
    ucred peer = {};
    if (!PeerOf(static_cast<int>(socket.socketDescriptor()), peer) || peer.uid != ::geteuid()) return false;
    if (Exchange(socket, "visible?", deadline) != "yes") return false;
    Exchange(socket, "raise", deadline);
    return true;
}

}  // namespace

QString CompanionSocketName(const QString& window) {
    return window + u'-' + QString::number(::geteuid());
}

bool RaiseOpenCompanion(std::chrono::milliseconds patience) {
    for (const char* window : Windows)
        if (RaiseIfVisible(QLatin1String(window), patience)) return true;
    return false;
}
