// SPDX-License-Identifier: GPL-3.0-or-later
#include "CTeXiaoPanel.h"

#include "CEffectLogic.h"
#include "EffectCatalogue.h"

namespace {

class EffectTable : public LookTable {
  public:
    EffectTable() {
        for (const EffectCategory& category : ::EffectCategories())
            m_categories.push_back({category.number, category.List(), category.ListClass(), category.Button(),
                                    category.coverIndex, category.CoverFile(), QLatin1String(category.clickCode)});
    }
    const std::vector<LookCategory>& Categories() const override { return m_categories; }
    std::vector<int> LooksOf(int category) const override { return EffectsOfCategory(category); }
    LookInfo Info(int look) const override {
        const CEffectInfo info = GetEffectInfo(look);
        return {info.Name, info.Colour, CLookListPanel::OverlayAttributes(info.Thumbnail)};
    }
    bool Render(Bitmap& thumbnail, int look) const override { return CEffectLogic::RenderThumbnail(&thumbnail, look); }

  private:
    std::vector<LookCategory> m_categories;
};

const LookTable& Effects() {
    static const EffectTable table;
    return table;
}

}  // namespace

CTeXiaoPanel::CTeXiaoPanel(ToolHost& host, QWidget* parent)
    : CLookListPanel(host, EffectTool, Effects(), QStringLiteral("TabLayoutUI_TeXiao"), parent) {
    ReadUserLooks();
    Create(QLatin1String(EffectTool.skin));
}
