// SPDX-License-Identifier: GPL-3.0-or-later
#include "ToolTable.h"

#include <algorithm>

#include "AdjustWnd.h"
#include "BasePanelAdjust.h"
#include "CEditJianCai.h"
#include "CEditXiuGaiChiCun.h"
#include "CEditXuanZhuan.h"
#include "CTeXiaoPanel.h"
#include "CutWnd.h"
#include "EffectWnd.h"
#include "RotateWnd.h"
#include "SizeWnd.h"

const ToolRow* ToolTable::Row(int number) const {
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [=](const ToolRow& r) { return r.number == number; });
    return row == m_rows.end() ? nullptr : &*row;
}

ToolTable BuiltInTools() {
    return ToolTable({
        {1, [](QWidget* parent, ToolHost& host) -> CBaseWnd* { return new CAdjustWnd(host, parent); },
         [](QWidget* parent, ToolHost& host) -> CToolPanel* { return new CBasePanelAdjust(host, parent); },
         QStringLiteral("AdjustLayout")},
        {2, [](QWidget* parent, ToolHost& host) -> CBaseWnd* { return new CCutWnd(host, parent); },
         [](QWidget* parent, ToolHost& host) -> CToolPanel* { return new CEditJianCai(host, parent); },
         QStringLiteral("Edit_CaiJian")},
        {3, [](QWidget* parent, ToolHost& host) -> CBaseWnd* { return new CRotateWnd(host, parent); },
         [](QWidget* parent, ToolHost& host) -> CToolPanel* { return new CEditXuanZhuan(host, parent); },
         QStringLiteral("Edit_XuanZhuan")},
        {4, [](QWidget* parent, ToolHost& host) -> CBaseWnd* { return new CSizeWnd(host, parent); },
         [](QWidget* parent, ToolHost& host) -> CToolPanel* { return new CEditXiuGaiChiCun(host, parent); },
         QStringLiteral("Edit_XiuGaiChiCun")},
        {7, [](QWidget* parent, ToolHost& host) -> CBaseWnd* { return new CEffectWnd(host, parent); },
         [](QWidget* parent, ToolHost& host) -> CToolPanel* { return new CTeXiaoPanel(host, parent); },
         QStringLiteral("LeftLayout_TeXiao")},
    });
}
