// SPDX-License-Identifier: GPL-3.0-or-later
#include "Memory.h"

#include <QtCore/QFile>

#include "CBaseWnd.h"
#include "CHistoryManager.h"
#include "CMainFrameWnd.h"
#include "Driver.h"
#include "Stage.h"
#include "Strokes.h"

namespace {

// In MB; 0 where the system does not tell.
double PeakOfThisProcess() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').first().toDouble() / 1024.0;
    return 0;
}

}  // namespace

double TourMemory(const QString& picture) {
    Stage stage(QStringLiteral("1033"));
    stage.Open(picture);
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    Driver::WaitFor(QStringLiteral("the step"), [] { return CHistoryManager::Instance().m_currentNo == 2; });
    return PeakOfThisProcess();
}

double TourResizeMemory(const QString& picture, QSize size) {
    Stage stage(QStringLiteral("1033"));
    CMainFrameWnd& frame = stage.Open(picture);
    Driver::Click(QStringLiteral("btnTab2"));
    Driver::Click(QStringLiteral("BtnXiuGaiChiCun"));
    Driver::Click(QStringLiteral("OptBaoChi"));
    Driver::Type(QStringLiteral("EditKuanDu"), QString::number(size.width()));
    Driver::Type(QStringLiteral("EditGaoDu"), QString::number(size.height()));
    Driver::Click(QStringLiteral("BtnOK"));
    int width = 0, height = 0;
    frame.Mid().Canvas()->GetImageSize(&width, &height);
    return QSize(width, height) == size ? PeakOfThisProcess() : 0;
}

double TourBrushMemory(const QString& picture) {
    Stage stage(QStringLiteral("1033"));
    CMainFrameWnd& frame = stage.Open(picture);
    Driver::Click(QStringLiteral("btnMeiRong"));
    Driver::Click(QStringLiteral("BtnMouth"));
    Driver::Click(QStringLiteral("BtnMouthColor"));
    QWidget* canvas = frame.Mid().Canvas();
    const QPoint middle = canvas->rect().center();
    for (int i = 0; i < 10; ++i)
        Strokes::Draw(*canvas, Strokes::Line(middle + QPoint(-60, 8 * i), middle + QPoint(60, 8 * i), 15));
    Driver::DragSlider(QStringLiteral("SliderMouthColorAlpha"), 80);
    return CHistoryManager::Instance().m_count == 2 ? PeakOfThisProcess() : 0;
}

double TourWarpMemory(const QString& picture) {
    Stage stage(QStringLiteral("1033"));
    CMainFrameWnd& frame = stage.Open(picture);
    Driver::Click(QStringLiteral("btnMeiRong"));
    Driver::Click(QStringLiteral("BtnSouShen"));
    QWidget* canvas = frame.Mid().Canvas();
    const QPoint middle = canvas->rect().center();
    Strokes::Draw(*canvas, Strokes::Line(middle - QPoint(60, 20), middle + QPoint(60, 20), 40));
    return CHistoryManager::Instance().m_count == 2 ? PeakOfThisProcess() : 0;
}
