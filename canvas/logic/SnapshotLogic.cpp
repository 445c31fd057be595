// SPDX-License-Identifier: GPL-3.0-or-later
#include "SnapshotLogic.h"

void SnapshotLogic::Replace(const Bitmap& picture) {
    ViewGeometry geometry = Geometry();
    geometry.SetImage({picture.Width(), picture.Height()});
    geometry.Fit();
    Replace(picture, geometry, true);
}

void SnapshotLogic::Replace(const Bitmap& picture, const ViewGeometry& geometry, bool dirty) {
    m_state = {picture, {}, dirty};
    ShowLayers(geometry);
}

void SnapshotLogic::ShowStandIn(const Bitmap& standIn, const ViewGeometry& geometry, bool dirty) {
    m_state.standIn = standIn;
    m_state.dirty = dirty;
    ShowLayers(geometry);
}

std::unique_ptr<CHistoryStep> SnapshotLogic::BuildStep(bool) {
    return HasPicture() && HasWork() ? NewStep(RenderResult(), true) : nullptr;
}

bool SnapshotLogic::LoadStep(std::unique_ptr<CHistoryStep> step) {
    if (!step || !step->Image()) return false;
    const Bitmap picture = step->ReadImage();
    if (!picture) return false;
    SetSource(picture);
    return true;
}
