// SPDX-License-Identifier: GPL-3.0-or-later
#include "SnapshotLogic.h"

#include <cstring>

#include "PC_Dsp.h"

namespace {

// What a part of a picture held, until it is put back.
class KeptPart {
  public:
    // `part` lies within the picture.
    KeptPart(const Bitmap& picture, const QRect& part)
        : m_part(part), m_pixels(PC_Dsp::Clone(picture, part.x(), part.y(), part.width(), part.height())) {}
    void PutBack(Bitmap& picture) const {
        std::uint8_t* to = picture.MutablePixels() + m_part.y() * picture.Stride() + std::ptrdiff_t{4} * m_part.x();
        for (int y = 0; y < m_part.height(); ++y, to += picture.Stride())
            std::memcpy(to, m_pixels.Row(y), static_cast<std::size_t>(m_pixels.Stride()));
    }

  private:
    const QRect m_part;
    const Bitmap m_pixels;
};

}  // namespace

std::optional<QRect> SnapshotLogic::Change(const QRect& part, const std::function<bool(Bitmap&)>& change) {
    const QRect inside = part.intersected(QRect(QPoint(0, 0), ImageSize()));
    if (part.isEmpty() || inside.isEmpty()) return std::nullopt;
    m_state.picture.MutablePixels();
    const KeptPart before(m_state.picture, inside);
    try {
        if (change(m_state.picture)) {
            const QRect shown = ShowPart(inside);
            m_state.dirty = true;
            return shown;
        }
    } catch (...) {
        before.PutBack(m_state.picture);
        ShowValues();  // the view may have lost what it showed
        throw;
    }
    before.PutBack(m_state.picture);
    return std::nullopt;
}

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
