// SPDX-License-Identifier: GPL-3.0-or-later
#include "SizeLogic.h"

#include "CObjProgress.h"
#include "PC_Dsp.h"

namespace {

bool MayBecome(int side, int present) {
    return side == present || (side >= CSizeLogic::LeastSide && side <= CSizeLogic::MostSide);
}

}  // namespace

CSizeLogic::CSizeLogic(CHistoryManager& history)
    : SnapshotLogic(QStringLiteral("ids_chicun"), history),
      m_entry(history.m_tempDir + QStringLiteral("Sizetmp.bin")) {}

void CSizeLogic::OnSource() {
    m_entry.Keep(Picture());
}

bool CSizeLogic::Resize(int w, int h, CObjProgress* progress) {
    const QSize present = ImageSize();
    if (!HasPicture() || QSize(w, h) == present) return false;
    if (!MayBecome(w, present.width()) || !MayBecome(h, present.height())) return false;
    const Bitmap entry = m_entry.Read();
    if (!entry) return false;
    const Bitmap result = PC_Dsp::Resample(entry, w, h, progress);
    if (!result) return false;
    Replace(result);
    return true;
}
