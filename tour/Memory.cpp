// SPDX-License-Identifier: GPL-3.0-or-later
#include "Memory.h"

#include <QtCore/QFile>

#include "CHistoryManager.h"
#include "CMainFrameWnd.h"
#include "Driver.h"
#include "Stage.h"

double TourMemory(const QString& picture) {
    Stage stage(QStringLiteral("1033"));
    stage.Open(picture);
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    Driver::WaitFor(QStringLiteral("the step"), [] { return CHistoryManager::Instance().m_currentNo == 2; });
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').first().toDouble() / 1024.0;
    return 0;
}
