// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QKeyEvent;
class QWidget;

// Enter or Return going down; a held key counts once.
bool IsEnter(const QKeyEvent& event);

// What Enter does in dialogs: clicks the button that has the keyboard. False when none has (a check
// box does not count: Space is its key).
bool ClickFocusedButton(QWidget& window);
