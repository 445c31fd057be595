// SPDX-License-Identifier: GPL-3.0-or-later
#include "CPopupWnd.h"

#include <algorithm>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QAbstractButton>

CPopupWnd::CPopupWnd(QAbstractButton* option) : CXMLWnd(option), m_option(option) {
    setWindowFlags(Qt::Popup | Qt::FramelessWindowHint);
    // A press on the option while the window is open closes it, and must not open it again.
    setAttribute(Qt::WA_NoMouseReplay);
}

void CPopupWnd::OpenUnder(QSize size, int fromRight) {
    OpenAt({fromRight ? m_option->width() - fromRight : 0, m_option->height()}, size);
}

void CPopupWnd::OpenAbove(QSize size, int fromRight) {
    OpenAt({fromRight ? m_option->width() - fromRight : 0, -size.height()}, size);
}

void CPopupWnd::OpenAt(QPoint corner, QSize size) {
    QRect place(m_option->mapToGlobal(corner), size);
    if (const QScreen* screen = m_option->screen()) {
        const QRect desk = screen->availableGeometry();
        place.moveLeft(std::max(desk.left(), std::min(place.left(), desk.right() - place.width() + 1)));
        place.moveTop(std::max(desk.top(), std::min(place.top(), desk.bottom() - place.height() + 1)));
    }
    setFixedSize(size);
    move(place.topLeft());
    m_option->setChecked(true);
    show();
    activateWindow();
}

void CPopupWnd::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        CXMLWnd::keyPressEvent(event);
}

void CPopupWnd::hideEvent(QHideEvent* event) {
    m_option->setChecked(false);
    CXMLWnd::hideEvent(event);
}

bool CPopupWnd::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate) hide();
    return CXMLWnd::event(event);
}
