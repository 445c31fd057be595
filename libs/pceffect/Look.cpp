// SPDX-License-Identifier: GPL-3.0-or-later
#include "Look.h"

#include <cmath>

#include "EffectKernels.h"
#include "Rows.h"

namespace {

// A stretch of a row whose maps stay in the first cache, and the room that kernels may read beyond it.
constexpr int Stretch = 256;
constexpr int Beyond = 16;

// What one pass over the picture needs.
struct Pass {
    const Lattice& lattice;
    const PlaceMap* place = nullptr;
    const GrainTiles* grain = nullptr;
};

void RunBand(const Pass& pass, unsigned char* pixels, int width, int first, int last) {
    const EffectKernels& kernels = EffectKernelsInUse();
    const LatticeView& lattice = pass.lattice.View();
    std::vector<std::int16_t> nodes;
    alignas(64) std::int16_t place[(Stretch + Beyond) * PlaceNumbers] = {};
    alignas(64) std::int8_t noise[Stretch + Beyond] = {};
    for (int y = first; y < last; ++y) {
        unsigned char* const row = pixels + std::ptrdiff_t{4} * width * y;
        const auto dither = [&](int x) {
            return Dither{unsigned(x) * DitherStepX + unsigned(y) * DitherStepY, DitherReach};
        };
        if (!pass.place && !pass.grain) {
            kernels.lookRow(row, width, lattice, nullptr, nullptr, dither(0));
            continue;
        }
        if (pass.place) pass.place->RowAt(y, nodes);
        for (int x = 0; x < width; x += Stretch) {
            const int count = std::min(Stretch, width - x);
            if (pass.place) kernels.spreadRow(nodes.data(), pass.place->Grid().shift, x, count, place);
            if (pass.grain) pass.grain->Row(y, x, count, noise);
            kernels.lookRow(row + std::ptrdiff_t{4} * x, count, lattice, pass.place ? place : nullptr,
                            pass.grain ? noise : nullptr, dither(x));
        }
    }
}

}  // namespace

Look::Look(const Recipe& recipe)
    : m_recipe(recipe),
      m_colours(recipe),
      m_lattice(
          Lattice::Size::Usual,
          [this](const Triple& colour) {
              const Triple result = m_colours.At(colour);
              return Lattice::Sample{result, m_recipe.grain.amount > 0 ? m_colours.GrainAt(result) : 0.0};
          },
          m_recipe.KeepsEnds() ? 1 : 0) {}

std::shared_ptr<const GrainTiles> Look::TilesFor(double diagonal) const {
    const double size = m_recipe.grain.size * 0.001 * diagonal;
    const std::lock_guard guard(m_lock);
    if (!m_tiles || m_tileSize != size) {
        m_tiles = std::make_shared<GrainTiles>(size);
        m_tileSize = size;
    }
    return m_tiles;
}

int Look::Apply(unsigned char* pixels, int width, int height, const ProgressSpan& span) const {
    if (!span.CanContinue()) return 0;
    const LookRun run(*this, pixels, width, height);
    return RunRows(span, height, GrainOf(width), [&](int first, int last) { run.Rows(pixels, first, last); });
}

LookRun::LookRun(const Look& look, const unsigned char* pixels, int width, int height) : m_look(look), m_width(width) {
    const NodeGrid grid = NodeGrid::For(width, height);
    const Recipe& recipe = look.GetRecipe();
    if (recipe.NeedsPlace()) m_place.emplace(recipe, look.Colours(), grid, pixels);
    if (recipe.grain.amount > 0) m_tiles = look.TilesFor(grid.Diagonal());
}

void LookRun::Rows(unsigned char* pixels, int first, int last) const {
    RunBand({m_look.Colour3D(), m_place ? &*m_place : nullptr, m_tiles.get()}, pixels, m_width, first, last);
}

int ApplyLattice(const Lattice& lattice, unsigned char* pixels, int width, int height, const ProgressSpan& span) {
    if (!span.CanContinue()) return 0;
    return RunRows(span, height, GrainOf(width),
                   [&](int first, int last) { RunBand({lattice}, pixels, width, first, last); });
}
