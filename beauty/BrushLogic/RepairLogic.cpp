// SPDX-License-Identifier: GPL-3.0-or-later
#include "RepairLogic.h"

#include "BrushPlace.h"
#include "CObjProgress.h"
#include "PcDspTypes.h"

std::optional<QRect> RepairLogic::Change(const QRect& part, CObjProgress* progress,
                                         const std::function<bool(Bitmap&)>& change) {
    return SnapshotLogic::Change(part, [&](Bitmap& picture) {
        if (progress) progress->SetValue(1.0f);
        return change(picture) && (!progress || progress->CanContinue() != 0);
    });
}

PixelRect RepairLogic::PixelsOf(const QRect& rect) {
    return {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()};
}

std::optional<QRect> ClickRepairLogic::Aim(QPoint client) const {
    if (!IsShown(client)) return std::nullopt;
    const ViewGeometry geometry = Geometry();
    const auto place = PenPlace(client - geometry.ViewOffset(), PenPixels(), geometry.Zoom(), ImageSize());
    const bool covers = place && !place->isEmpty() && place->intersects(QRect(QPoint(0, 0), ImageSize()));
    return covers ? place : std::nullopt;
}

bool ClickRepairLogic::ChangePlace(const QRect& place, CObjProgress* progress,
                                   const std::function<bool(Bitmap&)>& change) {
    const std::optional<QRect> changed = Change(place, progress, change);
    if (changed) m_changed = *changed;
    return changed.has_value();
}
