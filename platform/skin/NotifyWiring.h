// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "Notify.h"

class QWidget;

// Connects every named control below `root` to `sink`, which gets the notifications of Notify.h on the main thread.
// Controls inside another CXMLWnd belong to that window and are passed over. `root` outlives the connections.
void WireNotifications(QWidget* root, const std::function<void(const Notify&)>& sink);
