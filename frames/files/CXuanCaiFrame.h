// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FrameFile.h"
#include "ProgressSpan.h"

// An ornate frame: a picture laid over the whole of the user's, by its alpha or in a blend mode. The result has the
// picture's size. The file's layout stands in docs/formats.md.
class CXuanCaiFrame : public CFrameFile {
  public:
    // Lays the overlay over `picture`. False without a frame, for a null picture, and when `span` stopped it; the
    // picture is then as it was. A frame without an overlay leaves it too, and that is success.
    bool Compose(Bitmap& picture, const ProgressSpan& span = {});

    // The picture of the first composition before the overlay and after it; null before.
    const Bitmap& Before() const { return m_before; }
    const Bitmap& After() const { return m_after; }

  protected:
    FrameFault Sniff(const FrameBytes& head, std::uint64_t total) const override;
    FrameFault Parse(const FrameBytes& bytes) override;
    void Forget() override;

  private:
    // The rectangle of the overlay, turned or not, that covers the picture.
    struct Fit {
        Bitmap overlay;
        int x = 0, y = 0, width = 0, height = 0;
    };
    Fit FitTo(const Bitmap& picture) const;
    Bitmap Laid(const Bitmap& picture, const ProgressSpan& span) const;

    bool m_loaded = false;
    bool m_mayRotate = false, m_keepRatio = false, m_stretch = false;
    int m_blendMode = 0;
    Bitmap m_overlay;
    Bitmap m_before, m_after;
};
