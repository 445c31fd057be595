// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CBrushPanel.h"
#include "ColorPalette.h"

class CYanJingBSShowWnd;

// The panel of eye colour.
class CEyesBianSePanel : public CBrushPanel {
    Q_OBJECT

  public:
    // The host must outlive the panel.
    explicit CEyesBianSePanel(ToolHost& host, QWidget* parent = nullptr);

  protected:
    CPenWnd* Brush() const override;
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    void OnSkin() override { m_palette.Attach(*this); }
    void OnChoice(const Notify& notify) override { m_palette.OnClick(notify); }
    void GiveChoices() override { GiveColor(m_palette.Color()); }
    void ShowChoices() override;

  private:
    void GiveColor(const QColor& color);
    CYanJingBSShowWnd* Canvas() const;
    ColorPalette m_palette;
};
