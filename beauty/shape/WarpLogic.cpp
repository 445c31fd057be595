// SPDX-License-Identifier: GPL-3.0-or-later
#include "WarpLogic.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "BrushPlace.h"
#include "Flatten.h"
#include "Truncate.h"

namespace {

// What a radius has more than the pen's pixels, so that the smallest pens move something.
constexpr int MoreThanPen = 10;

void CopyPart(Bitmap& target, const Bitmap& source, const QRect& part) {
    const std::ptrdiff_t at = std::ptrdiff_t{4} * part.x();
    const auto bytes = static_cast<std::size_t>(part.width()) * 4;
    std::uint8_t* const to = target.MutablePixels() + at;
    for (int y = part.top(); y <= part.bottom(); ++y) std::memcpy(to + y * target.Stride(), source.Row(y) + at, bytes);
}

}  // namespace

WarpLogic::WarpLogic(const ToolFacts& tool, CWarpField::Mode mode, Defaults defaults, CHistoryManager& history)
    : CanvasLogic(tool, StepStyle::OnePerCommit, history),
      PenTool(defaults.pen, 1),
      m_mode(mode),
      m_strength(defaults.strength),
      m_queue([this](const WarpEntry& entry) { Work(entry); }, [this] { m_state.full->Settle(); }) {}

void WarpLogic::ForgetAll() {
    m_queue.Clear();
    m_stroke.reset();
    m_preview.reset();
    m_state = {};
}

void WarpLogic::TakeSource(const Bitmap& picture) {
    ForgetAll();
    m_state.picture = picture;
    FlattenOnWhite(m_state.picture);
}

void WarpLogic::Prepare() {
    if (m_state.full || !HasPicture()) return;
    auto full = std::make_shared<CWarpField>();
    full->SetImage(&m_state.picture, nullptr);
    m_state.full = std::move(full);
}

// The picture itself where nothing was pushed, so that a visit without a stroke hands on the very same pixels.
const Bitmap& WarpLogic::Picture() const {
    return m_state.pushed ? m_state.full->Output() : m_state.picture;
}

Bitmap WarpLogic::RenderResult() {
    WaitForWorker({});
    return Picture();
}

int WarpLogic::ViewRadius() const {
    return PenPixels() + MoreThanPen;
}

int WarpLogic::ImageRadius() const {
    return std::max(2, Truncate(ViewRadius() / Geometry().Zoom() + 0.5));
}

std::optional<WarpLogic::Place> WarpLogic::PlaceAt(QPoint client) const {
    const ViewGeometry geometry = Geometry();
    const int pen = PenPixels();
    const auto corner = StampPlace(client - geometry.ViewOffset(), pen, geometry.Zoom(), ImageSize());
    if (!corner) return std::nullopt;
    const int half = Truncate(pen / 2 / geometry.Zoom());
    QPoint image = *corner + QPoint(half, half);
    // A hand on the picture is in it, also where the corner of its pen was moved outwards at the edge.
    if (geometry.ScreenRect().contains(client))
        image = {std::clamp(image.x(), 0, ImageSize().width() - 1), std::clamp(image.y(), 0, ImageSize().height() - 1)};
    return Place{client - geometry.ScreenRect().topLeft(), image};
}

bool WarpLogic::BeginStroke(QPoint client) {
    if (!HasPicture() || !Geometry().ScreenRect().contains(client)) return false;
    Prepare();
    const Bitmap view = View().bitmap;
    if (!view) return false;
    m_preview.emplace().SetImage(&view, nullptr);
    m_stroke = Stroke{{}, m_state.dirty};
    m_worked = 0;
    if (m_mode == CWarpField::Move) return true;  // a hand that rests pushes nothing
    try {
        if (const auto place = PlaceAt(client)) OnStroke(*place, {});
    } catch (const std::bad_alloc&) {
        m_stroke.reset();
        m_preview.reset();
        throw;
    }
    return true;
}

QRect WarpLogic::MoveStroke(QPoint client) {
    if (!m_stroke || m_mode != CWarpField::Move) return {};
    const auto place = PlaceAt(client);
    if (!place || !m_stroke->last) {
        m_stroke->last = place;
        if (!place) return {};
    }
    try {
        const QRect changed = OnStroke(*place, *m_stroke->last);
        m_stroke->last = place;
        return changed;
    } catch (const std::bad_alloc&) {
        return {};  // the next place goes all the way from the last one
    }
}

// Everything that working the place will need is had here: what waits can be worked.
QRect WarpLogic::OnStroke(const Place& to, const Place& from) {
    const WarpEntry entry{to.image.x(), to.image.y(),  from.image.x(),    from.image.y(),
                          int{m_mode},  ImageRadius(), m_strength / 100.0};
    m_state.full->Reserve(entry.x1, entry.y1, entry.x0, entry.y0, entry.mode, entry.radius);
    m_queue.Add(entry);
    m_state.pushed = m_state.dirty = true;
    return ShowPush(to, from);
}

// What can't be shown for want of memory is shown when the stroke ends.
QRect WarpLogic::ShowPush(const Place& to, const Place& from) {
    try {
        m_preview->SetRadius(ViewRadius());
        m_preview->SetAmount(m_strength / 100.0);
        if (!m_preview->Deform(to.view.x(), to.view.y(), from.view.x(), from.view.y(), m_mode)) return {};
        const int reach = m_preview->Radius();
        const QPoint other = m_mode == CWarpField::Move ? from.view : to.view;
        const QRect way(std::min(to.view.x(), other.x()), std::min(to.view.y(), other.y()),
                        std::abs(to.view.x() - other.x()) + 1, std::abs(to.view.y() - other.y()) + 1);
        return ShowValues(way.adjusted(-reach, -reach, reach, reach));
    } catch (const std::bad_alloc&) {
        return {};
    }
}

// While a stroke lasts the pushed view is shown.
void WarpLogic::Compose(Bitmap& shown, const std::vector<Bitmap>& views, const QRect& part, double) const {
    const Bitmap& view = views.front();
    const bool pushes = m_preview && m_preview->Width() == view.Width() && m_preview->Height() == view.Height();
    if (!pushes)
        shown = view;
    else if (shown.Width() != view.Width() || shown.Height() != view.Height() || shown.IsShared())
        CopyPixels(shown, m_preview->Output());
    else
        CopyPart(shown, m_preview->Output(), part);
}

void WarpLogic::Work(const WarpEntry& entry) {
    CWarpField& field = *m_state.full;
    field.SetRadius(entry.radius);
    field.SetAmount(entry.amount);
    field.DeformLater(entry.x1, entry.y1, entry.x0, entry.y0, entry.mode);
    ++m_worked;
}

bool WarpLogic::WaitForWorker(const ProgressSpan& span) {
    m_queue.Release();
    return m_queue.Wait(span);
}

bool WarpLogic::EndStroke(const ProgressSpan& span) {
    if (!m_stroke) return false;
    try {
        WaitForWorker(span);
    } catch (const std::bad_alloc&) {
        CloseStroke();
        throw;
    }
    CloseStroke();
    return CommitStep();
}

void WarpLogic::DropStroke() {
    if (!m_stroke) return;
    m_queue.Clear();
    CloseStroke();
}

// The picture is drawn as it is now. Where there is no memory for that, what the hand saw stays on show until the next
// drawing.
void WarpLogic::CloseStroke() {
    if (m_worked == 0 && !m_stroke->dirty) m_state.dirty = false;
    m_stroke.reset();
    m_preview.reset();
    try {
        ShowLayers();
    } catch (const std::bad_alloc&) {
        return;
    }
}

std::unique_ptr<CHistoryStep> WarpLogic::BuildStep(bool) {
    if (!HasPicture() || !HasWork()) return nullptr;
    WaitForWorker({});
    return NewStep(Picture(), true);
}

bool WarpLogic::LoadStep(std::unique_ptr<CHistoryStep> step) {
    if (!step || !step->Image()) return false;
    const Bitmap picture = step->ReadImage();
    if (!picture) return false;
    SetSource(picture);
    return true;
}
