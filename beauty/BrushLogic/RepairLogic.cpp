// SPDX-License-Identifier: GPL-3.0-or-later
#include "RepairLogic.h"

#include "BrushPlace.h"
#include "PcDspTypes.h"

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

bool ClickRepairLogic::ChangePlace(const QRect& place, const std::function<bool(Bitmap&)>& change) {
    const std::optional<QRect> changed = Change(place, change);
    if (changed) m_changed = *changed;
    return changed.has_value();
}
