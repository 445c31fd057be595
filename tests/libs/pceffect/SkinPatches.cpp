// SPDX-License-Identifier: GPL-3.0-or-later
#include "SkinPatches.h"

#include <cmath>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "ColourDifference.h"
#include "PortraitBitmap.h"

namespace SkinPatches {

namespace {

// Wide enough for pores and full grain, and quick to paint.
constexpr int Width = 640;

struct Disc {
    double x, y, radius;
};

// The places of plain skin that the portrait tells, somewhat wider than it promises them.
std::vector<Disc> Places() {
    const QByteArray text = QByteArray::fromStdString(PortraitTruth(Width));
    const QJsonObject truth = QJsonDocument::fromJson(text).object();
    std::vector<Disc> discs;
    for (const QJsonValue& disc : truth.value(QStringLiteral("skin")).toArray()) {
        const QJsonValue centre = disc[QStringLiteral("centre")];
        discs.push_back({centre[0].toDouble(), centre[1].toDouble(), 1.6 * disc[QStringLiteral("radius")].toDouble()});
    }
    return discs;
}

bool AtAnEnd(int level) {
    return level == 0 || level == 255;
}

double LumaOf(const std::uint8_t* p) {
    return 0.0722 * p[0] + 0.7152 * p[1] + 0.2126 * p[2];
}

Patch Compared(const Bitmap& before, const Bitmap& after, const Disc& disc) {
    Patch patch{};
    double count = 0, clipped = 0, square = 0, product = 0, sums[2][3] = {};
    for (int y = static_cast<int>(disc.y - disc.radius); y <= disc.y + disc.radius; ++y)
        for (int x = static_cast<int>(disc.x - disc.radius); x <= disc.x + disc.radius; ++x) {
            if (std::hypot(x + 0.5 - disc.x, y + 0.5 - disc.y) > disc.radius) continue;
            const std::uint8_t *p = before.Row(y) + 4 * x, *q = after.Row(y) + 4 * x;
            ++count;
            bool newly = false;
            for (int c = 0; c < 3; ++c) {
                newly = newly || (AtAnEnd(q[c]) && !AtAnEnd(p[c]));
                sums[0][c] += p[c];
                sums[1][c] += q[c];
            }
            clipped += newly;
            square += LumaOf(p) * LumaOf(p);
            product += LumaOf(p) * LumaOf(q);
            patch.lumaBefore += LumaOf(p);
            patch.lumaAfter += LumaOf(q);
        }
    patch.newlyClipped = 100 * clipped / count;
    patch.lumaBefore /= count;
    patch.lumaAfter /= count;
    patch.contrast =
        (product / count - patch.lumaBefore * patch.lumaAfter) / (square / count - patch.lumaBefore * patch.lumaBefore);
    patch.chromaBefore = ChromaOf(LabOf(sums[0][2] / count, sums[0][1] / count, sums[0][0] / count));
    patch.chromaAfter = ChromaOf(LabOf(sums[1][2] / count, sums[1][1] / count, sums[1][0] / count));
    return patch;
}

}  // namespace

std::vector<Patch> Measure(const Apply& apply) {
    static const std::vector<Disc> places = Places();
    static const std::vector<Bitmap> portraits = [] {
        std::vector<Bitmap> painted;
        for (const std::uint32_t tone : Tones) painted.push_back(PortraitBitmap(Width, tone));
        return painted;
    }();
    std::vector<Patch> patches;
    for (std::size_t tone = 0; tone < portraits.size(); ++tone) {
        Bitmap after = portraits[tone].Clone();
        apply(after);
        for (std::size_t place = 0; place < places.size(); ++place) {
            patches.push_back(Compared(portraits[tone], after, places[place]));
            patches.back().tone = static_cast<int>(tone);
            patches.back().place = static_cast<int>(place);
        }
    }
    return patches;
}

}  // namespace SkinPatches
