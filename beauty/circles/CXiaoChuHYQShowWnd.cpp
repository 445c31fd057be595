// SPDX-License-Identifier: GPL-3.0-or-later
#include "CXiaoChuHYQShowWnd.h"

#include <new>
#include <QtGui/QPainter>

#include "WithinMemory.h"

bool CXiaoChuHYQShowWnd::BeginStroke(const StrokePoint& at) {
    Follow(at);
    bool begun = false;
    WithinMemory(Host(), [&] { begun = m_logic.BeginStroke(PixelOf(at)); });
    if (!begun) return false;
    HideMark();
    ShowMark();
    Redraw(Paint::Now);
    return true;
}

// A stamp that finds no memory is left out; the mark needs none.
void CXiaoChuHYQShowWnd::MoveStroke(const StrokePoint& at) {
    Follow(at);
    QRect erased;
    try {
        erased = m_logic.MoveStroke(PixelOf(at));
    } catch (const std::bad_alloc&) {
    }
    const QRect changed = erased | ShowMark();
    if (!changed.isEmpty()) RedrawPart(changed);
}

void CXiaoChuHYQShowWnd::EndStroke(StrokeEnd how) {
    if (how == StrokeEnd::Cancelled) m_logic.DropMark();
    if (!m_logic.Mark().empty())
        RunRepair(m_logic.IsQuick(), [&](CObjProgress* progress) { return m_logic.EndStroke(progress).has_value(); });
    HideMark();
    Redraw(Paint::Now);
    if (m_logic.HasWork()) Record();
    Replay();
}

void CXiaoChuHYQShowWnd::OnViewChanged(ViewChange change) {
    CRepairWnd::OnViewChanged(change);
    HideMark();
    ShowMark();
}

void CXiaoChuHYQShowWnd::HideMark() {
    m_mark = {};
    m_drawn = 0;
}

// Draws the discs that are new; the rectangle of the client that they take.
QRect CXiaoChuHYQShowWnd::ShowMark() {
    const std::vector<QRect>& discs = m_logic.Mark();
    if (m_drawn == discs.size()) return {};
    if (m_mark.isNull()) {
        m_mark = QImage(PhysicalClient(), QImage::Format_ARGB32_Premultiplied);
        m_mark.fill(Qt::transparent);
        m_drawn = 0;
    }
    QPainter painter(&m_mark);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgba(CXiaoChuHYQLogic::MarkColour));
    QRectF changed;
    for (; m_drawn < discs.size(); ++m_drawn) {
        const QRectF disc = Geometry().ToClient(QRectF(discs[m_drawn]));
        painter.drawEllipse(disc);
        changed |= disc;
    }
    return changed.toAlignedRect();
}

void CXiaoChuHYQShowWnd::PaintOverlay(QPainter& painter, const QRect& place) {
    if (m_mark.isNull()) return;
    painter.save();
    painter.setClipRect(place, Qt::IntersectClip);
    painter.drawImage(QPoint(0, 0), m_mark);
    painter.restore();
}
