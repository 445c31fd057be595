// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpotPlace.h"

#include "Rows.h"

namespace {

constexpr float Reach = 3.5f;  // radii from which patches are taken
constexpr int Margin = 8;      // and so many pixels, for the smallest marks

PixelRect AreaOf(const PixelRect& group, int width, int height) {
    const int side = std::max(group.Width(), group.Height());
    return group.Grown(static_cast<int>(Reach * 0.5f * static_cast<float>(side)) + Margin)
        .Within({0, 0, width, height});
}

}  // namespace

SpotPlace::SpotPlace(const std::uint8_t* pixels, int width, int height, const std::vector<MarkRun>& all,
                     const MarkGroup& group, const Pace& pace)
    : area(AreaOf(group.box, width, height)),
      hole(group.box.Moved(-area.left, -area.top)),
      radius(0.5f * static_cast<float>(std::max(hole.Width(), hole.Height()))),
      colours(Colours, area.Width(), area.Height()),
      holes(area.Width(), area.Height()) {
    pace.ForRows(holes.height, GrainOf(holes.width), [&](int top, int bottom) {
        for (int y = top; y < bottom; ++y) {
            const std::uint8_t* from = pixels + 4 * (std::ptrdiff_t{width} * (area.top + y) + area.left);
            float* const rows[] = {colours.Row(0, y), colours.Row(1, y), colours.Row(2, y)};
            for (int x = 0; x < holes.width; ++x, from += 4)
                for (int c = 0; c < Colours; ++c) rows[c][x] = from[c];
        }
    });
    const auto first =
        std::lower_bound(all.begin(), all.end(), area.top, [](const MarkRun& run, int y) { return run.y < y; });
    for (auto run = first; run != all.end() && run->y < area.bottom; ++run) Mark(*run, HoleMap::Other);
    for (const MarkRun& run : group.runs) Mark(run, HoleMap::Own);
}

void SpotPlace::Mark(const MarkRun& run, std::uint8_t bit) {
    const PixelRect part = PixelRect{run.left, run.y, run.right, run.y + 1}.Within(area);
    if (part.IsEmpty()) return;
    std::uint8_t* const row = holes.Row(run.y - area.top);
    std::fill(row + (part.left - area.left), row + (part.right - area.left), bit);
}
