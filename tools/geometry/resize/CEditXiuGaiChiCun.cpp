// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEditXiuGaiChiCun.h"

#include <QtWidgets/QAbstractButton>

#include "CSizeWnd.h"
#include "KeptRatio.h"

namespace {

constexpr QSize Most(CSizeLogic::MostSide, CSizeLogic::MostSide);

}  // namespace

CEditXiuGaiChiCun::CEditXiuGaiChiCun(ToolHost& host, QWidget* parent) : CSizePanel(host, parent) {
    Create(QLatin1String(ResizeTool.skin));
}

void CEditXiuGaiChiCun::OnControl(const Notify& notify) {
    if (notify.type == u"windowinit") {
        m_keep = Find<QAbstractButton>(QStringLiteral("OptBaoChi"));
        m_swap = Find<QAbstractButton>(QStringLiteral("BtnJianHuanChiCun"));
        Keep(true);  // as people expect of a photo
    } else if (notify.Is(u"click", u"OptBaoChi")) {
        LeaveCompare();
        Keep(!m_keepRatio);
        if (m_keepRatio && CanvasOf<CSizeWnd>())
            ShowSize(SizeByWidth(Correct(Side::Width, CSizeLogic::LeastSide, CSizeLogic::MostSide), m_ratio, Most));
    } else if (notify.Is(u"click", u"BtnJianHuanChiCun")) {
        OnSwap();
    }
}

void CEditXiuGaiChiCun::Keep(bool keep) {
    m_keepRatio = keep;
    if (m_keep) m_keep->setChecked(keep);
    if (m_swap) m_swap->setEnabled(!keep);
}

void CEditXiuGaiChiCun::Refresh() {
    const CSizeWnd* canvas = CanvasOf<CSizeWnd>();
    const QSize size = canvas ? canvas->Logic().ImageSize() : QSize();
    if (size.isEmpty()) return ClearSize();
    m_ratio = static_cast<double>(size.height()) / size.width();
    ShowSize(size);
}

void CEditXiuGaiChiCun::OnSideTyped(Side side) {
    if (!CanvasOf<CSizeWnd>()) return ClearSize();
    const int value = Correct(side, CSizeLogic::LeastSide, CSizeLogic::MostSide);
    if (m_keepRatio)
        ShowSizeByTyped(side,
                        side == Side::Width ? SizeByWidth(value, m_ratio, Most) : SizeByHeight(value, m_ratio, Most));
}

void CEditXiuGaiChiCun::OnSwap() {
    const QSize size = Values();
    if (m_keepRatio || size.isEmpty()) return;
    LeaveCompare();
    ShowSize(size.transposed());
}

void CEditXiuGaiChiCun::OnOk() {
    const QSize size = Values();
    CSizeWnd* canvas = CanvasOf<CSizeWnd>();
    if (canvas && !size.isEmpty()) canvas->ApplySize(size.width(), size.height());
}
