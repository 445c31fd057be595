// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CXMLWnd.h"

class CMainFrameWnd;
class ToolTable;

// The caption bar: sections, open, save, feedback, settings.
class CTopWnd : public CXMLWnd {
    Q_OBJECT

  public:
    CTopWnd(CMainFrameWnd& frame, QWidget* parent, const ToolTable& tools);

    // Marks the section without acting on it.
    void ShowSection(int section);
    // Saving needs a picture.
    void EnableSave(bool enable);

  protected:
    void OnNotify(const Notify& notify) override;

  private:
    void DisableMissingSections(const ToolTable& tools);

    CMainFrameWnd& m_frame;
};
