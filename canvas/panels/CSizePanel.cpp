// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSizePanel.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QPushButton>

#include "CNumberEdit.h"

namespace {

const QString EditKuanDu = QStringLiteral("EditKuanDu");
const QString EditGaoDu = QStringLiteral("EditGaoDu");

}  // namespace

CNumberEdit* CSizePanel::Edit(Side side) const {
    return side == Side::Width ? m_width : m_height;
}

int CSizePanel::Value(Side side) const {
    const CNumberEdit* edit = Edit(side);
    return edit ? edit->Value() : 0;
}

QSize CSizePanel::Values() const {
    return {Value(Side::Width), Value(Side::Height)};
}

void CSizePanel::ShowSide(Side side, int value) {
    if (CNumberEdit* edit = Edit(side)) edit->ShowValue(value);
}

void CSizePanel::ShowSizeByTyped(Side typed, QSize size) {
    const bool width = typed == Side::Width;
    const bool grows = Value(typed) < (width ? size.width() : size.height());
    ShowSide(width ? Side::Height : Side::Width, width ? size.height() : size.width());
    if (!grows) return ShowSize(size);
    m_unsettled = size;
}

void CSizePanel::Settle() {
    if (m_unsettled) ShowSize(*m_unsettled);
}

void CSizePanel::ShowSize(QSize size) {
    m_unsettled.reset();
    ShowSide(Side::Width, size.width());
    ShowSide(Side::Height, size.height());
}

void CSizePanel::ClearSize() {
    m_unsettled.reset();
    for (CNumberEdit* edit : {m_width, m_height})
        if (edit) edit->clear();
}

int CSizePanel::Correct(Side side, int least, int most) {
    CNumberEdit* edit = Edit(side);
    if (!edit) return least;
    const bool empty = edit->text().isEmpty();
    const int value = std::clamp(edit->Value(), least, std::max(least, most));
    edit->ShowValue(value);
    if (empty) edit->selectAll();
    return value;
}

void CSizePanel::OnNotify(const Notify& notify) {
    if (notify.type == u"windowinit") {
        m_width = Find<CNumberEdit>(EditKuanDu);
        m_height = Find<CNumberEdit>(EditGaoDu);
        OnControl(notify);
    } else if (notify.type == u"textchanged" && (notify.name == EditKuanDu || notify.name == EditGaoDu)) {
        LeaveCompare();
        m_unsettled.reset();
        OnSideTyped(notify.name == EditKuanDu ? Side::Width : Side::Height);
    } else if (notify.type == u"killfocus") {
        Settle();
    } else if (notify.type == u"click" && (notify.name == u"BtnOK" || notify.name == u"BtnOk")) {
        LeaveCompare();
        Settle();
        OnOk();
    } else if (notify.Is(u"click", u"BtnCancel")) {
        LeaveCompare();
        OnCancel();
    } else {
        OnControl(notify);
    }
}

// Enter on a button is a click on that button.
void CSizePanel::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter) {
        auto* button = qobject_cast<QAbstractButton*>(focusWidget());
        if (button && button->hasFocus() && !button->isCheckable()) return button->click();
        LeaveCompare();
        Settle();
        return OnOk();
    }
    // Esc first ends compare, as everywhere.
    if (event->key() == Qt::Key_Escape && Host().CompareMode() == 0) return OnCancel();
    CToolPanel::keyPressEvent(event);
}
