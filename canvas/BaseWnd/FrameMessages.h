// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <any>
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
    int tool = 0;   // whose panel
    QString text;   // name of the look
    int value = 0;  // its number
    std::uint32_t colour = 0;
    QString background;  // attribute of what lies over the thumbnail
    Bitmap thumbnail;
    int list = 0;  // which of the panel's lists
    std::uint64_t generation = 0;
};

// What a canvas may tell the frame. The zoom, in percent, after every change of it.
struct ZoomNews {
    int percent = 0;
};
// The picture has another size.
struct SizeNews {};
// What the history or the tool's pending work is changed.
struct HistoryNews {};
// Something that concerns the tool's own panel alone; its type belongs to the tool. Empty after a move in the history.
using PanelNews = std::any;
using ViewNews = std::variant<ZoomNews, SizeNews, HistoryNews, PanelNews>;

struct ViewNotifyMessage {
    static constexpr int Number = 0x7ED;
    int tool = 0;
    ViewNews news;
};

// The panel's news of that type in a message; null for any other message.
template <class News>
const News* PanelNewsOf(const auto& message) {
    const auto* view = std::get_if<ViewNotifyMessage>(&message);
    const auto* news = view ? std::get_if<PanelNews>(&view->news) : nullptr;
    return news ? std::any_cast<News>(news) : nullptr;
}

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
