// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlaceMap.h"

#include <algorithm>
#include <cmath>

#include "EffectKernels.h"
#include "LeakLight.h"
#include "Parallel.h"

namespace {

double Smooth(double x) {
    const double t = std::clamp(x, 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

NodeLayer Graded(const ColourPart& colours, const NodeGrid& grid, const std::uint8_t* pixels) {
    NodeLayer layer = BlockMeans(grid, pixels);
    ForEachBand(grid.rows, 4, [&](int first, int last) {
        for (std::size_t i = std::size_t(first) * grid.columns; i < std::size_t(last) * grid.columns; ++i) {
            const Triple result = colours.At({layer[i][0], layer[i][1], layer[i][2]});
            for (int c = 0; c < 3; ++c) layer[i][c] = static_cast<float>(std::clamp(result[c], 0.0, 1.0));
        }
    });
    return layer;
}

}  // namespace

PlaceMap::PlaceMap(const Recipe& recipe, const ColourPart& colours, const NodeGrid& grid, const std::uint8_t* pixels)
    : m_grid(grid), m_nodes(grid.Count()) {
    if (recipe.NeedsNeighbours()) {
        const NodeLayer graded = Graded(colours, grid, pixels);
        if (recipe.edges.amount > 0) MixEdges(recipe, graded);
        if (recipe.glow.amount > 0) LayBloom(recipe.glow, graded);
        if (recipe.halation.amount > 0) LayBloom(recipe.halation, graded);
    }
    if (recipe.vignette.amount > 0) Darken(recipe);
    for (const Leak& leak : recipe.leaks)
        if (leak.strength > 0) LayLight(LeakLight(leak, grid));
}

void PlaceMap::MixEdges(const Recipe& recipe, const NodeLayer& graded) {
    NodeLayer blurred = graded;
    BlurLayer(m_grid, recipe.edges.radius * 0.001 * m_grid.Diagonal(), blurred);
    const double start = recipe.edges.start * 0.01;
    for (int row = 0; row < m_grid.rows; ++row)
        for (int column = 0; column < m_grid.columns; ++column) {
            const double x = std::abs(2 * m_grid.X(column) / m_grid.width - 1);
            const double y = std::abs(2 * m_grid.Y(row) / m_grid.height - 1);
            const double way = std::pow(std::pow(x, 2.6) + std::pow(y, 2.6), 1 / 2.6);
            const float share = static_cast<float>(recipe.edges.amount * 0.01 * Smooth((way - start) / (1 - start)));
            const std::size_t at = std::size_t(row) * m_grid.columns + column;
            for (int i = 0; i < 3; ++i) {
                m_nodes[at].gain[i] = 1 - share;
                m_nodes[at].light[i] = share * blurred[at][i];
            }
        }
}

void PlaceMap::LayLight(const NodeLayer& light) {
    for (std::size_t n = 0; n < m_nodes.size(); ++n)
        for (int i = 0; i < 3; ++i) {
            const float free = 1 - light[n][i];
            m_nodes[n].gain[i] *= free;
            m_nodes[n].light[i] = m_nodes[n].light[i] * free + light[n][i];
        }
}

void PlaceMap::LayBloom(const Bloom& bloom, const NodeLayer& graded) {
    NodeLayer light = graded;
    const double threshold = bloom.threshold * 0.01;
    for (NodeColour& c : light) {
        const double luma = 0.2126 * c[0] + 0.7152 * c[1] + 0.0722 * c[2];
        const double share = Smooth((luma - threshold) / (1 - threshold));
        for (float& v : c) v *= static_cast<float>(share);
    }
    BlurLayer(m_grid, bloom.radius * 0.001 * m_grid.Diagonal(), light);
    for (NodeColour& c : light)
        for (int i = 0; i < 3; ++i) c[i] *= static_cast<float>(bloom.amount * 0.01 * bloom.colour[i] / 255.0);
    LayLight(light);
}

void PlaceMap::Darken(const Recipe& recipe) {
    const Recipe::Vignette& v = recipe.vignette;
    const double diagonal = m_grid.Diagonal();
    // Half axes that end at the corners: of the ellipse in the picture's shape, and of the circle.
    const double round = v.round * 0.01;
    const double across = m_grid.width * (1 - round) / std::sqrt(2.0) + diagonal / 2 * round;
    const double down = m_grid.height * (1 - round) / std::sqrt(2.0) + diagonal / 2 * round;
    for (int row = 0; row < m_grid.rows; ++row)
        for (int column = 0; column < m_grid.columns; ++column) {
            const double dx = (m_grid.X(column) - v.x * 0.01 * m_grid.width) / across;
            const double dy = (m_grid.Y(row) - v.y * 0.01 * m_grid.height) / down;
            const double way = (std::hypot(dx, dy) - v.start * 0.01) / ((v.end - v.start) * 0.01);
            const double share = v.amount * 0.01 * Smooth(way);
            Node& node = m_nodes[std::size_t(row) * m_grid.columns + column];
            for (int i = 0; i < 3; ++i) {
                const float gain = static_cast<float>(1 - share * (1 - v.colour[i] / 255.0));
                node.gain[i] *= gain;
                node.light[i] *= gain;
            }
        }
}

void PlaceMap::RowAt(int y, std::vector<std::int16_t>& nodes) const {
    const double place = (2.0 * y + 1 + (1 << m_grid.shift)) / (2 << m_grid.shift);
    const int above = std::min(static_cast<int>(place), m_grid.rows - 2);
    const float part = static_cast<float>(place - above);
    const Node* a = &m_nodes[std::size_t(above) * m_grid.columns];
    const Node* b = a + m_grid.columns;
    nodes.resize(std::size_t(PlaceNumbers) * m_grid.columns);
    std::int16_t* to = nodes.data();
    for (int column = 0; column < m_grid.columns; ++column, ++a, ++b, to += PlaceNumbers) {
        float gains = 0.0f;
        for (int i = 0; i < 3; ++i) {
            const float gain = a->gain[i] + (b->gain[i] - a->gain[i]) * part;
            const float light = a->light[i] + (b->light[i] - a->light[i]) * part;
            gains += gain;
            to[2 - i] = static_cast<std::int16_t>(std::clamp(gain, 0.0f, 1.0f) * 32767.0f + 0.5f);
            to[6 - i] = static_cast<std::int16_t>(std::clamp(light, 0.0f, 1.0f) * 32512.0f + 0.5f);
        }
        to[3] = static_cast<std::int16_t>(std::clamp(gains / 3.0f, 0.0f, 1.0f) * 32767.0f + 0.5f);
        to[7] = 0;
    }
}
