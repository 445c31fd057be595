// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CBrushPanel.h"
#include "ColorPalette.h"

class CChunCaiShowWnd;

// The panel of lip colour.
class CMouthColorPanel : public CBrushPanel {
    Q_OBJECT

  public:
    // The host must outlive the panel.
    explicit CMouthColorPanel(ToolHost& host, QWidget* parent = nullptr);

  protected:
    CPenWnd* Brush() const override;
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    void OnSkin() override { m_palette.Attach(*this); }
    void OnChoice(const Notify& notify) override { m_palette.OnClick(notify); }
    void GiveChoices() override { GiveColor(m_palette.Color()); }

  private:
    void GiveColor(const QColor& color);
    CChunCaiShowWnd* Canvas() const;
    ColorPalette m_palette;
};
