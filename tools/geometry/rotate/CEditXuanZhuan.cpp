// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEditXuanZhuan.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "CRotateWnd.h"
#include "CSliderCtrl.h"
#include "ValueLabel.h"

namespace {

const QString SlideRenYiXuanZhuan = QStringLiteral("SlideRenYiXuanZhuan");

// What each button of an operation does.
struct RotateButton {
    const char16_t* name;
    void (CRotateLogic::*turn)();
};
constexpr RotateButton RotateButtons[] = {
    {u"BtnZuoXuanZhuan", &CRotateLogic::TurnLeft},
    {u"BtnYouXuanZhuan", &CRotateLogic::TurnRight},
    {u"BtnZuoYouFanZhuan", &CRotateLogic::FlipLeftRight},
    {u"BtnShangXiaFanZhuan", &CRotateLogic::FlipTopBottom},
};

}  // namespace

CEditXuanZhuan::CEditXuanZhuan(ToolHost& host, QWidget* parent) : CToolPanel(host, parent) {
    Create(QLatin1String(RotateTool.skin));
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

void CEditXuanZhuan::OnButton(const QString& name) {
    CRotateWnd* canvas = CanvasOf<CRotateWnd>();
    if (canvas && !Host().IsBusy()) {
        LeaveCompare();
        for (const RotateButton& button : RotateButtons)
            if (name == QStringView(button.name)) canvas->Turn(button.turn);
        if (name == u"BtnChongZhi") canvas->RestoreEntry();
    }
    Refresh();
}

void CEditXuanZhuan::OnAngle(const Notify& notify) {
    if (CRotateWnd* canvas = CanvasOf<CRotateWnd>()) {
        LeaveCompare();
        if (notify.type == u"valuechanging") canvas->DragAngle(notify.value);
        if (notify.type == u"valuechanged") canvas->SetAngle(notify.value);
    }
    Refresh();
}

void CEditXuanZhuan::Refresh() {
    const CRotateWnd* canvas = CanvasOf<CRotateWnd>();
    const bool touched = canvas && canvas->Logic().CanRestore();
    const int angle = canvas ? canvas->Logic().State().Angle() : 0;
    if (m_slider && m_slider->value() != angle) m_slider->SetQuietly(angle);
    ShowValue(m_value, touched ? QString::number(angle) : QString(), angle != 0);
    if (m_restore) m_restore->setEnabled(touched);
}
