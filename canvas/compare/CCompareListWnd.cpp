// SPDX-License-Identifier: GPL-3.0-or-later
#include "CCompareListWnd.h"

#include <QtWidgets/QAbstractButton>

CCompareListWnd::CCompareListWnd(QAbstractButton* option) : CPopupWnd(option) {
    Create(QStringLiteral("CompareListWnd.xml"));
}

void CCompareListWnd::Open() {
    OpenUnder(sizeHint(), 0);
    if (auto* row = Find<QAbstractButton>(QStringLiteral("ElementCompare"))) row->setFocus();
}

void CCompareListWnd::OnNotify(const Notify& notify) {
    if (!notify.Is(u"click", u"ElementCompare")) return;
    hide();
    emit SideBySideChosen();
}
