// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "ColourPart.h"
#include "Nodes.h"
#include "Recipe.h"

// What a recipe does by position, as a gain and a light per channel at each node: colour * gain + light. In this order:
// soft edges mix in a blurred picture; glow and halation are laid over as light (screen: 1 - (1 - a)(1 - b)); the
// vignette darkens; leaks are laid over as light.
class PlaceMap {
  public:
    // `pixels` is the picture before the look; only a recipe that needs neighbours reads it.
    PlaceMap(const Recipe& recipe, const ColourPart& colours, const NodeGrid& grid, const std::uint8_t* pixels);

    const NodeGrid& Grid() const { return m_grid; }
    // The nodes of pixel row y in the form that the kernels read: PlaceNumbers for each of Grid().columns.
    void RowAt(int y, std::vector<std::int16_t>& nodes) const;

  private:
    struct Node {
        NodeColour gain{1.0f, 1.0f, 1.0f};
        NodeColour light{};
    };
    void MixEdges(const Recipe& recipe, const NodeLayer& graded);
    void LayLight(const NodeLayer& light);
    void LayBloom(const Bloom& bloom, const NodeLayer& graded);
    void Darken(const Recipe& recipe);

    NodeGrid m_grid;
    std::vector<Node> m_nodes;
};
