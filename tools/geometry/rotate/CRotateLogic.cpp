// SPDX-License-Identifier: GPL-3.0-or-later
#include "CRotateLogic.h"

#include <tuple>

#include "ActFailure.h"
#include "PC_Dsp.h"
#include "Truncate.h"

namespace {

Bitmap Turned(const Bitmap& source, int degrees) {
    const Bitmap result = PC_Dsp::MultiRotate(source, degrees, 0, 0, 0, 0);
    if (!result) throw PictureTooLarge();
    return result;
}

}  // namespace

CRotateLogic::CRotateLogic(CHistoryManager& history)
    : SnapshotLogic(RotateTool, history), m_entry(history.m_tempDir + QStringLiteral("Rotatetmp.bin")) {}

void CRotateLogic::ForgetAll() {
    SnapshotLogic::ForgetAll();
    m_work = {};
}

void CRotateLogic::TakeSource(const Bitmap& picture) {
    SnapshotLogic::TakeSource(picture);
    m_work = {};
    m_work.source = picture;
}

std::function<void()> CRotateLogic::RememberTool() {
    return [this, base = SnapshotLogic::RememberTool(), work = m_work] {
        base();
        m_work = work;
    };
}

void CRotateLogic::DragAngle(int degrees) {
    if (!m_work.source || degrees == m_work.state.Angle()) return;
    Whole([&] {
        StartDrag();
        m_work.state.SetAngle(degrees);
        const ViewGeometry geometry = DragGeometry();
        const QSize shown = geometry.ScreenRect().size();
        const Bitmap& scaled = ScaledSource(geometry.Zoom());
        const double scale = scaled.Width() / (m_work.source.Width() * geometry.Zoom());
        const Bitmap turned = PC_Dsp::MultiRotateInto(scaled, degrees, scale, shown.width(), shown.height());
        ShowStandIn(turned, geometry, !IsRecorded());
        return true;
    });
}

// Made from `from`, in parts of the source's size.
Bitmap CRotateLogic::ScaledBy(const Bitmap& from, double scale) const {
    return PC_Dsp::Resample(from, TruncateSide(m_work.source.Width() * scale),
                            TruncateSide(m_work.source.Height() * scale));
}

// The smallest that is not shown enlarged at this zoom.
const Bitmap& CRotateLogic::ScaledSource(double zoom) {
    std::size_t n = 0;
    while (n + 1 < DragScales.size() && zoom <= m_work.dragZoom * DragScales[n + 1]) ++n;
    for (const std::size_t made : {std::size_t{0}, n})
        if (!m_work.scaledSource[made])
            m_work.scaledSource[made] =
                ScaledBy(made == 0 ? m_work.source : m_work.scaledSource[0], m_work.dragZoom * DragScales[made]);
    return m_work.scaledSource[n];
}

void CRotateLogic::SetAngle(int degrees) {
    if (!m_work.source || (!m_work.dragging && degrees == m_work.state.Angle())) return;
    StartDrag();
    m_work.state.SetAngle(degrees);
    FinishDrag();
}

// The picture as it lies in the client, or would at its fit zoom: what is dragged is shown whole.
void CRotateLogic::StartDrag() {
    if (m_work.dragging) return;
    m_work.beforeDrag = {m_work.state, m_work.touched};
    m_work.touched = true;
    const ViewGeometry geometry = GeometryOfResult();
    m_work.dragZoom = geometry.CanDrag() ? geometry.FitZoom() : geometry.Zoom();
    m_work.dragging = true;
}

void CRotateLogic::EndDrag() {
    m_work.dragging = false;
    m_work.scaledSource.fill({});
}

void CRotateLogic::FinishDrag() {
    if (!m_work.dragging) return;
    try {
        Whole([this] {
            const ViewGeometry geometry = DragGeometry();
            EndDrag();
            ShowResult(geometry);
            return true;
        });
    } catch (const std::bad_alloc&) {
        CancelDrag();
        throw;
    }
}

// The result of before the drag is still there.
void CRotateLogic::CancelDrag() {
    EndDrag();
    std::tie(m_work.state, m_work.touched) = m_work.beforeDrag;
    Replace(Picture(), GeometryOfResult(), !IsRecorded());
}

// The geometry with the size that the result has or will have.
ViewGeometry CRotateLogic::GeometryOfResult() const {
    ViewGeometry geometry = Geometry();
    const bool shown = geometry.HasPicture();
    int width = 0, height = 0;
    PC_Dsp::MultiRotateSize(m_work.source.Width(), m_work.source.Height(), m_work.state.Angle(), &width, &height);
    geometry.SetImage({width, height});
    if (!shown) geometry.Fit();
    return geometry;
}

ViewGeometry CRotateLogic::DragGeometry() const {
    ViewGeometry geometry = GeometryOfResult();
    geometry.SetZoom(m_work.dragZoom);
    if (geometry.CanDrag()) geometry.Fit();
    return geometry;
}

void CRotateLogic::ShowResult(const ViewGeometry& geometry) {
    Replace(Turned(m_work.source, m_work.state.Angle()), geometry, !IsRecorded());
}

void CRotateLogic::Reorient(RotateFlipType type, void (RotateState::*count)(), Fit fit) {
    if (!m_work.source) return;
    Whole([&] {
        EndDrag();
        PC_Dsp::SingleRotate(m_work.source, type);
        m_work.touched = true;
        (m_work.state.*count)();
        ViewGeometry geometry = GeometryOfResult();
        if (fit == Fit::Anew) geometry.Fit();
        ShowResult(geometry);
        return true;
    });
}

void CRotateLogic::TurnLeft() {
    Reorient(Rotate270FlipNone, &RotateState::TurnLeft, Fit::Anew);
}

void CRotateLogic::TurnRight() {
    Reorient(Rotate90FlipNone, &RotateState::TurnRight, Fit::Anew);
}

void CRotateLogic::FlipLeftRight() {
    Reorient(RotateNoneFlipX, &RotateState::FlipLeftRight, Fit::Keep);
}

void CRotateLogic::FlipTopBottom() {
    Reorient(RotateNoneFlipY, &RotateState::FlipTopBottom, Fit::Keep);
}

bool CRotateLogic::RestoreEntry() {
    if (!m_work.source) return false;
    return Whole([this] {
        const Bitmap entry = m_entry.Read();
        if (!entry) return false;
        const RotateState recorded = m_work.recorded;
        TakeSource(entry);
        m_work.recorded = recorded;
        ViewGeometry geometry = GeometryOfResult();
        geometry.Fit();
        ShowResult(geometry);
        return true;
    });
}

Bitmap CRotateLogic::RenderResult() {
    FinishDrag();
    return SnapshotLogic::RenderResult();
}

void CRotateLogic::OnStepCommitted() {
    SnapshotLogic::OnStepCommitted();
    m_work.recorded = m_work.state;
}
