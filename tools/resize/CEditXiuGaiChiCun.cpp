// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEditXiuGaiChiCun.h"

#include <QtWidgets/QAbstractButton>

#include "KeptSize.h"
#include "SizeWnd.h"
#include "ToolHost.h"

CEditXiuGaiChiCun::CEditXiuGaiChiCun(ToolHost& host, QWidget* parent) : CSizePanel(host, parent) {
    Create(QStringLiteral("Edit_XiuGaiChiCun.xml"));
}

CSizeWnd* CEditXiuGaiChiCun::Canvas() const {
    return qobject_cast<CSizeWnd*>(Host().Canvas());
}

// Every message of this tool means the same here: the picture may be another.
void CEditXiuGaiChiCun::OnFrameMessage(const FrameMessage& message) {
    const auto* view = std::get_if<ViewNotifyMessage>(&message);
    if (!view || view->code == CSizeWnd::SizeCode) ShowPicture();
}

void CEditXiuGaiChiCun::showEvent(QShowEvent* event) {
    CSizePanel::showEvent(event);
    ShowPicture();
}

void CEditXiuGaiChiCun::OnControl(const Notify& notify) {
    if (notify.type == u"windowinit") {
        m_keep = Find<QAbstractButton>(QStringLiteral("OptBaoChi"));
        m_swap = Find<QAbstractButton>(QStringLiteral("BtnJianHuanChiCun"));
    } else if (notify.Is(u"click", u"OptBaoChi")) {
        OnKeep();
    } else if (notify.Is(u"click", u"BtnJianHuanChiCun")) {
        OnSwap();
    }
}

void CEditXiuGaiChiCun::ShowPicture() {
    int width = 0, height = 0;
    if (CSizeWnd* canvas = Canvas()) canvas->GetImageSize(&width, &height);
    if (width < 1 || height < 1) return ClearSize();
    m_aspect = static_cast<double>(width) / height;
    ShowSize({width, height});
}

void CEditXiuGaiChiCun::OnSideTyped(Side side) {
    if (!Canvas()) return ClearSize();
    const int value = Correct(side, CSizeLogic::LeastSide, CSizeLogic::MostSide);
    if (m_keepRatio)
        ShowSizeByTyped(side, side == Side::Width ? KeptByWidth(value, m_aspect) : KeptByHeight(value, m_aspect));
}

void CEditXiuGaiChiCun::OnKeep() {
    LeaveCompare();
    m_keepRatio = !m_keepRatio;
    if (m_keep) m_keep->setChecked(m_keepRatio);
    if (m_swap) m_swap->setEnabled(!m_keepRatio);
    if (!m_keepRatio || !Canvas()) return;
    ShowSize(KeptByWidth(Correct(Side::Width, CSizeLogic::LeastSide, CSizeLogic::MostSide), m_aspect));
}

void CEditXiuGaiChiCun::OnSwap() {
    const QSize size = Values();
    if (m_keepRatio || size.isEmpty()) return;
    LeaveCompare();
    ShowSize(size.transposed());
}

void CEditXiuGaiChiCun::OnOk() {
    const QSize size = Values();
    CSizeWnd* canvas = Canvas();
    if (canvas && !size.isEmpty()) canvas->ApplySize(size.width(), size.height());
}

void CEditXiuGaiChiCun::OnCancel() {
    ShowPicture();
}
