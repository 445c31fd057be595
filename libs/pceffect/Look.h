// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <mutex>
#include <optional>

#include "ColourPart.h"
#include "GrainTiles.h"
#include "Lattice.h"
#include "PlaceMap.h"
#include "ProgressSpan.h"
#include "Recipe.h"

// A recipe made ready: its colour part folded into a lattice, its grain into tiles. Any thread, several at a time.
class Look {
  public:
    explicit Look(const Recipe& recipe);

    const Recipe& GetRecipe() const { return m_recipe; }
    const ColourPart& Colours() const { return m_colours; }
    const Lattice& Colour3D() const { return m_lattice; }

    // Changes the picture in place (see CEffect.h); 0 when the sink asked to stop.
    int Apply(unsigned char* pixels, int width, int height, const ProgressSpan& span) const;

  private:
    friend class LookRun;
    // The tiles for a picture of this diagonal; the last ones are kept.
    std::shared_ptr<const GrainTiles> TilesFor(double diagonal) const;

    const Recipe m_recipe;
    const ColourPart m_colours;
    const Lattice m_lattice;
    mutable std::mutex m_lock;
    mutable std::shared_ptr<const GrainTiles> m_tiles;
    mutable double m_tileSize = 0.0;
};

// A look made ready for one picture, for callers that go over its rows themselves. Rows may be done in any order and on
// several threads at a time, each once. The look must outlive it.
class LookRun {
  public:
    // Light that spreads is taken from the picture as it is now.
    LookRun(const Look& look, const unsigned char* pixels, int width, int height);

    // The rows from `first` to `last` - 1 of the picture at `pixels`.
    void Rows(unsigned char* pixels, int first, int last) const;

  private:
    const Look& m_look;
    int m_width;
    std::optional<PlaceMap> m_place;
    std::shared_ptr<const GrainTiles> m_tiles;
};

// The lattice alone on a picture; 0 when the sink asked to stop.
int ApplyLattice(const Lattice& lattice, unsigned char* pixels, int width, int height, const ProgressSpan& span);
