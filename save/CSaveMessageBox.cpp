// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSaveMessageBox.h"

#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractButton>

#include "DialogKeys.h"

CSaveMessageBox::CSaveMessageBox() {
    setObjectName(QStringLiteral("SaveMessageBox"));
    Create(QStringLiteral("SaveDlg.xml"));
    if (auto* save = Find<QAbstractButton>(QStringLiteral("BtnSave"))) save->setFocus();
}

void CSaveMessageBox::OnNotify(const Notify& notify) {
    if (notify.Is(u"click", u"BtnSave")) EndModal(ResultYes);
    if (notify.Is(u"click", u"BtnCancel")) EndModal(ResultNo);
    if (notify.Is(u"click", u"BtnClose")) close();
}

void CSaveMessageBox::keyPressEvent(QKeyEvent* event) {
    if (!IsEnter(*event) || !ClickFocusedButton(*this)) CXMLWnd::keyPressEvent(event);
}

int AskSaveFirst(QWidget* owner) {
    const QPointer<CSaveMessageBox> box = new CSaveMessageBox;
    const int result = box->ShowModal(owner, QStringLiteral("SaveDlg"));
    delete box;
    return result;
}
