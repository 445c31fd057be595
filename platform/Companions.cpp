// SPDX-License-Identifier: GPL-3.0-or-later
#include "Companions.h"

#include <unistd.h>

#include <array>
#include <QtNetwork/QLocalSocket>

#include "LocalPeer.h"
#include "X11Windows.h"

namespace {

constexpr std::array<CompanionRow, 2> Rows{
    {{"vantu_quince_twitter_process", "Twitter.exe", "Twitter", "QUINCE Twitter"},
     {"vantu_quince_facebook_process", "FaceBook.exe", "Facebook", "QUINCE Facebook"}}};

bool RaiseBySocket(Companion companion, std::chrono::milliseconds patience) {
    const QDeadlineTimer deadline(patience);
    QLocalSocket socket;
    socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    socket.connectToServer(CompanionSocketName(companion));
    if (!socket.waitForConnected(Remaining(deadline))) return false;
    ucred peer = {};
    if (!PeerOf(static_cast<int>(socket.socketDescriptor()), peer) || peer.uid != ::geteuid()) return false;
    if (Exchange(socket, "visible?", deadline) != "yes") return false;
    Exchange(socket, "raise", deadline);
    return true;
}

}  // namespace

const CompanionRow& RowOf(Companion companion) {
    return Rows[static_cast<std::size_t>(companion)];
}

Companion CompanionNamed(const QString& stem) {
    const bool facebook = stem.compare(QLatin1String("FaceBook"), Qt::CaseInsensitive) == 0;
    return facebook ? Companion::Facebook : Companion::Twitter;
}

bool RaiseCompanion(Companion companion, std::chrono::milliseconds patience) {
    const CompanionRow& row = RowOf(companion);
    return RaiseBySocket(companion, patience) || RaiseX11Window(row.windowClass, row.windowTitle);
}

bool RaiseOpenCompanion(std::chrono::milliseconds patience) {
    return RaiseCompanion(Companion::Twitter, patience) || RaiseCompanion(Companion::Facebook, patience);
}

QString CompanionSocketName(Companion companion) {
    return LocalSocketName(RowOf(companion).semaphore);
}

QString CompanionLockFile(Companion companion) {
    return LocalLockFile(RowOf(companion).semaphore);
}
