// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QPoint>

// The mouse of the window system itself, whose events take the whole way through the toolkit: X11's test extension.
class SystemMouse {
  public:
    SystemMouse();
    ~SystemMouse();
    SystemMouse(const SystemMouse&) = delete;
    SystemMouse& operator=(const SystemMouse&) = delete;

    // Logical pixels of the screen.
    void Move(QPoint to);
    // The left button.
    void Press();
    void Release();
    // Waits until the window system has taken all of it.
    void Sync();

  private:
    void* m_display;
};
