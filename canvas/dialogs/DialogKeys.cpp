// SPDX-License-Identifier: GPL-3.0-or-later
#include "DialogKeys.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QCheckBox>

bool IsEnter(const QKeyEvent& event) {
    return (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) && !event.isAutoRepeat();
}

bool ClickFocusedButton(QWidget& window) {
    auto* button = qobject_cast<QAbstractButton*>(window.focusWidget());
    if (!button || qobject_cast<QCheckBox*>(button) || !button->isEnabled()) return false;
    button->click();
    return true;
}
