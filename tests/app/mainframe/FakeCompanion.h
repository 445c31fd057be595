// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <QtCore/QSemaphore>
#include <QtCore/QStringList>
#include <QtCore/QThread>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>

#include "Companions.h"

// A sharing companion as the program meets it: a socket named after its semaphore that answers one visitor, on a thread
// of its own since the asking side blocks.
class FakeCompanion {
  public:
    FakeCompanion(Companion companion, QByteArray visible)
        : m_thread(QThread::create([this, companion, visible = std::move(visible)] { Serve(companion, visible); })) {
        m_thread->start();
        m_listening.acquire();
    }
    ~FakeCompanion() { m_thread->wait(); }

    // The questions so far; waits until the visitor has gone.
    QStringList Asked() {
        m_done.acquire();
        return m_asked;
    }

  private:
    void Serve(Companion companion, const QByteArray& visible) {
        QLocalServer server;
        server.setSocketOptions(QLocalServer::AbstractNamespaceOption);
        server.listen(CompanionSocketName(companion));
        m_listening.release();
        if (server.waitForNewConnection(10000)) {
            QLocalSocket* visitor = server.nextPendingConnection();
            while (visitor->canReadLine() || visitor->waitForReadyRead(2000)) {
                const QByteArray line = visitor->readLine().trimmed();
                m_asked << QString::fromLatin1(line);
                visitor->write(line == "visible?" ? visible + '\n' : QByteArray("done\n"));
                visitor->flush();
            }
        }
        m_done.release();
    }

    QSemaphore m_listening;
    QSemaphore m_done;
    QStringList m_asked;
    std::unique_ptr<QThread> m_thread;
};
