// SPDX-License-Identifier: GPL-3.0-or-later
#include "CFramePage.h"

#include <utility>

CFramePage::CFramePage(QWidget* parent, const QString& skin, MakeControl makeControl)
    : CXMLWnd(parent), m_makeControl(std::move(makeControl)) {
    Create(skin);
}

QWidget* CFramePage::CreateControl(const QString& className, QWidget* parent, const QString& name) {
    return m_makeControl(className, parent, name);
}
