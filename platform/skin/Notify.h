// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

class QWidget;

// What a control of a skinned window tells the window. Known types:
//   "windowinit"                    the skin is loaded; sender null
//   "downclick", "click"            a button went down; it was clicked
//   "selectchanged"                 an option became the selected one of its group, or a tab its page
//   "valuechanging", "valuechanged" a slider moves under the mouse; it settled. value: its position
//   "itemselect"                    a combo's item was chosen. value: its index
//   "itemclick"                     a list or tree row was clicked. value: its row
//   "textchanged", "enchange"       an edit field's text changed by the user
//   "setfocus", "killfocus"         an edit field got or lost the keyboard
// All come from the user's acts only: setting a control from code raises none, but for "enchange" of a field of several
// lines.
struct Notify {
    QString type;
    QString name;  // the sender's objectName
    QWidget* sender = nullptr;
    int value = 0;

    bool Is(QStringView aType, QStringView aName) const { return type == aType && name == aName; }
};
