// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QApplication>

// The waiting cursor for as long as the object lives. Main thread.
class BusyCursor {
  public:
    BusyCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};
