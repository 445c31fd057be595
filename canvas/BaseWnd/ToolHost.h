// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QString>

#include "FrameMessages.h"

class CBaseWnd;
class CObjProgress;
struct tag_ImageInfo;

// What canvases, bars and panels may ask of the work area above them. The main frame's work area implements it; tests
// implement it with a few lines. All calls on the main thread unless told otherwise.
class ToolHost {
  public:
    virtual ~ToolHost() = default;

    // The number of the tool on show, and its canvas (null before the first tool).
    virtual int Tool() const = 0;
    virtual CBaseWnd* Canvas() const = 0;
    // Leaves the present tool and enters another; nothing beyond leaving compare when it is the present one.
    virtual void SwitchTool(int tool) = 0;

    // 0 none, 1 the original in the picture's place, 2 side by side.
    virtual int CompareMode() const = 0;
    virtual void SetCompareMode(int mode) = 0;

    // True while a task runs, a modal window is up or a stroke is held: input that changes the picture does nothing.
    virtual bool IsBusy() const = 0;

    // Runs `work` on a worker thread while the main thread stands in the modal progress loop; returns when it is over
    // and the worker joined. False when the user cancelled it.
    virtual bool RunTask(const std::function<void(CObjProgress&)>& work) = 0;

    // What is known about the open picture; null before the first.
    virtual const tag_ImageInfo* ImageInfo() const = 0;
    // Puts the picture's present size into its record and the bottom bar, as "%d x %d".
    virtual void UpdateSizeText() = 0;

    // Shows the user the text of `key` and waits until it was read.
    virtual void Tell(const QString& key) = 0;

    // Sends a message to the main frame and waits for its answer. From a worker it is delivered on the main thread.
    virtual void SendFrame(const FrameMessage& message) = 0;
};
