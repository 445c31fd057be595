// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "CPictureWnd.h"
#include "EffectLogic.h"

// The canvas of the effect tool: it maps the contract of canvases and the panel's wishes to the logic object, and keeps
// what the panel's lists are made from.
class CEffectWnd : public CPictureWnd {
    Q_OBJECT

  public:
    static constexpr int ToolNumber = 7;
    // Logical pixels of a list's thumbnail and of a category's cover.
    static constexpr QSize ThumbnailSize{70, 96};
    static constexpr QSize CoverSize{47, 47};

    // The history must outlive the canvas.
    CEffectWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance());

    bool IsStrokeHeld() const override;

    // For the panel, on the main thread.

    // Runs an effect as a task with the progress window, shows it and tells the frame of the step. False when nothing
    // came of it: picture, effect, strength and history are then as they were.
    bool RunEffect(int index);
    // The strength slider moves or settles: shows the value, leaves the history alone. Paints before it returns.
    void SetStrength(int percent, bool moving);
    // The effect in force, -1 for none, and its strength in percent.
    int EffectIndex() const { return m_logic.EffectIndex(); }
    int Alpha() const { return m_logic.Alpha(); }

    // The effect indexes of a category, remembered with its number as the present ones.
    const std::vector<int>& SelectCategoryList(int category);
    int Category() const { return m_category; }
    const std::vector<int>& CategoryList() const { return m_categoryList; }

    // Cuts the thumbnail base out of the picture on show: of ThumbnailSize times the screen's scale, so that the list
    // is crisp on every screen. Null without a picture.
    const Bitmap& BuildThumbnailBase();
    const Bitmap& ThumbnailBase() const { return m_thumbnailBase; }
    // The same for a cover, at `scale` times its size.
    Bitmap BuildCoverBase(double scale);

    const CEffectLogic& Logic() const { return m_logic; }

  protected:
    CanvasLogic& PictureLogic() override { return m_logic; }
    void OnPictureTaken() override { m_strengthMoving = false; }

  private:
    CEffectLogic m_logic;
    int m_category = 0;
    std::vector<int> m_categoryList;
    Bitmap m_thumbnailBase;
    // The strength slider was held when its value last came.
    bool m_strengthMoving = false;
};
