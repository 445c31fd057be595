// SPDX-License-Identifier: GPL-3.0-or-later
#include "SizeLogic.h"

#include <QtCore/QFile>

#include "AppPaths.h"
#include "CObjProgress.h"
#include "PC_Dsp.h"
#include "PC_File.h"

namespace {

bool MayBecome(int side, int present) {
    return side == present || (side >= CSizeLogic::LeastSide && side <= CSizeLogic::MostSide);
}

}  // namespace

CSizeLogic::CSizeLogic(CHistoryManager& history)
    : SnapshotLogic(QStringLiteral("ids_chicun"), history),
      m_tempFilePath(history.m_tempDir + QStringLiteral("Sizetmp.bin")) {}

CSizeLogic::~CSizeLogic() {
    QFile::remove(m_tempFilePath);
}

void CSizeLogic::OnSource() {
    MakeDirs(History().m_tempDir);
    const bool written = PC_File::ImageSaveTobinary(Picture(), m_tempFilePath.toStdWString());
    m_keptEntry = written ? Bitmap() : Picture();
}

Bitmap CSizeLogic::EntryPicture() const {
    return m_keptEntry ? m_keptEntry : PC_File::ImageReadFrombinary(m_tempFilePath.toStdWString());
}

bool CSizeLogic::Resize(int w, int h, CObjProgress* progress) {
    const QSize present = ImageSize();
    if (!HasPicture() || QSize(w, h) == present) return false;
    if (!MayBecome(w, present.width()) || !MayBecome(h, present.height())) return false;
    const Bitmap entry = EntryPicture();
    if (!entry) return false;
    const Bitmap result = PC_Dsp::Resample(entry, w, h, progress);
    if (!result) return false;
    Replace(result);
    return true;
}
