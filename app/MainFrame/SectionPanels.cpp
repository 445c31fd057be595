// SPDX-License-Identifier: GPL-3.0-or-later
#include "SectionPanels.h"

CJiChuPanel::CJiChuPanel(QWidget* parent, const ToolTable& tools, ToolHost& host) : CSectionPanel(parent, tools, host) {
    Build(QStringLiteral("JiChuPanel.xml"), QStringLiteral("TabLayoutUI_JiChu"),
          {{QStringLiteral("btnTab1"), 0, {}},
           {QStringLiteral("btnTab2"), 1, {}},
           {QStringLiteral("btnTab3"), 2, {}},
           {QStringLiteral("btnTab4"), 3, {}}});
}

QWidget* CJiChuPanel::CreateControl(const QString&, QWidget* parent, const QString& name) {
    return name == u"BasePanelEdit" ? new CBasePanelEdit(parent, m_tools, m_host) : nullptr;
}

CBasePanelEdit::CBasePanelEdit(QWidget* parent, const ToolTable& tools, ToolHost& host)
    : CSectionPanel(parent, tools, host) {
    Build(QStringLiteral("BasePanelEdit.xml"), QStringLiteral("TabLayoutUI_Edit"),
          {{QStringLiteral("BtnCaiJian"), 0, {}},
           {QStringLiteral("BtnXuanZhuan"), 1, {}},
           {QStringLiteral("BtnXiuGaiChiCun"), 2, {}}});
}

CLeftPanelMeiRong::CLeftPanelMeiRong(QWidget* parent, const ToolTable& tools, ToolHost& host)
    : CSectionPanel(parent, tools, host) {
    Build(QStringLiteral("MeiRongPanel.xml"), QStringLiteral("TabLayoutUI_MeiRong"),
          {{QStringLiteral("BtnMeiYan"), 0, QStringLiteral("8880401")},
           {QStringLiteral("BtnPiFu"), 1, QStringLiteral("8880402")},
           {QStringLiteral("BtnEyes"), 2, QStringLiteral("8880403")},
           {QStringLiteral("BtnSouShen"), 3, QStringLiteral("8880404")},
           {QStringLiteral("BtnMouth"), 4, QStringLiteral("8880405")}});
}

QWidget* CLeftPanelMeiRong::CreateControl(const QString&, QWidget* parent, const QString& name) {
    if (name == u"MeiRong_PiFu") return new CMeiRongPiFu(parent, m_tools, m_host);
    if (name == u"MeiRong_Eyes") return new CMeiRongEyes(parent, m_tools, m_host);
    if (name == u"MeiRong_Mouth") return new CMeiRongMouth(parent, m_tools, m_host);
    return nullptr;
}

CMeiRongPiFu::CMeiRongPiFu(QWidget* parent, const ToolTable& tools, ToolHost& host)
    : CSectionPanel(parent, tools, host) {
    Build(
        QStringLiteral("MeiRong_PiFu.xml"), QStringLiteral("MeiRongPanelPiFuList"),
        {{QStringLiteral("BtnFuSe"), 0, {}}, {QStringLiteral("BtnMoPi"), 1, {}}, {QStringLiteral("BtnQuBan"), 2, {}}});
}

CMeiRongEyes::CMeiRongEyes(QWidget* parent, const ToolTable& tools, ToolHost& host)
    : CSectionPanel(parent, tools, host) {
    Build(QStringLiteral("MeiRong_Eyes.xml"), QStringLiteral("MeiRongPanelEyesList"),
          {{QStringLiteral("BtnEyesZoom"), 0, {}},
           {QStringLiteral("BtnEyesHeiYan"), 1, {}},
           {QStringLiteral("BtnEyesBianSe"), 2, {}},
           {QStringLiteral("BtnEyesHongYan"), 3, {}}});
}

CMeiRongMouth::CMeiRongMouth(QWidget* parent, const ToolTable& tools, ToolHost& host)
    : CSectionPanel(parent, tools, host) {
    Build(QStringLiteral("MeiRong_Mouth.xml"), QStringLiteral("MeiRongPanelMouthList"),
          {{QStringLiteral("BtnMouthColor"), 0, {}}, {QStringLiteral("BtnMouthBeauty"), 1, {}}});
}
