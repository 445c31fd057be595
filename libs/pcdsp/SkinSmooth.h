// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "ProgressSpan.h"
#include "ReducedCopy.h"

// The skin smoothing of PC_Dsp::CannyDericheBlur on checked arguments, sigma above 0. False when it was cancelled;
// every row is then either done or as it was.
bool SmoothSkin(std::uint8_t* pixels, int width, int height, float sigma, const std::uint8_t* mask,
                const ProgressSpan& span);

// The same as numbers, for who does more with skin in the same pass over the picture.
class SkinCorrection {
  public:
    // Uses all cores. Nothing is worked out yet, and the cells are the reduced picture.
    SkinCorrection(const std::uint8_t* pixels, int width, int height, float sigma);
    ~SkinCorrection();

    // False when it was cancelled. After it the cells hold the levels to add to red, green and blue.
    bool Work(const ProgressSpan& span);

    ReducedCopy& Cells();
    const ReducedCopy& Cells() const;
    // After Work: a row of the reduced picture without its grain.
    const float* FineRow(int colour, int y) const;
    double FaceWidth() const;
    // The part of what is uneven that goes where nothing speaks against it; a little more than 1 for a high sigma.
    float Strength() const;

  private:
    class Smoother;
    std::unique_ptr<Smoother> m_smoother;
};
