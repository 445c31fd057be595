// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <new>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <utility>

#include "CWordLogic.h"
#include "Graphics.h"
#include "PC_Dsp.h"
#include "Truncate.h"

// The part of CWordLogic that the view and the mouse see.

namespace {

// Within so many logical pixels a line through the picture's middle holds a text's centre.
constexpr double GuideReach = 6.0;
constexpr int SnapDegrees = 15;

QPointF CentreOf(const StringParams& text) {
    float x = 0, y = 0;
    double width = 0, height = 0;
    text.GetPosition(&x, &y);
    text.GetBoxSize(&width, &height);
    return {x + width * 0.5, y + height * 0.5};
}

double SquareOf(QPoint by) {
    return double(by.x()) * by.x() + double(by.y()) * by.y();
}

}  // namespace

// ---- the view

WordBox CWordLogic::BoxOf(int index) const {
    const ViewGeometry geometry = Geometry();
    const StringParams& text = Text(index);
    float x = 0, y = 0;
    double width = 0, height = 0;
    text.GetPosition(&x, &y);
    text.GetBoxSize(&width, &height);
    const double zoom = geometry.Zoom();
    const QPoint offset = geometry.ViewOffset();
    return {{Truncate(x * zoom + offset.x()), Truncate(y * zoom + offset.y()), Truncate(width * zoom),
             Truncate(height * zoom)},
            Truncate(text.GetAngle())};
}

WordButtons CWordLogic::ButtonsOf(int index) const {
    return WordButtons::Of(BoxOf(index), QRect(QPoint(0, 0), Geometry().Client()), m_ratio);
}

QRect CWordLogic::InkOnScreen(int index) const {
    return Geometry().ToClient(Text(index).Ink()).toAlignedRect().adjusted(-1, -1, 1, 1);
}

void CWordLogic::PaintTexts(QPainter& painter, const QRect& area) const {
    const ViewGeometry geometry = Geometry();
    const std::lock_guard lock(m_textLock);
    QRect inked;
    for (const StringParams& text : m_state.texts) inked |= geometry.ToClient(text.Ink()).toAlignedRect();
    const QRect visible = area.intersected(geometry.ScreenRect()).intersected(inked);
    if (visible.isEmpty()) return;
    painter.save();
    painter.setClipRect(visible);
    if (geometry.Zoom() > 1.0)
        PaintEnlarged(painter, geometry, visible);
    else
        PaintReduced(painter, geometry, visible);
    painter.restore();
}

void CWordLogic::PaintReduced(QPainter& painter, const ViewGeometry& geometry, const QRect& area) const {
    const QPoint offset = geometry.ViewOffset();
    Graphics graphics(painter);
    for (StringParams text : m_state.texts) {
        if (!geometry.ToClient(text.Ink()).intersects(area)) continue;
        text.SetOffset(offset.x(), offset.y());
        text.Draw(graphics, geometry.Zoom());
    }
}

// Enlarged, the picture shows its pixels; so do the texts, which are drawn at the picture's size and then enlarged like
// it.
void CWordLogic::PaintEnlarged(QPainter& painter, const ViewGeometry& geometry, const QRect& area) const {
    constexpr int taps = 3;  // what enlarging reads around a pixel
    const QRectF source(geometry.ToImage(area.topLeft()), QSizeF(area.size()) / geometry.Zoom());
    const QRect part = source.toAlignedRect().adjusted(-taps, -taps, taps, taps);
    try {
        Bitmap layer(part.width(), part.height());
        {
            Graphics graphics(layer);
            for (StringParams text : m_state.texts) {
                if (!text.Ink().intersects(part)) continue;
                text.SetOffset(-part.x(), -part.y());
                text.Draw(graphics, 1.0);
            }
        }
        Bitmap shown = Bitmap::Uninitialised(area.width(), area.height());
        PC_Dsp::ResampleRect(layer, source.x() - part.x(), source.y() - part.y(), source.width(), source.height(),
                             shown, ResampleQuality::Best);
        painter.drawImage(area.topLeft(),
                          QImage(shown.Pixels(), shown.Width(), shown.Height(), shown.Stride(), QImage::Format_ARGB32));
    } catch (const std::bad_alloc&) {
        PaintReduced(painter, geometry, area);  // a paint can't fail; the shapes are the same, only sharper
    }
}

void CWordLogic::DrawTexts(Bitmap& reduced, double scale) const {
    const std::lock_guard lock(m_textLock);
    if (m_state.texts.empty() || !reduced) return;
    Graphics graphics(reduced);
    for (StringParams text : m_state.texts) {
        text.SetOffset(0, 0);
        text.Draw(graphics, scale);
    }
}

// ---- hit test

bool CWordLogic::IsOnBody(int index, QPoint at) const {
    const WordBox box = BoxOf(index);
    return box.rect.width() > 0 && IsInTurned(box.rect, box.angle, box.Centre(), at);
}

int CWordLogic::BodyAt(QPoint at) const {
    int winner = None;
    for (int i = 0; i < Count(); ++i)
        if (IsOnBody(i, at) && (winner == None || Text(i).order > Text(winner).order)) winner = i;
    return winner;
}

WordHit CWordLogic::HitAt(QPoint at) const {
    const WordHit button = HasSelected() ? ButtonsOf(m_state.selected).HitTest(at) : WordHit::Nothing;
    const int body = BodyAt(at);
    // A button gives way to a text that stands higher than its own.
    const bool covered = button != WordHit::Nothing && body != None && Text(body).order > Text(m_state.selected).order;
    if (button != WordHit::Nothing && !covered) return button;
    return body == None ? WordHit::Nothing : WordHit::Body;
}

bool CWordLogic::HoverAt(QPoint at) {
    const int before = std::exchange(m_hover, HasSelected() ? None : BodyAt(at));
    return m_hover != before;
}

// ---- press, move, release

WordHit CWordLogic::Press(QPoint at) {
    m_drag = {};
    m_drag.last = at;
    m_drag.before = m_state;
    m_drag.hit = HitAt(at);
    m_hover = None;
    const bool onButton = m_drag.hit == WordHit::DeleteButton || m_drag.hit == WordHit::RotateButton;
    const int winner = onButton ? m_state.selected : BodyAt(at);
    if (winner == None) {
        m_state.selected = None;
        return m_drag.hit;
    }
    const bool atCorner = onButton && ButtonsOf(winner).rotateAtCorner;
    {
        const std::lock_guard lock(m_textLock);
        Raise(winner);
    }
    if (m_state.texts != m_drag.before.texts) Edit([](Texts&) {});
    if (m_drag.hit == WordHit::RotateButton) {
        // A button away from its corner is where the turn begins; at the corner the corner itself is.
        const QPointF corner = BoxOf(m_state.selected).Corners()[2];
        BeginTurn(atCorner ? QPoint(Truncate(corner.x()), Truncate(corner.y())) : at);
        if (atCorner) {
            const QSize box = BoxOf(m_state.selected).rect.size();
            m_drag.distanceSquare =
                std::max(1.0, box.width() * box.width() * 0.25 + box.height() * box.height() * 0.25);
        }
    }
    float x = 0, y = 0;
    SelectedText().GetPosition(&x, &y);
    m_drag.free = {x, y};
    return m_drag.hit;
}

void CWordLogic::BeginTurn(QPoint at) {
    const WordBox box = BoxOf(m_state.selected);
    m_drag.angleOffset = BearingOf(box.Centre(), at) - box.angle;
    m_drag.distanceSquare = std::max(1.0, SquareOf(at - box.Centre()));
    m_drag.fontSize = Truncate(SelectedText().GetFontSize());
}

bool CWordLogic::MoveTo(QPoint at, bool snap) {
    const bool moves = m_drag.hit == WordHit::Body || m_drag.hit == WordHit::RotateButton;
    if (!HasSelected() || at == m_drag.last || !moves) {
        m_drag.last = at;
        return false;
    }
    const StringParams before = SelectedText();
    if (m_drag.hit == WordHit::RotateButton)
        TurnTo(at, snap);
    else
        DragTo(at);
    m_drag.last = at;
    if (SelectedText() == before) return false;
    Edit([](Texts&) {});
    return true;
}

void CWordLogic::TurnTo(QPoint at, bool snap) {
    const QPoint centre = BoxOf(m_state.selected).Centre();
    int angle = BearingOf(centre, at) - m_drag.angleOffset;
    if (snap) angle = Truncate(std::round(double(angle) / SnapDegrees)) * SnapDegrees;
    const double size = m_drag.fontSize * std::sqrt(SquareOf(at - centre) / m_drag.distanceSquare);
    const std::lock_guard lock(m_textLock);
    SelectedText().SetAngle(angle);
    SelectedText().SetFontSize(static_cast<float>(Truncate(size)));
}

void CWordLogic::DragTo(QPoint at) {
    const double zoom = Geometry().Zoom();
    m_drag.free += QPointF(at - m_drag.last) / zoom;
    const std::lock_guard lock(m_textLock);
    StringParams& text = SelectedText();
    text.SetPosition(static_cast<float>(m_drag.free.x()), static_cast<float>(m_drag.free.y()));
    const QPointF away = QPointF(text.GetCanvasWidth() * 0.5, text.GetCanvasHeight() * 0.5) - CentreOf(text);
    m_drag.atMiddleX = std::abs(away.x()) * zoom <= GuideReach * m_ratio;
    m_drag.atMiddleY = std::abs(away.y()) * zoom <= GuideReach * m_ratio;
    text.SetPosition(static_cast<float>(m_drag.free.x() + (m_drag.atMiddleX ? away.x() : 0.0)),
                     static_cast<float>(m_drag.free.y() + (m_drag.atMiddleY ? away.y() : 0.0)));
}

CWordLogic::Released CWordLogic::Release(QPoint at) {
    const Drag drag = std::exchange(m_drag, {});
    if (HasSelected() && drag.hit == WordHit::DeleteButton &&
        ButtonsOf(m_state.selected).HitTest(at) == WordHit::DeleteButton)
        return DeleteSelected() ? Released::Deleted : Released::Nothing;
    if (drag.before.texts == m_state.texts) return Released::Nothing;
    CommitStep();
    return Released::Changed;
}

void CWordLogic::CancelPress() {
    const Drag drag = std::exchange(m_drag, {});
    const std::lock_guard lock(m_textLock);
    m_state = drag.before;
}
