// SPDX-License-Identifier: GPL-3.0-or-later
// The soft discs of the brushes. They do not depend on a picture, so that only the first subject shows them.
#include <algorithm>
#include <cmath>
#include <vector>

#include "PC_Dsp.h"
#include "Quality.h"

namespace {

constexpr int Radius = 200, Stamps = 25;

// Values along the middle row, from the middle outwards, as parts of 1.
std::vector<double> Profile(int (*fill)(unsigned char**, int)) {
    std::vector<unsigned char> bytes(4 * Radius * Radius);
    std::vector<unsigned char*> rows;
    for (int y = 0; y < 2 * Radius; ++y) rows.push_back(bytes.data() + 2 * Radius * y);
    fill(rows.data(), Radius);
    std::vector<double> profile;
    for (int x = Radius; x < 2 * Radius; ++x) profile.push_back(rows[Radius][x] / 255.0);
    return profile;
}

// What many stamps on one place leave of white paint on black, each rounded down as the stamp does.
std::vector<double> Stamped(const std::vector<double>& profile) {
    std::vector<double> paint(profile.size(), 0.0);
    for (int i = 0; i < Stamps; ++i)
        for (std::size_t x = 0; x < paint.size(); ++x)
            paint[x] = std::floor(255.0 * profile[x] + paint[x] * (1.0 - profile[x]));
    return paint;
}

std::vector<Figure> Figures(int (*fill)(unsigned char**, int)) {
    const std::vector<double> profile = Profile(fill), paint = Stamped(profile);
    int rises = 0;
    double half = 0.0, bend = 0.0;
    for (std::size_t i = 1; i < profile.size(); ++i) {
        rises += profile[i] > profile[i - 1] || paint[i] > paint[i - 1];
        if (profile[i] >= 0.5) half = static_cast<double>(i) / Radius;
    }
    for (std::size_t i = 2; i < paint.size(); ++i)
        bend = std::max(bend, std::abs(paint[i] - 2.0 * paint[i - 1] + paint[i - 2]));
    return {{"centre", profile.front(), "", 1, 1, 2},
            {"rim", profile.back(), "", 0, 0.01, 2},
            {"rises", static_cast<double>(rises), "", 0, 0},
            {"half at", half, " r", 0.3, 0.95, 2},
            {"bend after 25 stamps", bend, " levels", -Figure::None, 32}};
}

}  // namespace

static const QualityCase disc("disc", [](const Subject& subject, QualityReport& report) {
    for (const QualityRow& row : report.Rows())
        if (row.retouch == "disc") return;
    report.Add(subject, "disc", QualityReport::Own, Figures(PC_Dsp::Circle_Gradient_Alpha));
    report.Add(subject, "disc for eyes", QualityReport::Own, Figures(PC_Dsp::Circle_Gradient_Alpha2Eye));
});
