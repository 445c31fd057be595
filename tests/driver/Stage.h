// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <QtCore/QSize>
#include <QtCore/QString>

class CMainFrameWnd;

// The program set up in a folder of its own, without its single-instance lock, so that a tour neither meets the user's
// running program nor touches its settings.
class Stage {
  public:
    // `language`: "1033" or "2052". Large pictures are opened as they are.
    explicit Stage(const QString& language);
    ~Stage();

    // Opens the main window with `picture` (empty: the welcome window) and waits until it is on show.
    CMainFrameWnd& Open(const QString& picture, QSize size = {1024, 730});
    CMainFrameWnd& Frame() { return *m_frame; }

  private:
    std::unique_ptr<CMainFrameWnd> m_frame;
};
