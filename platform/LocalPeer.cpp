// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocalPeer.h"

#include <unistd.h>

#include <algorithm>
#include <QtCore/QCryptographicHash>
#include <QtCore/QFileInfo>
#include <QtNetwork/QLocalSocket>

#include "AppPaths.h"

namespace {

QString UserName(const char* semaphore) {
    return QLatin1String(semaphore) + u'-' + QString::number(::geteuid());
}

}  // namespace

QString LocalLockFile(const char* semaphore) {
    return AppPath(UserName(semaphore) + QStringLiteral(".lock"));
}

// A hash, so that it is short enough for a socket's name however deep the folder lies.
QString LocalSocketName(const char* semaphore) {
    const QString folder = QFileInfo(GetAppDir()).canonicalFilePath();
    const QByteArray hash = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha256).toHex().left(24);
    return UserName(semaphore) + u'-' + QLatin1String(hash);
}

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
