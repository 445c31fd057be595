// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CXMLWnd.h"
#include "FrameMessages.h"
#include "ToolHost.h"

class CBaseWnd;

// Base of the tools' panels in the left column. A panel holds no truth: it shows what the canvas has. The main frame
// hands it the messages that concern its tool: ImageLoadedMessage (a new picture), ViewNotifyMessage (what the canvas
// says), RefreshPanelMessage (the tool was entered, or a move in the history; go on with what LeavingToolMessage
// stopped), ClearSelectionsMessage, LeavingToolMessage (stop thumbnail workers and wait for them), HandOffMessage (a
// row for a list). Main thread.
class CToolPanel : public CXMLWnd {
    Q_OBJECT

  public:
    // Every message means the same here: look at the canvas.
    virtual void OnFrameMessage(const FrameMessage&) { Refresh(); }

  protected:
    // The host must outlive the panel. Without its skin a panel is empty.
    CToolPanel(ToolHost& host, QWidget* parent) : CXMLWnd(parent), m_host(host) {}

    // Shows what the canvas holds; with another tool's canvas everything is at rest.
    virtual void Refresh() {}

    ToolHost& Host() const { return m_host; }
    // The canvas on show as the tool's own; null while it is another's.
    template <class Wnd>
    Wnd* CanvasOf() const {
        return qobject_cast<Wnd*>(m_host.Canvas());
    }
    // Every act of a panel leaves compare first.
    void LeaveCompare() { m_host.SetCompareMode(0); }

    // The page was turned to: a new visit may have begun meanwhile.
    void showEvent(QShowEvent* event) override {
        CXMLWnd::showEvent(event);
        Refresh();
    }

  private:
    ToolHost& m_host;
};
