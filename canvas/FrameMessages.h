// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>
#include <variant>

#include "Bitmap.h"

// The private messages that canvases, panels and bars send upward to the main frame, one struct each. They keep their
// numbers so that a log can name them.

// A text and a number hand a picture on to another tool (parameter 2 or 5).
struct HandOffMessage {
    static constexpr int Number = 0x7EA;
    int kind = 0;
    QString text;
    int value = 0;
};

// What a canvas tells the frame about its view. A code belongs to the tool that sends it: code 0 (zoom in percent) and
// 5 (history state) come from every tool; 1 to 4 mean what the sending tool says.
struct ViewNotifyMessage {
    static constexpr int Number = 0x7ED;
    int tool = 0;
    int code = 0;
    int value = 0;
};

// A picture was opened while `tool` is shown.
struct ImageLoadedMessage {
    static constexpr int Number = 0x7EF;
    int tool = 0;
};

// The welcome window's choice: 0 sample picture, 1 basic editing, 2 effects, 3 beauty.
struct WelcomeChoiceMessage {
    static constexpr int Number = 0x7F1;
    int choice = 0;
};

// Opens the save window with this picture.
struct OpenSaveMessage {
    static constexpr int Number = 0x7F2;
    Bitmap picture;
};

// The tool is about to be left: its panel stops every thumbnail worker and waits for it.
struct LeavingToolMessage {
    static constexpr int Number = 0x7F3;
    int tool = 0;
};

// After undo, redo, revert or a jump: the tool's panel shows the state it finds.
struct RefreshPanelMessage {
    static constexpr int Number = 0x7F4;
    int tool = 0;
};

// Before the panel is refreshed after undo: clear list selections.
struct ClearSelectionsMessage {
    static constexpr int Number = 0x7F6;
    int tool = 0;
};

using FrameMessage = std::variant<HandOffMessage, ViewNotifyMessage, ImageLoadedMessage, WelcomeChoiceMessage,
                                  OpenSaveMessage, LeavingToolMessage, RefreshPanelMessage, ClearSelectionsMessage>;
