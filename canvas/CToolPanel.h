// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CXMLWnd.h"
#include "FrameMessages.h"

// Base of the tools' panels in the left column. The main frame hands each panel the messages that concern its tool:
// ImageLoadedMessage (show the rest state for the new picture), ViewNotifyMessage (codes 1 to 4, which the tool
// defines; records are fetched from the canvas), RefreshPanelMessage (show what the canvas holds, and
// go on with what LeavingToolMessage stopped), ClearSelectionsMessage, LeavingToolMessage (stop thumbnail workers and
// wait for them), HandOffMessage (a row for a list). Main thread.
class CToolPanel : public CXMLWnd {
    Q_OBJECT

  public:
    using CXMLWnd::CXMLWnd;
    virtual void OnFrameMessage(const FrameMessage& message) = 0;
};
