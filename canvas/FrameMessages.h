// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <QtCore/QString>
#include <variant>

#include "Bitmap.h"

// The private messages that canvases, panels and bars send upward to the main frame, one struct each. They keep their
// numbers so that a log can name them.

// A row for a list that a thumbnail thread fills; the list's panel makes it. A row of another generation than the
// panel's present one belongs to a fill that was stopped.
struct HandOffMessage {
    static constexpr int Number = 0x7EA;
    static constexpr int EffectList = 2, BeautyList = 5;
    int kind = 0;
    QString text;   // name of the look
    int value = 0;  // its number
    std::uint32_t colour = 0;
    QString background;  // attribute of what lies over the thumbnail
    Bitmap thumbnail;
    int list = 0;  // which of the panel's lists
    std::uint64_t generation = 0;
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

// After undo, redo, revert or a jump, after a tool was entered, and after an opening that came to nothing: the tool's
// panel shows the state it finds.
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
