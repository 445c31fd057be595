// SPDX-License-Identifier: GPL-3.0-or-later
#include "RotateLogic.h"

#include <new>

#include "Log.h"
#include "PC_Dsp.h"
#include "Truncate.h"

namespace {

// Null where it can't be made.
Bitmap Turned(const Bitmap& source, int degrees) {
    try {
        return PC_Dsp::MultiRotate(source, degrees, 0, 0, 0, 0);
    } catch (const std::bad_alloc&) {
        Log("[QUINCE]rotation of %d x %d by %d: out of memory", source.Width(), source.Height(), degrees);
        return {};
    }
}

}  // namespace

CRotateLogic::CRotateLogic(CHistoryManager& history)
    : SnapshotLogic(QStringLiteral("ids_xuanzhuan"), history),
      m_entry(history.m_tempDir + QStringLiteral("Rotatetmp.bin")) {}

void CRotateLogic::Reset() {
    SnapshotLogic::Reset();
    StartAnew({});
    m_recorded = {};
}

void CRotateLogic::OnSource() {
    StartAnew(Picture());
    m_recorded = {};
    m_entry.Keep(m_source);
}

void CRotateLogic::StartAnew(const Bitmap& source) {
    EndDrag();
    m_source = source;
    m_state = {};
    m_touched = false;
}

void CRotateLogic::DragAngle(int degrees) {
    if (!m_source || degrees == m_state.Angle()) return;
    StartDrag();
    m_state.SetAngle(degrees);
    const ViewGeometry geometry = DragGeometry();
    ShowStandIn(Turned(ScaledSource(geometry.Zoom()), degrees), geometry, !IsRecorded());
}

// The smallest that is not shown enlarged at this zoom.
const Bitmap& CRotateLogic::ScaledSource(double zoom) {
    std::size_t n = 0;
    while (n + 1 < DragScales.size() && zoom <= m_dragZoom * DragScales[n + 1]) ++n;
    for (const std::size_t made : {std::size_t{0}, n})
        if (!m_scaledSource[made])
            m_scaledSource[made] = PC_Dsp::Resample(made == 0 ? m_source : m_scaledSource[0],
                                                    TruncateSide(m_source.Width() * m_dragZoom * DragScales[made]),
                                                    TruncateSide(m_source.Height() * m_dragZoom * DragScales[made]));
    return m_scaledSource[n];
}

void CRotateLogic::SetAngle(int degrees) {
    if (!m_source || (!m_dragging && degrees == m_state.Angle())) return;
    StartDrag();
    m_state.SetAngle(degrees);
    FinishDrag();
}

// The picture as it lies in the client, or would at its fit zoom: what is dragged is shown whole.
void CRotateLogic::StartDrag() {
    m_touched = true;
    if (m_dragging) return;
    ViewGeometry geometry = GeometryOfResult();
    m_dragZoom = geometry.CanDrag() ? geometry.FitZoom() : geometry.Zoom();
    m_dragging = true;
}

void CRotateLogic::EndDrag() {
    m_dragging = false;
    m_scaledSource.fill({});
}

void CRotateLogic::FinishDrag() {
    if (!m_dragging) return;
    const ViewGeometry geometry = DragGeometry();
    EndDrag();
    ShowResult(geometry);
}

// The geometry with the size that the result has or will have.
ViewGeometry CRotateLogic::GeometryOfResult() const {
    ViewGeometry geometry = Geometry();
    const bool shown = geometry.HasPicture();
    int width = 0, height = 0;
    PC_Dsp::MultiRotateSize(m_source.Width(), m_source.Height(), m_state.Angle(), &width, &height);
    geometry.SetImage({width, height});
    if (!shown) geometry.Fit();
    return geometry;
}

ViewGeometry CRotateLogic::DragGeometry() const {
    ViewGeometry geometry = GeometryOfResult();
    geometry.SetZoom(m_dragZoom);
    if (geometry.CanDrag()) geometry.Fit();
    return geometry;
}

void CRotateLogic::ShowResult(const ViewGeometry& geometry) {
    const Bitmap result = Turned(m_source, m_state.Angle());
    Replace(result, geometry, result && !IsRecorded());
}

bool CRotateLogic::Reorient(RotateFlipType type) {
    if (!m_source) return false;
    try {
        PC_Dsp::SingleRotate(m_source, type);
    } catch (const std::bad_alloc&) {
        Log("[QUINCE]turn of %d x %d: out of memory", m_source.Width(), m_source.Height());
        return false;
    }
    EndDrag();
    m_touched = true;
    return true;
}

void CRotateLogic::TurnLeft() {
    if (!Reorient(Rotate270FlipNone)) return;
    m_state.TurnLeft();
    ViewGeometry geometry = GeometryOfResult();
    geometry.Fit();
    ShowResult(geometry);
}

void CRotateLogic::TurnRight() {
    if (!Reorient(Rotate90FlipNone)) return;
    m_state.TurnRight();
    ViewGeometry geometry = GeometryOfResult();
    geometry.Fit();
    ShowResult(geometry);
}

void CRotateLogic::FlipLeftRight() {
    if (!Reorient(RotateNoneFlipX)) return;
    m_state.FlipLeftRight();
    ShowResult(GeometryOfResult());
}

void CRotateLogic::FlipTopBottom() {
    if (!Reorient(RotateNoneFlipY)) return;
    m_state.FlipTopBottom();
    ShowResult(GeometryOfResult());
}

bool CRotateLogic::RestoreEntry() {
    const Bitmap entry = m_source ? m_entry.Read() : Bitmap();
    if (!entry) return false;
    StartAnew(entry);
    ViewGeometry geometry = GeometryOfResult();
    geometry.Fit();
    ShowResult(geometry);
    return true;
}

Bitmap CRotateLogic::RenderResult() {
    FinishDrag();
    return SnapshotLogic::RenderResult();
}

void CRotateLogic::Apply() {
    FinishDrag();
    SnapshotLogic::Apply();
}

std::unique_ptr<CHistoryStep> CRotateLogic::BuildStep(bool finalImage) {
    FinishDrag();
    return SnapshotLogic::BuildStep(finalImage);
}

void CRotateLogic::OnStepCommitted() {
    SnapshotLogic::OnStepCommitted();
    m_recorded = m_state;
}
