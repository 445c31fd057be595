// SPDX-License-Identifier: GPL-3.0-or-later
#include "CBasePanelFrame.h"

#include "CBorderListView.h"
#include "CFramePage.h"
#include "CImageFrameLogic.h"
#include "FrameCatalogue.h"

namespace {

// Of the name below each thumbnail: quiet, so that the frames speak.
constexpr std::uint32_t NameColour = 0xFF5B6470;

class FrameTable : public LookTable {
  public:
    const std::vector<LookCategory>& Categories() const override { return m_categories; }
    std::vector<int> LooksOf(int category) const override { return FramesOfKind(category); }
    LookInfo Info(int look) const override {
        FrameEntry frame;
        FindFrame(look, frame);
        return {frame.Name(), NameColour, {}};
    }
    LookTile Tile() const override { return CBorderListView::Tile; }
    bool ShowsPicture() const override { return false; }
    bool Render(Bitmap& thumbnail, int look) const override {
        FrameEntry frame;
        const double scale = double(thumbnail.Width()) / Tile().thumbnail.width();
        return FindFrame(look, frame) && DrawFrameThumbnail(frame.thumbnail, scale, thumbnail);
    }

  private:
    static LookCategory Page(int kind, const QString& stem, const QString& click) {
        LookCategory page;
        page.number = kind;
        page.list = QStringLiteral("BorderListView") + stem;
        page.listClass = QStringLiteral("BorderListView");
        page.button = QStringLiteral("Btn") + stem;
        page.lookClick = click;
        return page;
    }

    const std::vector<LookCategory> m_categories{
        Page(FrameSimple, QStringLiteral("JianDan"), QStringLiteral("888020402")),
        Page(FrameOrnate, QStringLiteral("XuanCai"), QStringLiteral("888020403"))};
};

const LookTable& Frames() {
    static const FrameTable table;
    return table;
}

}  // namespace

CBasePanelFrame::CBasePanelFrame(ToolHost& host, QWidget* parent)
    : CLookListPanel(host, FrameTool, Frames(), QStringLiteral("TabLayoutUI_Frame"), parent) {
    ReadFrames();
    Create(QLatin1String(FrameTool.skin));
}

QWidget* CBasePanelFrame::CreateControl(const QString& className, QWidget* parent, const QString& name) {
    const auto inside = [this](const QString& itsClass, QWidget* itsParent, const QString& itsName) {
        return CLookListPanel::CreateControl(itsClass, itsParent, itsName);
    };
    if (name == u"Frame_JianDan") return new CFrameJianDan(parent, inside);
    if (name == u"Frame_XuanCai") return new CFrameXuanCai(parent, inside);
    return CLookListPanel::CreateControl(className, parent, name);
}

CEffectListView* CBasePanelFrame::MakeList(QWidget* parent) {
    return new CBorderListView(parent);
}
