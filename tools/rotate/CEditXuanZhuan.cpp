// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEditXuanZhuan.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "CSliderCtrl.h"
#include "RotateWnd.h"
#include "ToolHost.h"
#include "ValueLabel.h"

namespace {

const QString SlideRenYiXuanZhuan = QStringLiteral("SlideRenYiXuanZhuan");

// What each button does.
struct RotateButton {
    const char16_t* name;
    void (CRotateWnd::*act)();
};
constexpr RotateButton RotateButtons[] = {
    {u"BtnZuoXuanZhuan", &CRotateWnd::TurnLeft},        {u"BtnYouXuanZhuan", &CRotateWnd::TurnRight},
    {u"BtnZuoYouFanZhuan", &CRotateWnd::FlipLeftRight}, {u"BtnShangXiaFanZhuan", &CRotateWnd::FlipTopBottom},
    {u"BtnChongZhi", &CRotateWnd::RestoreEntry},
};

}  // namespace

CEditXuanZhuan::CEditXuanZhuan(ToolHost& host, QWidget* parent) : CToolPanel(parent), m_host(host) {
    Create(QStringLiteral("Edit_XuanZhuan.xml"));
}

// Every message of this tool means the same here: look at the canvas.
void CEditXuanZhuan::OnFrameMessage(const FrameMessage&) {
    Refresh();
}

void CEditXuanZhuan::showEvent(QShowEvent* event) {
    CToolPanel::showEvent(event);
    Refresh();
}

void CEditXuanZhuan::OnNotify(const Notify& notify) {
    if (notify.type == u"windowinit") {
        m_slider = Find<CSliderCtrl>(SlideRenYiXuanZhuan);
        m_value = Find<QLabel>(QStringLiteral("RenYiXuanZhuanVal"));
        m_restore = Find<QAbstractButton>(QStringLiteral("BtnChongZhi"));
        Refresh();
    } else if (notify.type == u"click") {
        OnButton(notify.name);
    } else if (notify.name == SlideRenYiXuanZhuan) {
        OnAngle(notify);
    }
}

CRotateWnd* CEditXuanZhuan::Canvas() const {
    return qobject_cast<CRotateWnd*>(m_host.Canvas());
}

void CEditXuanZhuan::OnButton(const QString& name) {
    CRotateWnd* canvas = Canvas();
    for (const RotateButton& button : RotateButtons) {
        if (!canvas || m_host.IsBusy() || name != QStringView(button.name)) continue;
        m_host.SetCompareMode(0);
        (canvas->*button.act)();
    }
    Refresh();
}

void CEditXuanZhuan::OnAngle(const Notify& notify) {
    if (CRotateWnd* canvas = Canvas()) {
        m_host.SetCompareMode(0);
        if (notify.type == u"valuechanging") canvas->DragAngle(notify.value);
        if (notify.type == u"valuechanged") canvas->SetAngle(notify.value);
    }
    Refresh();
}

void CEditXuanZhuan::Refresh() {
    const CRotateWnd* canvas = Canvas();
    const bool touched = canvas && canvas->Logic().CanRestore();
    const int angle = canvas ? canvas->Logic().State().Angle() : 0;
    if (m_slider && m_slider->value() != angle) m_slider->SetQuietly(angle);
    ShowValue(m_value, touched ? QString::number(angle) : QString(), angle != 0);
    if (m_restore) m_restore->setEnabled(touched);
}
