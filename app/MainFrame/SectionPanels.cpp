// SPDX-License-Identifier: GPL-3.0-or-later
#include "SectionPanels.h"

CJiChuPanel::CJiChuPanel(QWidget* parent, const ToolTable& tools, ToolHost& host) : CSectionPanel(parent, tools, host) {
    Build(QStringLiteral("JiChuPanel.xml"), QStringLiteral("TabLayoutUI_JiChu"),
          {{QStringLiteral("btnTab1"), 0, {1}, {}},
           {QStringLiteral("btnTab2"), 1, {2, 3, 4}, {}},
           {QStringLiteral("btnTab3"), 2, {5}, {}},
           {QStringLiteral("btnTab4"), 3, {6}, {}}});
}

QWidget* CJiChuPanel::CreateControl(const QString&, QWidget* parent, const QString& name) {
    return name == u"BasePanelEdit" ? new CBasePanelEdit(parent, m_tools, m_host) : nullptr;
}

CBasePanelEdit::CBasePanelEdit(QWidget* parent, const ToolTable& tools, ToolHost& host)
    : CSectionPanel(parent, tools, host) {
    Build(QStringLiteral("BasePanelEdit.xml"), QStringLiteral("TabLayoutUI_Edit"),
          {{QStringLiteral("BtnCaiJian"), 0, {2}, {}},
           {QStringLiteral("BtnXuanZhuan"), 1, {3}, {}},
           {QStringLiteral("BtnXiuGaiChiCun"), 2, {4}, {}}});
}

CLeftPanelMeiRong::CLeftPanelMeiRong(QWidget* parent, const ToolTable& tools, ToolHost& host)
    : CSectionPanel(parent, tools, host) {
    Build(QStringLiteral("MeiRongPanel.xml"), QStringLiteral("TabLayoutUI_MeiRong"),
          {{QStringLiteral("BtnMeiYan"), 0, {8}, QStringLiteral("8880401")},
           {QStringLiteral("BtnPiFu"), 1, {9, 10, 11}, QStringLiteral("8880402")},
           {QStringLiteral("BtnEyes"), 2, {12, 13, 14, 15}, QStringLiteral("8880403")},
           {QStringLiteral("BtnSouShen"), 3, {16}, QStringLiteral("8880404")},
           {QStringLiteral("BtnMouth"), 4, {17, 18}, QStringLiteral("8880405")}});
}
