// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>

#include "PenTool.h"
#include "SnapshotLogic.h"

class CObjProgress;
struct PixelRect;

// Base of the tools that repair a place of the picture in its own pixels; each repair is a step with a snapshot. A pen
// of 0 covers nothing.
class RepairLogic : public SnapshotLogic, public PenTool {
  protected:
    RepairLogic(const ToolFacts& tool, int pen, CHistoryManager& history)
        : SnapshotLogic(tool, history), PenTool(pen, 0) {}

    // The picture is shown there.
    bool IsShown(QPoint client) const { return HasPicture() && Geometry().ScreenRect().contains(client); }
    // As SnapshotLogic::Change, for a repair that the user may stop from its beginning on: the sink is told something
    // at once, and asked again at the end. What was stopped is put back.
    std::optional<QRect> Change(const QRect& part, CObjProgress* progress, const std::function<bool(Bitmap&)>& change);

    static PixelRect PixelsOf(const QRect& rect);
};

// Base of the repairs that take a click.
class ClickRepairLogic : public RepairLogic {
  public:
    // What a click at that place of the client would repair, in picture pixels: what the pen covers. None where the
    // click is ignored: outside the picture, and for a pen that covers no pixel.
    std::optional<QRect> Aim(QPoint client) const;
    // Repairs that place, which may reach out of the picture; CommitStep records it. False, and nothing changed,
    // without a picture and when the sink stopped it.
    virtual bool Repair(const QRect& place, CObjProgress* progress) = 0;
    // A repair that takes no longer than a blink.
    virtual bool IsQuick(const QRect& place) const = 0;
    // The rectangle of the client that the last repair changed.
    const QRect& Changed() const { return m_changed; }

  protected:
    using RepairLogic::RepairLogic;

    // As Change, for Changed.
    bool ChangePlace(const QRect& place, CObjProgress* progress, const std::function<bool(Bitmap&)>& change);

  private:
    QRect m_changed;
};
