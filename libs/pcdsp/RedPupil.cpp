// SPDX-License-Identifier: GPL-3.0-or-later
#include "RedPupil.h"

#include <cmath>
#include <vector>

#include "MarkGroups.h"

// Light that comes back from the back of an eye is far redder than anything in a face: its red is more than twice the
// larger of green and blue. Patches of such pixels are pupils if they are round and if what lies right round them, the
// iris, has little red and is not as light as skin; of several that have their middle in the rectangle the best one is
// taken. Patches are judged whole, beyond the rectangle too, so that a part of a lip is not taken for something round.
//
// A pixel of the patch's rim is a mixture of pupil and iris, its red excess telling the parts. The pupil's part is
// replaced by a dark grey of its own light, the iris's part stays. A highlight has no red excess and is not touched.

namespace {

constexpr float LeastRatio = 1.9f;    // red to the larger of green and blue
constexpr float LeastExcess = 40.0f;  // and red less that, in levels
constexpr int LeastPixels = 9;
constexpr float Roundest = 2.2f;                        // longer to shorter axis
constexpr float LeastFilled = 0.82f;                    // of the ellipse of the same moments
constexpr int Rim = 2;                                  // pixels round the patch that may be mixtures
constexpr float RingExcess = 0.4f;                      // the iris's red excess in parts of the pupil's
constexpr float SkinExcess = 18.0f, SkinLuma = 115.0f;  // medians of a ring that is skin, not iris
constexpr float DarkLevel = 26.0f;                      // grey level of the repaired pupil

struct View {
    const std::uint8_t* pixels;
    int width;
    const std::uint8_t* At(int x, int y) const { return pixels + 4 * (std::ptrdiff_t{width} * y + x); }
};

float Excess(const std::uint8_t* p) {
    return static_cast<float>(p[2]) - static_cast<float>(std::max(p[0], p[1]));
}

bool IsRed(const std::uint8_t* p) {
    return Excess(p) >= LeastExcess && p[2] >= LeastRatio * static_cast<float>(std::max(p[0], p[1]));
}

// The value that `part` of all lie below.
float Quantile(std::vector<float>& values, double part) {
    if (values.empty()) return 0.0f;
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

// A patch with its gaps filled, on a map of its box and a rim.
struct Blob {
    PixelRect box;  // with room for what is looked at round the patch
    std::vector<std::uint8_t> inside;
    double area = 0.0, x = 0.0, y = 0.0;
    double longAxis = 0.0, shortAxis = 0.0;  // half axes of the ellipse of the same moments

    Blob(const MarkGroup& group, int room);
    std::size_t IndexOf(int u, int v) const { return std::size_t(box.Width()) * (v - box.top) + (u - box.left); }
    // The distance to the patch up to `room`, in whole steps; 0 inside.
    std::vector<std::uint8_t> Distances(int room) const;
    // Leaves only what `keep` says of (x, y), fills gaps again and measures again.
    template <class Keep>
    void Narrow(const Keep& keep) {
        for (int v = box.top; v < box.bottom; ++v)
            for (int u = box.left; u < box.right; ++u)
                if (inside[IndexOf(u, v)] && !keep(u, v)) inside[IndexOf(u, v)] = 0;
        FillGaps();
        Measure();
    }

  private:
    void FillGaps();
    void Measure();
};

Blob::Blob(const MarkGroup& group, int room)
    : box(group.box.Grown(room + 1)), inside(std::size_t(box.Width()) * box.Height(), 0) {
    for (const MarkRun& run : group.runs)
        std::fill_n(inside.begin() + static_cast<std::ptrdiff_t>(IndexOf(run.left, run.y)), run.right - run.left, 1);
    FillGaps();
    Measure();
}

// What can't be reached from the box's corner is inside: highlights.
void Blob::FillGaps() {
    std::vector<std::uint8_t> outside(inside.size(), 0);
    std::vector<std::size_t> next{0};
    outside[0] = 1;
    const std::size_t width = box.Width();
    while (!next.empty()) {
        const std::size_t at = next.back();
        next.pop_back();
        const std::size_t column = at % width;
        const auto visit = [&](std::size_t to) {
            if (inside[to] || outside[to]) return;
            outside[to] = 1;
            next.push_back(to);
        };
        if (column > 0) visit(at - 1);
        if (column + 1 < width) visit(at + 1);
        if (at >= width) visit(at - width);
        if (at + width < inside.size()) visit(at + width);
    }
    for (std::size_t i = 0; i < inside.size(); ++i) inside[i] = !outside[i];
}

void Blob::Measure() {
    double xx = 0.0, xy = 0.0, yy = 0.0;
    area = x = y = 0.0;
    const auto forInside = [&](const auto& body) {
        for (int v = box.top; v < box.bottom; ++v)
            for (int u = box.left; u < box.right; ++u)
                if (inside[IndexOf(u, v)]) body(u, v);
    };
    forInside([&](int u, int v) {
        area += 1.0;
        x += u;
        y += v;
    });
    if (area == 0.0) return;
    x /= area;
    y /= area;
    forInside([&](int u, int v) {
        xx += (u - x) * (u - x);
        xy += (u - x) * (v - y);
        yy += (v - y) * (v - y);
    });
    // A pixel has an extent of its own.
    xx = xx / area + 1.0 / 12.0;
    yy = yy / area + 1.0 / 12.0;
    xy /= area;
    const double mean = 0.5 * (xx + yy), half = std::hypot(0.5 * (xx - yy), xy);
    longAxis = 2.0 * std::sqrt(mean + half);
    shortAxis = 2.0 * std::sqrt(std::max(mean - half, 1e-6));
}

std::vector<std::uint8_t> Blob::Distances(int room) const {
    std::vector<std::uint8_t> ways(inside.size());
    for (std::size_t i = 0; i < ways.size(); ++i) ways[i] = inside[i] ? 0 : 255;
    const int width = box.Width(), height = box.Height();
    for (int step = 1; step <= room; ++step) {
        // Every other step goes over corners too, which makes octagons.
        const std::vector<std::uint8_t> last = ways;
        for (int v = 1; v + 1 < height; ++v)
            for (int u = 1; u + 1 < width; ++u) {
                const std::size_t at = std::size_t(width) * v + u;
                if (last[at] != 255) continue;
                const auto has = [&](int dx, int dy) { return last[at + std::ptrdiff_t{width} * dy + dx] != 255; };
                bool near = has(-1, 0) || has(1, 0) || has(0, -1) || has(0, 1);
                if (step % 2 == 0) near = near || has(-1, -1) || has(1, -1) || has(-1, 1) || has(1, 1);
                if (near) ways[at] = static_cast<std::uint8_t>(step);
            }
    }
    return ways;
}

// A patch that is a pupil, and what its pixels are mixed of.
struct Pupil {
    Blob blob;
    std::vector<std::uint8_t> ways;
    float redExcess = 0.0f, irisExcess = 0.0f, irisMost = 0.0f, grey = 0.0f;
    double score = 0.0;
};

// The light of a pixel but for what is too much red.
float GreyOf(const std::uint8_t* p) {
    const float blue = p[0], green = p[1], red = std::min(static_cast<float>(p[2]), std::max(blue, green));
    return 0.0722f * blue + 0.7152f * green + 0.2126f * red;
}

bool IsRound(const Blob& blob) {
    return blob.area >= LeastPixels && blob.longAxis <= Roundest * blob.shortAxis &&
           blob.area >= LeastFilled * 3.14159265 * blob.longAxis * blob.shortAxis;
}

// Measures a patch and narrows it to what is more pupil than iris; false when it is no pupil.
bool Judge(const View& view, const PixelRect& picture, const PixelRect& rect, Pupil& pupil) {
    Blob& blob = pupil.blob;
    if (!IsRound(blob) || blob.x < rect.left || blob.x >= rect.right || blob.y < rect.top || blob.y >= rect.bottom)
        return false;
    const int ring = std::max(2, static_cast<int>(0.5 * blob.shortAxis));
    const std::vector<std::uint8_t> ways = blob.Distances(Rim + ring);
    std::vector<float> red, iris, greys, lumas;
    const PixelRect seen = blob.box.Within(picture);
    for (int v = seen.top; v < seen.bottom; ++v)
        for (int u = seen.left; u < seen.right; ++u) {
            const int way = ways[blob.IndexOf(u, v)];
            const std::uint8_t* const p = view.At(u, v);
            if (way == 0 && IsRed(p)) {
                red.push_back(Excess(p));
                greys.push_back(GreyOf(p));
            } else if (way > Rim && way <= Rim + ring) {
                iris.push_back(std::max(0.0f, Excess(p)));
                lumas.push_back(0.0722f * p[0] + 0.7152f * p[1] + 0.2126f * p[2]);
            }
        }
    if (iris.empty()) return false;
    pupil.redExcess = Quantile(red, 0.5);
    pupil.irisExcess = Quantile(iris, 0.5);
    pupil.grey = Quantile(greys, 0.5);
    if (pupil.irisExcess > RingExcess * pupil.redExcess) return false;
    if (pupil.irisExcess > SkinExcess && Quantile(lumas, 0.5) > SkinLuma) return false;
    pupil.irisMost = std::max(pupil.irisExcess, Quantile(iris, 0.9));
    const float limit = 0.5f * (pupil.redExcess + pupil.irisExcess);
    blob.Narrow([&](int u, int v) {
        return u < seen.left || u >= seen.right || v < seen.top || v >= seen.bottom || !IsRed(view.At(u, v)) ||
               Excess(view.At(u, v)) >= limit;
    });
    if (!IsRound(blob)) return false;
    pupil.ways = blob.Distances(Rim);
    pupil.score = pupil.redExcess * std::sqrt(blob.area) * blob.shortAxis / blob.longAxis;
    return true;
}

// How much of a pixel the pupil is, by its red excess; inside also by any other strong colour, which the rim of a
// highlight may have.
float ShareOf(const std::uint8_t* p, const Pupil& pupil, bool isInside) {
    const float from = std::min(pupil.irisMost, 0.6f * pupil.redExcess);
    const float share = (Excess(p) - from) / std::max(1.0f, 0.85f * pupil.redExcess - from);
    const auto [least, most] = std::minmax({p[0], p[1], p[2]});
    const float tinted = isInside ? (static_cast<float>(most - least) - 20.0f) / 40.0f : 0.0f;
    return std::clamp(std::max(share, tinted), 0.0f, 1.0f);
}

void Darken(std::uint8_t* pixels, int width, const PixelRect& rect, const Pupil& pupil) {
    const PixelRect part = pupil.blob.box.Within(rect);
    const float factor = std::min(0.8f, DarkLevel / std::max(1.0f, pupil.grey));
    for (int y = part.top; y < part.bottom; ++y)
        for (int x = part.left; x < part.right; ++x) {
            const int way = pupil.ways[pupil.blob.IndexOf(x, y)];
            if (way > Rim) continue;
            std::uint8_t* const p = pixels + 4 * (std::ptrdiff_t{width} * y + x);
            const float share = ShareOf(p, pupil, way == 0);
            if (share <= 0.0f) continue;
            // A mixture with white is part of the highlight's rim and stays lighter.
            const auto least = static_cast<float>(std::min({p[0], p[1], p[2]}));
            const float grey = 0.5f * (GreyOf(p) + least);
            const float light = std::clamp((least - pupil.grey - 20.0f) / 120.0f, 0.0f, 1.0f);
            const float dark = grey * (factor + (1.0f - factor) * light * light);
            // What the pupil added to the pixel is its red excess.
            const float most = std::max(static_cast<float>(p[0]), static_cast<float>(p[1]));
            const float left[] = {float(p[0]), float(p[1]),
                                  std::min(float(p[2]), most + (1.0f - share) * pupil.irisExcess)};
            for (int c = 0; c < 3; ++c)
                p[c] = static_cast<std::uint8_t>(std::clamp(left[c] + share * (dark - left[c]) + 0.5f, 0.0f, 255.0f));
        }
}

}  // namespace

void DarkenRedPupil(Bitmap& bitmap, const PixelRect& rect) {
    const int width = bitmap.Width(), height = bitmap.Height();
    const PixelRect picture{0, 0, width, height};
    const PixelRect looked = rect.Grown(std::max(rect.Width(), rect.Height()) / 2 + 2 * Rim).Within(picture);
    const View view{bitmap.Pixels(), width};
    std::vector<MarkRun> runs;
    for (int y = looked.top; y < looked.bottom; ++y)
        for (int x = looked.left; x < looked.right; ++x) {
            if (!IsRed(view.At(x, y))) continue;
            const int left = x;
            while (x < looked.right && IsRed(view.At(x, y))) ++x;
            runs.push_back({y, left, x});
        }
    std::vector<Pupil> pupils;
    for (const MarkGroup& group : GroupsOf(runs)) {
        if (group.box.Width() * double(group.box.Height()) < LeastPixels) continue;
        const int room = Rim + std::max(2, std::max(group.box.Width(), group.box.Height()) / 4 + 1);
        // What runs out of sight can't be judged.
        const PixelRect box = group.box, sight = box.Grown(1).Within(picture).Within(looked);
        if (sight.left != std::max(box.left - 1, 0) || sight.top != std::max(box.top - 1, 0) ||
            sight.right != std::min(box.right + 1, width) || sight.bottom != std::min(box.bottom + 1, height))
            continue;
        Pupil pupil{Blob(group, room), {}};
        if (Judge(view, picture, rect, pupil)) pupils.push_back(std::move(pupil));
    }
    const auto best = std::max_element(pupils.begin(), pupils.end(),
                                       [](const Pupil& a, const Pupil& b) { return a.score < b.score; });
    if (best != pupils.end()) Darken(bitmap.MutablePixels(), width, rect, *best);
}
