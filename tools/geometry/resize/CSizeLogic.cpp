// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSizeLogic.h"

#include "PC_Dsp.h"

namespace {

bool MayBecome(int side, int present) {
    return side == present || (side >= CSizeLogic::LeastSide && side <= CSizeLogic::MostSide);
}

}  // namespace

CSizeLogic::CSizeLogic(CHistoryManager& history)
    : SnapshotLogic(ResizeTool, history), m_entry(history.m_tempDir + QStringLiteral("Sizetmp.bin")) {}

bool CSizeLogic::Resize(int w, int h, CObjProgress* progress) {
    const QSize present = ImageSize();
    if (!HasPicture() || QSize(w, h) == present) return false;
    if (!MayBecome(w, present.width()) || !MayBecome(h, present.height())) return false;
    return Whole([&] {
        const Bitmap entry = m_entry.Read();
        const Bitmap result = PC_Dsp::Resample(entry, w, h, progress);
        if (result) Replace(result);
        return !result.IsNull();
    });
}
