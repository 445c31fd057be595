// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMaskWnd.h"

#include <QtGui/QPainter>

CMaskWnd::CMaskWnd(QWidget* frame) : CXMLWnd(frame) {
    setObjectName(QStringLiteral("MaskWnd"));
    Create(QStringLiteral("MaskWnd.xml"));
    setEnabled(false);
    hide();
    frame->installEventFilter(this);
}

void CMaskWnd::ShowMask(bool show) {
    m_users += show ? 1 : -1;
    if (show) {
        setGeometry(parentWidget()->rect());
        if (m_users == 1) raise();
    }
    setVisible(m_users > 0);
}

bool CMaskWnd::eventFilter(QObject* object, QEvent* event) {
    if (object == parentWidget() && event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
    return CXMLWnd::eventFilter(object, event);
}

void CMaskWnd::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), QColor(32, 38, 46, 115));
}
