// SPDX-License-Identifier: GPL-3.0-or-later
// The figures of docs/quality.md hold on the generated portrait: all of them on the sample, and in the median of six
// skins.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "Quality.h"

namespace {

constexpr int Width = 1200;

const QualityReport& Figures() {
    static const QualityReport report = [] {
        QualityReport all(false);
        for (int i = 0; i < PortraitLook::SkinCount; ++i) {
            PortraitLook look;
            look.skin = static_cast<PortraitLook::Skin>(i);
            if (look.skin != PortraitLook::Skin::Fair) look.iris = PortraitLook::Iris::DarkBrown;
            const Subject subject =
                PaintedSubject(Width, look, look.skin == PortraitLook::Skin::Fair ? "fair" : "other");
            for (const QualityCase& entry : QualityCase::All()) entry.body(subject, all);
        }
        return all;
    }();
    return report;
}

}  // namespace

TEST(Retouches, HoldTheirFiguresOnTheSample) {
    int rows = 0;
    for (const QualityRow& row : Figures().Rows()) {
        if (row.subject != "fair") continue;
        ++rows;
        for (const Figure& figure : row.figures) EXPECT_TRUE(figure.Holds()) << row.retouch << ": " << figure.Text();
    }
    EXPECT_GE(rows, 9);
}

TEST(Retouches, HoldTheirFiguresInTheMedianOfSixSkins) {
    std::map<std::pair<std::string, std::string>, std::vector<Figure>> groups;
    for (const QualityRow& row : Figures().Rows())
        for (const Figure& figure : row.figures) groups[{row.retouch, figure.name}].push_back(figure);
    for (auto& [key, figures] : groups) {
        const auto middle = figures.begin() + static_cast<std::ptrdiff_t>(figures.size() / 2);
        std::nth_element(figures.begin(), middle, figures.end(),
                         [](const Figure& a, const Figure& b) { return a.value < b.value; });
        EXPECT_TRUE(middle->Holds()) << key.first << ": " << middle->Text();
    }
}

TEST(Retouches, KeepColoursAndEdgesOnEverySkin) {
    for (const QualityRow& row : Figures().Rows())
        for (const Figure& figure : row.figures)
            if (figure.name == "hue" || figure.name == "texture" || figure.name == "lips" || figure.name == "around" ||
                figure.name == "eyes" || figure.name == "hair" || figure.name == "clipped" ||
                figure.name == "lightness" || figure.name == "lips kept" || figure.name == "hair kept" ||
                figure.name == "lashes and brows" || figure.name == "from the others") {
                EXPECT_TRUE(figure.Holds()) << row.subject << ", " << row.retouch << ": " << figure.Text();
            }
}
