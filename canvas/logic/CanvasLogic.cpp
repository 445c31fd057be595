// SPDX-License-Identifier: GPL-3.0-or-later
#include "CanvasLogic.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "ImageParams.h"
#include "PC_Dsp.h"

CanvasLogic::CanvasLogic(const ToolFacts& tool, StepStyle style, CHistoryManager& history,
                         ViewGeometry::ZoomFloor floor)
    : m_history(history), m_committer(*this, style, history), m_stepName(QLatin1String(tool.stepName)), m_floor(floor) {
    m_view.geometry = ViewGeometry(floor);
}

void CanvasLogic::Reset() {
    ForgetAll();
    m_committer.BeginVisit();
    const std::lock_guard lock(m_lock);
    const QSize client = m_view.geometry.Client();
    m_view = {};
    m_view.geometry = ViewGeometry(m_floor);
    m_view.geometry.SetClient(client);
}

void CanvasLogic::SetSource(const Bitmap& picture) {
    if (!picture) return;
    Whole([&] {
        TakeSource(picture);
        ShowLayers();
        OnSource();
        return true;
    });
}

bool CanvasLogic::TakeViewState() {
    const Bitmap picture = m_history.CurrentBitmap();
    const CViewState* left = m_history.ViewState();
    if (!picture || !left) return false;
    return Whole([&] {
        TakeSource(picture);
        ViewGeometry geometry = Geometry();
        geometry.SetImage({picture.Width(), picture.Height()});
        geometry.Restore(left->zoom, {left->x, left->y});
        if (!TakeView(*left, geometry)) ShowLayers(geometry);
        OnSource();
        return true;
    });
}

// The pixels that the last tool drew serve as they are where this one shows the same: its picture, in the same place.
bool CanvasLogic::TakeView(const CViewState& left, const ViewGeometry& geometry) {
    const QSize drawn(left.bitmap.Width(), left.bitmap.Height());
    if (left.destRect != geometry.ScreenRect() || drawn != left.destRect.size()) return false;
    const std::vector<Bitmap> layers = Layers();
    for (const Bitmap& layer : layers)
        if (!layer.SharesPixelsWith(m_history.CurrentBitmap())) return false;
    const std::lock_guard lock(m_lock);
    m_view = {geometry,
              std::vector<Bitmap>(layers.size(), left.bitmap),
              left.bitmap,
              left.bitmap.IsOpaque(),
              ViewQuality::Settled,
              true};
    return true;
}

void CanvasLogic::SetViewSize(int width, int height) {
    if (width <= 0 || height <= 0) return;
    ViewGeometry geometry = Geometry();
    geometry.SetClient({width, height});
    SetGeometry(geometry, ViewQuality::Settled);
}

void CanvasLogic::SetGeometry(const ViewGeometry& geometry, ViewQuality quality) {
    const std::lock_guard lock(m_lock);
    const bool wellEnough = m_view.drawn && (quality == m_view.quality || quality == ViewQuality::Moving);
    if (geometry == m_view.geometry && wellEnough) return;
    m_view.geometry = geometry;
    Draw(quality);
}

void CanvasLogic::SetZoom(double zoom) {
    ViewGeometry geometry = Geometry();
    geometry.SetZoom(zoom);
    SetGeometry(geometry, ViewQuality::Settled);
}

void CanvasLogic::FitToWindow() {
    ViewGeometry geometry = Geometry();
    geometry.Fit();
    SetGeometry(geometry, ViewQuality::Settled);
}

void CanvasLogic::PanBy(int dx, int dy) {
    ViewGeometry geometry = Geometry();
    geometry.PanBy(dx, dy);
    SetGeometry(geometry, ViewQuality::Settled);
}

ViewGeometry CanvasLogic::Geometry() const {
    const std::lock_guard lock(m_lock);
    return m_view.geometry;
}

CanvasView CanvasLogic::View() const {
    const std::lock_guard lock(m_lock);
    return {m_view.shown, m_view.geometry.ScreenRect(), m_view.opaque};
}

Bitmap CanvasLogic::Overview(QSize bounds) const {
    if (!HasPicture()) return {};
    std::vector<Bitmap> layers = Layers(), reduced;
    for (const Bitmap& layer : layers)
        reduced.push_back(!reduced.empty() && layer.SharesPixelsWith(layers[reduced.size() - 1])
                              ? reduced.back()
                              : ReducedWithin(layer, bounds));
    if (reduced.empty() || !reduced.front()) return {};
    const QSize size(reduced.front().Width(), reduced.front().Height());
    Bitmap overview;
    Compose(overview, reduced, QRect(QPoint(0, 0), size), double(size.width()) / Geometry().Image().width());
    return overview;
}

void CanvasLogic::ShowLayers() {
    ViewGeometry geometry = Geometry();
    const QSize size = ImageSize();
    if (size != geometry.Image()) {
        geometry.SetImage(size);
        geometry.Fit();
    }
    ShowLayers(geometry);
}

void CanvasLogic::ShowLayers(const ViewGeometry& geometry) {
    const std::lock_guard lock(m_lock);
    m_view.geometry = geometry;
    Draw(ViewQuality::Settled);
}

void CanvasLogic::ShowValues() {
    const std::lock_guard lock(m_lock);
    if (m_view.drawn) Compose(QRect(QPoint(0, 0), m_view.geometry.ScreenRect().size()));
}

QRect CanvasLogic::ShowValues(const QRect& part) {
    const std::lock_guard lock(m_lock);
    const QRect dest = m_view.geometry.ScreenRect();
    const QRect inView = part.intersected(QRect(QPoint(0, 0), dest.size()));
    if (!m_view.drawn || inView.isEmpty()) return {};
    Compose(inView);
    return inView.translated(dest.topLeft());
}

// The lock is held. A layer that is the one below it is drawn once.
void CanvasLogic::Draw(ViewQuality quality) {
    m_view.drawn = false;
    const std::vector<Bitmap> layers = Layers();
    if (layers.empty() || !layers.front() || !m_view.geometry.HasPicture()) return;
    // What is shown may be a layer as it is; drawing goes on in the same memory.
    if (!m_view.layers.empty() && m_view.shown.SharesPixelsWith(m_view.layers.front())) m_view.shown = {};
    std::vector<Bitmap> views = std::move(m_view.layers);
    views.resize(layers.size());
    for (std::size_t i = layers.size(); i-- > 1;)
        if (views[i].SharesPixelsWith(views[i - 1])) views[i] = {};
    for (std::size_t i = 0; i < layers.size(); ++i) {
        if (i > 0 && layers[i].SharesPixelsWith(layers[i - 1]))
            views[i] = views[i - 1];
        else
            DrawVisiblePart(layers[i], m_view.geometry, quality, views[i]);
    }
    m_view.layers = std::move(views);
    m_view.opaque =
        std::all_of(m_view.layers.begin(), m_view.layers.end(), [](const Bitmap& view) { return view.IsOpaque(); });
    m_view.quality = quality;
    Compose(QRect(QPoint(0, 0), m_view.geometry.ScreenRect().size()));
    m_view.drawn = true;
}

void CanvasLogic::Compose(const QRect& part) {
    Compose(m_view.shown, m_view.layers, part, m_view.geometry.Zoom());
}

void CanvasLogic::Compose(Bitmap& shown, const std::vector<Bitmap>& views, const QRect&, double) const {
    shown = views.front();
}

QRect CanvasLogic::ShowPart(const QRect& changed) {
    const std::lock_guard lock(m_lock);
    const QRect dest = m_view.geometry.ScreenRect();
    // A pixel of the view is made of those around its place: two each way where the picture is enlarged.
    const QRectF touched = m_view.geometry.ToClient(QRectF(changed.adjusted(-2, -2, 2, 2)));
    const QRect part = touched.toAlignedRect().adjusted(-1, -1, 1, 1).intersected(dest);
    if (!m_view.drawn || part.isEmpty()) return {};
    const QRect inView = part.translated(-dest.topLeft());
    const std::vector<Bitmap> layers = Layers();
    if (m_view.shown.SharesPixelsWith(m_view.layers.front())) m_view.shown = {};
    for (std::size_t i = 0; i < layers.size(); ++i)
        DrawVisiblePart(layers[i], m_view.geometry, inView, m_view.layers[i]);
    Compose(inView);
    return part;
}

std::unique_ptr<CHistoryStep> CanvasLogic::NewStep(const Bitmap& picture, bool save) const {
    auto step = std::make_unique<CHistoryStep>();
    step->SetNameFromKey(m_stepName);
    auto image = std::make_unique<ImageParams>();
    image->image = picture;
    image->save = save;
    step->AddParams(std::move(image));
    return step;
}

bool CanvasLogic::Whole(const std::function<bool()>& act) {
    const std::function<void()> putBack = Remember();
    try {
        if (act()) return true;
    } catch (...) {
        putBack();
        throw;
    }
    putBack();
    return false;
}

// A step or move that the history refused has not happened, and what it noted about that stays.
bool CanvasLogic::InHistory(const std::function<bool()>& act) {
    bool done = false;
    if (HasPicture()) {
        Whole([&] {
            done = act();
            return true;
        });
    }
    return done;
}

bool CanvasLogic::CommitStep() {
    return InHistory([this] { return m_committer.Commit() == CommitResult::Committed; });
}

bool CanvasLogic::Undo() {
    return InHistory([this] { return m_committer.Undo(); });
}

bool CanvasLogic::Redo() {
    return InHistory([this] { return m_committer.Redo(); });
}

bool CanvasLogic::Jump(int row) {
    return InHistory([=, this] { return m_committer.Jump(row); });
}

bool CanvasLogic::Revert() {
    return InHistory([this] { return m_committer.Revert(); });
}

void CanvasLogic::Apply() {
    InHistory([this] {
        m_history.SetCurrentBitmap(RenderResult());
        m_history.SetViewState(MakeViewState());
        const std::function<void()> shown = RememberSelf();
        if (m_committer.Leave() == StepCommitter::Left::OnNewest) {
            shown();
            m_committer.BeginVisit();
        }
        return true;
    });
}

std::unique_ptr<CViewState> CanvasLogic::MakeViewState() {
    SetGeometry(Geometry(), ViewQuality::Settled);
    const std::lock_guard lock(m_lock);
    auto state = std::make_unique<CViewState>();
    state->bitmap = m_view.shown;
    state->zoom = m_view.geometry.Zoom();
    state->x = m_view.geometry.Pan().x();
    state->y = m_view.geometry.Pan().y();
    state->destRect = m_view.geometry.ScreenRect();
    return state;
}

bool CanvasLogic::IsImageChanged() const {
    return HasPicture() && (HasWork() || !m_history.IsOriginal());
}

std::function<void()> CanvasLogic::RememberSelf() {
    const std::lock_guard lock(m_lock);
    return [this, view = m_view, tool = RememberTool()] {
        tool();
        const std::lock_guard again(m_lock);
        m_view = view;
    };
}

std::function<void()> CanvasLogic::Remember() {
    return [this, self = RememberSelf(), visit = m_committer.State(), history = m_history.Remember()] {
        self();
        m_committer.SetState(visit);
        history();
    };
}
