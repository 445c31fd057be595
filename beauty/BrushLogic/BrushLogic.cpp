// SPDX-License-Identifier: GPL-3.0-or-later
#include "BrushLogic.h"

#include <new>

#include "BrushPlace.h"
#include "Flatten.h"

void BrushLogic::TakeSource(const Bitmap& picture) {
    ForgetAll();
    m_state.base = picture;
    FlattenOnWhite(m_state.base);
    m_state.working = m_state.base;
    BuildCopies();
}

bool BrushLogic::BuildCopies(const ProgressSpan& span) {
    Bitmap processed = m_state.base;
    Process(processed, span);
    if (!span.CanContinue()) return false;
    m_state.processed = processed;
    return true;
}

std::optional<QPoint> BrushLogic::PlaceAt(QPoint client) const {
    const ViewGeometry geometry = Geometry();
    return StampPlace(client - geometry.ViewOffset(), PenPixels(), geometry.Zoom(), ImageSize());
}

bool BrushLogic::BeginStroke(QPoint client) {
    const ViewGeometry geometry = Geometry();
    if (!HasPicture() || !geometry.ScreenRect().contains(client)) return false;
    PrepareStroke();
    RebuildBrush(BrushTip::RadiusOf(PenPixels(), geometry.Zoom()));
    if (const auto place = PlaceAt(client)) Show(StampAt(place->x(), place->y(), true));
    return true;
}

QRect BrushLogic::MoveStroke(QPoint client) {
    const auto place = PlaceAt(client);
    return place ? Show(StampAt(place->x(), place->y(), false)) : QRect();
}

// What is painted is painted: where there is no memory to draw it now, it is drawn when the stroke ends.
QRect BrushLogic::Show(const QRect& part) {
    try {
        return part.isEmpty() ? QRect() : ShowPart(part);
    } catch (const std::bad_alloc&) {
        return {};
    }
}

// Pixels of its own first: it is the only thing that may fail for want of memory.
QRect BrushLogic::StampAt(int x, int y, bool force) {
    const QPoint place(x, y);
    if (!force && !IsFarEnough(m_last, place, m_tip.Side())) return {};
    const Stamp stamp{m_tip, place, StampedPart(place, m_tip.Side(), ImageSize())};
    m_state.working.MutablePixels();
    OnStamp(stamp);
    m_last = place;
    const double weight = IsErasing() ? 0.0 : StampWeight();
    if (!stamp.part.isEmpty()) LayStamp(stamp, m_state.base, m_state.processed, weight, m_state.working);
    m_state.dirty = true;
    return stamp.part;
}
