// SPDX-License-Identifier: GPL-3.0-or-later
#include "CPenWnd.h"

#include <QtGui/QKeyEvent>

#include "BrushNews.h"
#include "Truncate.h"

QPoint CPenWnd::PixelOf(const StrokePoint& at) {
    return {Truncate(at.client.x()), Truncate(at.client.y())};
}

void CPenWnd::SetErase(bool erase) {
    m_erase = erase;
    m_pen.SetErase(erase);
}

void CPenWnd::LayoutChildren(int cx, int cy) {
    CPictureWnd::LayoutChildren(cx, cy);
    m_pen.SetScreenScale(PixelRatio());
}

void CPenWnd::Follow(const StrokePoint& at) {
    m_pen.SetErase(m_erase || at.modifiers.testFlag(Qt::AltModifier));
}

void CPenWnd::keyPressEvent(QKeyEvent* event) {
    using Slider = BrushStepNews::Slider;
    switch (event->key()) {
        case Qt::Key_BracketLeft:
        case Qt::Key_BracketRight:
        case Qt::Key_BraceLeft:
        case Qt::Key_BraceRight: {
            const bool up = event->key() == Qt::Key_BracketRight || event->key() == Qt::Key_BraceRight;
            const bool effect = event->modifiers().testFlag(Qt::ShiftModifier);
            return NotifyView(PanelNews(BrushStepNews{effect ? Slider::Effect : Slider::Pen, up ? 1 : -1}));
        }
        default:
            CPictureWnd::keyPressEvent(event);
    }
}
