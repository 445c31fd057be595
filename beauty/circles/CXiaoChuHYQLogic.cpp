// SPDX-License-Identifier: GPL-3.0-or-later
#include "CXiaoChuHYQLogic.h"

#include "BrushMix.h"
#include "BrushPlace.h"
#include "DiscFill.h"
#include "PC_Dsp.h"

namespace {

// So many marked pixels take some hundredths of a second.
constexpr qint64 QuickPixels = 250'000;

}  // namespace

CXiaoChuHYQLogic::CXiaoChuHYQLogic(CHistoryManager& history)
    : RepairLogic(CircleTool, 50, history), m_tip(PC_Dsp::Circle_Gradient_Alpha) {}

void CXiaoChuHYQLogic::ForgetAll() {
    RepairLogic::ForgetAll();
    m_base = {};
    m_overlay = {};
    m_mark.clear();
}

void CXiaoChuHYQLogic::TakeSource(const Bitmap& picture) {
    DropMark();
    RepairLogic::TakeSource(picture);
    m_base = picture;
}

// No mark is under way while an act runs that may be put back.
std::function<void()> CXiaoChuHYQLogic::RememberTool() {
    return [this, base = m_base, picture = RepairLogic::RememberTool()] {
        picture();
        m_base = base;
    };
}

bool CXiaoChuHYQLogic::BeginStroke(QPoint client) {
    if (!IsShown(client)) return false;
    DropMark();
    m_tip.Rebuild(BrushTip::RadiusOf(PenPixels(), Geometry().Zoom()));
    const std::optional<QPoint> place = PlaceAt(client);
    if (place && IsErasing())
        EraseAt(*place);
    else if (place)
        MarkAt(*place);
    return true;
}

QRect CXiaoChuHYQLogic::MoveStroke(QPoint client) {
    const std::optional<QPoint> place = PlaceAt(client);
    if (!place) return {};
    if (IsErasing()) return IsFarEnough(m_last, *place, m_tip.Side()) ? EraseAt(*place) : QRect();
    MarkAt(*place);
    return {};
}

std::optional<QPoint> CXiaoChuHYQLogic::PlaceAt(QPoint client) const {
    const ViewGeometry geometry = Geometry();
    return StampPlace(client - geometry.ViewOffset(), PenPixels(), geometry.Zoom(), ImageSize());
}

void CXiaoChuHYQLogic::MarkAt(QPoint place) {
    const QSize size = ImageSize();
    if (QSize(m_overlay.Width(), m_overlay.Height()) != size) m_overlay = Bitmap(size.width(), size.height());
    const QRect disc(place, QSize(m_tip.Side(), m_tip.Side()));
    m_mark.push_back(disc);
    FillEllipse(disc, MarkColour, m_overlay);
}

QRect CXiaoChuHYQLogic::EraseAt(QPoint place) {
    m_last = place;
    const Stamp stamp{m_tip, place, StampedPart(place, m_tip.Side(), ImageSize())};
    const auto changed = Change(stamp.part, nullptr, [&](Bitmap& picture) {
        LayStamp(stamp, m_base, m_base, 0.0, picture);
        return true;
    });
    return changed.value_or(QRect());
}

QRect CXiaoChuHYQLogic::MarkedPart() const {
    QRect part;
    for (const QRect& disc : m_mark) part |= disc;
    return part.intersected(QRect(QPoint(0, 0), ImageSize()));
}

void CXiaoChuHYQLogic::DropMark() {
    ClearPart(MarkedPart(), m_overlay);
    m_mark.clear();
}

bool CXiaoChuHYQLogic::IsQuick() const {
    const QRect part = MarkedPart();
    return part.width() * qint64{part.height()} <= QuickPixels;
}

std::optional<QRect> CXiaoChuHYQLogic::EndStroke(CObjProgress* progress) {
    struct Drop {
        CXiaoChuHYQLogic& logic;
        ~Drop() { logic.DropMark(); }
    };
    const Drop drop{*this};
    const QRect part = MarkedPart();
    return Change(part, progress, [&](Bitmap& picture) {
        return PC_Dsp::BlackEye(picture.MutablePixels(), picture.Width(), picture.Height(), m_overlay.Pixels(),
                                m_tip.Side() / 2, m_strength, PixelsOf(part), progress, 1, 100) != 0;
    });
}
