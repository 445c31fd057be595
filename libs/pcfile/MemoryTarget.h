// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "Bitmap.h"
#include "ColourToSrgb.h"
#include "PictureTarget.h"
#include "ProgressSpan.h"

// The target that the library itself hands to readers: collects the picture, then gives it upright and in sRGB.
class MemoryTarget final : public PictureTarget {
  public:
    explicit MemoryTarget(const ProgressSpan& span) : m_span(span) {}

    std::uint8_t* Begin(std::int64_t width, std::int64_t height) override;
    std::uint16_t* BeginDeep(std::int64_t width, std::int64_t height) override;
    void SetModel(Model model) override { m_colours.model = model; }
    void SetProfile(const void* bytes, std::size_t size) override;
    void SetChromaticities(const double (&xy)[8], double gamma) override;
    void SetOrientation(int orientation) override { m_orientation = orientation; }
    void SetExif(const std::uint8_t* bytes, std::size_t size) override;
    bool Report(double done) override;
    bool DecodeEmbeddedJpeg(const std::uint8_t* data, std::size_t size) override;

    // The finished picture, after a reader said that it arrived whole; null when none did.
    Bitmap Finish();

  private:
    ProgressSpan m_span;
    Bitmap m_picture;
    std::unique_ptr<std::uint16_t[]> m_deep;
    int m_deepWidth = 0;
    int m_deepHeight = 0;
    int m_orientation = 1;
    SourceColours m_colours;
};
