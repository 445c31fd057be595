// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "MapReader.h"
#include "ProgressSpan.h"
#include "Recipe.h"
#include "SkinSmooth.h"

// The part of a look of beauty that knows skin: smoothing, evening, light and colour of skin, and local contrast of
// everything else. It is worked out on reduced copies and laid on row by row. The mathematics stands in the source.
class FaceRetouch {
  public:
    // Uses all cores.
    FaceRetouch(const std::uint8_t* pixels, int width, int height, const Recipe::Face& face);
    ~FaceRetouch();

    // False when it was cancelled. Then there is nothing to lay on.
    bool Work(const ProgressSpan& span);
    // How many rows go well together.
    int Grain() const;

    // Lays it on rows, from above to below. One for each thread.
    class Rows {
      public:
        explicit Rows(const FaceRetouch& retouch);
        // Row y, which begins at `row`.
        void Apply(std::uint8_t* row, int y);

      private:
        const FaceRetouch& m_retouch;
        MapReader m_corrections, m_details;
    };

  private:
    struct Skin;
    // Adds all that skin gains to what smoothing adds.
    void Join();
    const ReducedCopy& Corrections() const { return m_smoothing.Cells(); }

    int m_width;
    const Recipe::Face m_face;
    SkinCorrection m_smoothing;
    ReducedCopy m_coarse;  // after Work its cells are the share of skin, and slope and offset of the base of the light
    std::unique_ptr<Skin> m_skin;
    std::unique_ptr<MapColumns> m_columns, m_coarseColumns;
};
