// SPDX-License-Identifier: GPL-3.0-or-later
#include "ValueLabel.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>

namespace {

// Style sheets that select by a property look again only when they are asked to.
void Repolish(QWidget* widget) {
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
    widget->update();
}

}  // namespace

void ShowValue(QLabel* label, const QString& text, bool changed) {
    if (!label) return;
    label->setText(text);
    if (label->property("changed").toBool() == changed) return;
    label->setProperty("changed", changed);
    Repolish(label);
}
