// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMeiRongMeiYan.h"

#include "BeautyLooks.h"
#include "CMRYiJianMeiYanLogic.h"

namespace {

constexpr int OnlyCategory = 1;

class BeautyTable : public LookTable {
  public:
    const std::vector<LookCategory>& Categories() const override { return m_categories; }
    std::vector<int> LooksOf(int category) const override {
        std::vector<int> looks;
        for (int preset = 1; category == OnlyCategory && preset <= BeautyLooks::Count; ++preset)
            looks.push_back(preset);
        return looks;
    }
    LookInfo Info(int look) const override {
        return {BeautyLooks::Name(look), BeautyLooks::Colour(look),
                CLookListPanel::OverlayAttributes(QStringLiteral("film/1.png"))};
    }
    bool Render(Bitmap& thumbnail, int look) const override {
        return BeautyLooks::Run(thumbnail, look, BeautyLooks::Folder());
    }

  private:
    const std::vector<LookCategory> m_categories{
        {OnlyCategory, QStringLiteral("ListViewBeauty"), QStringLiteral("EffectListViewBeauty"), {}, 0, {}, {}}};
};

const LookTable& Looks() {
    static const BeautyTable table;
    return table;
}

}  // namespace

CMeiRongMeiYan::CMeiRongMeiYan(ToolHost& host, QWidget* parent)
    : CLookListPanel(host, BeautyTool, Looks(), {}, parent) {
    Create(QLatin1String(BeautyTool.skin));
}
