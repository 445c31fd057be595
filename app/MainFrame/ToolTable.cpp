// SPDX-License-Identifier: GPL-3.0-or-later
#include "ToolTable.h"

#include <algorithm>

#include "CAdjustWnd.h"
#include "CBasePanelAdjust.h"
#include "CBasePanelFrame.h"
#include "CBasePanelText.h"
#include "CChunCaiShowWnd.h"
#include "CCutWnd.h"
#include "CEditJianCai.h"
#include "CEditXiuGaiChiCun.h"
#include "CEditXuanZhuan.h"
#include "CEffectWnd.h"
#include "CEyesBianSePanel.h"
#include "CEyesHeiYanPanel.h"
#include "CEyesHongYanPanel.h"
#include "CEyesZoomPanel.h"
#include "CImageFrameWnd.h"
#include "CMeiRongMeiYan.h"
#include "CMeiRongSouShen.h"
#include "CMoPiWnd.h"
#include "CMouthBeautyPanel.h"
#include "CMouthColorPanel.h"
#include "CMRYiJianMeiYanWnd.h"
#include "CPiFuFuSePanel.h"
#include "CPiFuMBShowWnd.h"
#include "CPiFuMoPiPanel.h"
#include "CPiFuQuBanPanel.h"
#include "CQuDouQBShowWnd.h"
#include "CRotateWnd.h"
#include "CShouLianSSWnd.h"
#include "CSizeWnd.h"
#include "CTeXiaoPanel.h"
#include "CWordWnd.h"
#include "CXiaoChuHYQShowWnd.h"
#include "CXiaoChuHYWnd.h"
#include "CYaChiMBWnd.h"
#include "CYanJingBSShowWnd.h"
#include "CYanJingFDWnd.h"

namespace {

template <class Wnd, class Panel>
ToolRow Tool() {
    return {Wnd::Facts, [](QWidget* parent, ToolHost& host) -> CBaseWnd* { return new Wnd(host, parent); },
            [](QWidget* parent, ToolHost& host) -> CToolPanel* { return new Panel(host, parent); }};
}

}  // namespace

ToolTable BuiltInTools() {
    return ToolTable({
        Tool<CAdjustWnd, CBasePanelAdjust>(),
        Tool<CCutWnd, CEditJianCai>(),
        Tool<CRotateWnd, CEditXuanZhuan>(),
        Tool<CSizeWnd, CEditXiuGaiChiCun>(),
        Tool<CWordWnd, CBasePanelText>(),
        Tool<CImageFrameWnd, CBasePanelFrame>(),
        Tool<CEffectWnd, CTeXiaoPanel>(),
        Tool<CMRYiJianMeiYanWnd, CMeiRongMeiYan>(),
        Tool<CPiFuMBShowWnd, CPiFuFuSePanel>(),
        Tool<CMoPiWnd, CPiFuMoPiPanel>(),
        Tool<CQuDouQBShowWnd, CPiFuQuBanPanel>(),
        Tool<CYanJingFDWnd, CEyesZoomPanel>(),
        Tool<CXiaoChuHYQShowWnd, CEyesHeiYanPanel>(),
        Tool<CYanJingBSShowWnd, CEyesBianSePanel>(),
        Tool<CXiaoChuHYWnd, CEyesHongYanPanel>(),
        Tool<CShouLianSSWnd, CMeiRongSouShen>(),
        Tool<CChunCaiShowWnd, CMouthColorPanel>(),
        Tool<CYaChiMBWnd, CMouthBeautyPanel>(),
    });
}

const ToolRow* ToolTable::Row(int number) const {
    const auto row =
        std::find_if(m_rows.begin(), m_rows.end(), [=](const ToolRow& r) { return r.facts.number == number; });
    return row == m_rows.end() ? nullptr : &*row;
}

int ToolTable::SectionOf(int number) const {
    const ToolRow* row = Row(number);
    return row ? row->facts.section : SectionBasic;
}

int ToolTable::FirstOf(int section) const {
    int first = 0;
    for (const ToolRow& row : m_rows)
        if (row.facts.section == section && (first == 0 || row.facts.number < first)) first = row.facts.number;
    return first;
}

std::vector<int> ToolTable::Behind(const QString& button) const {
    std::vector<int> tools;
    for (const ToolRow& row : m_rows)
        if (button == QLatin1String(row.facts.tab) || button == QLatin1String(row.facts.button))
            tools.push_back(row.facts.number);
    std::sort(tools.begin(), tools.end());
    return tools;
}
