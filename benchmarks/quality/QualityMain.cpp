// SPDX-License-Identifier: GPL-3.0-or-later
// Usage: quince_quality [--only NAME] [--regions FOLDER] [--crops FOLDER] [--no-others] [PICTURE...]
// Measures the retouches on the pictures and prints a table. Where the face is tells NAME.json in the regions' folder,
// or beside the picture; see Subject.h. Without pictures the generated portrait is taken, in every skin.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>

#include "Quality.h"

namespace {

namespace fs = std::filesystem;

struct Wishes {
    std::string only, regions, crops;
    bool others = true;
    std::vector<std::string> pictures;
};

bool Parse(int argc, char** argv, Wishes& wishes) {
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        std::string* const value = word == "--only"      ? &wishes.only
                                   : word == "--regions" ? &wishes.regions
                                   : word == "--crops"   ? &wishes.crops
                                                         : nullptr;
        if (value && ++i < argc)
            *value = argv[i];
        else if (!value && word == "--no-others")
            wishes.others = false;
        else if (!value && word.rfind("--", 0) != 0)
            wishes.pictures.push_back(word);
        else
            return false;
    }
    return true;
}

std::string RegionsOf(const std::string& picture, const std::string& folder) {
    const fs::path path(picture);
    const fs::path named = path.stem().string() + ".json";
    const fs::path regions = (folder.empty() ? path.parent_path() : fs::path(folder)) / named;
    return fs::exists(regions) ? regions.string() : std::string();
}

void Measure(const Subject& subject, const Wishes& wishes, QualityReport& report) {
    const std::size_t before = report.Rows().size();
    for (const QualityCase& entry : QualityCase::All())
        if (entry.name.find(wishes.only) != std::string::npos) entry.body(subject, report);
    for (std::size_t i = before; i < report.Rows().size(); ++i) {
        const QualityRow& row = report.Rows()[i];
        std::printf("%-22s %-16s %-22s", row.subject.c_str(), row.retouch.c_str(), row.maker.c_str());
        for (const Figure& figure : row.figures) std::printf(" | %s", figure.Text().c_str());
        std::printf("\n");
    }
    std::fflush(stdout);
}

// The median of each figure over all subjects, for every retouch and maker.
void PrintMedians(const QualityReport& report) {
    std::map<std::pair<std::string, std::string>, std::vector<const QualityRow*>> groups;
    for (const QualityRow& row : report.Rows()) groups[{row.retouch, row.maker}].push_back(&row);
    for (const auto& [key, rows] : groups) {
        std::printf("%-22s %-16s %-22s", "median", key.first.c_str(), key.second.c_str());
        for (std::size_t i = 0; i < rows.front()->figures.size(); ++i) {
            std::vector<double> values;
            for (const QualityRow* row : rows)
                if (i < row->figures.size()) values.push_back(row->figures[i].value);
            std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                             values.end());
            Figure figure = rows.front()->figures[i];
            figure.value = values[values.size() / 2];
            std::printf(" | %s", figure.Text().c_str());
        }
        std::printf("\n");
    }
}

void MeasureSamples(const Wishes& wishes, QualityReport& report) {
    static const char* const names[PortraitLook::SkinCount] = {"pale", "fair", "medium", "olive", "brown", "deep"};
    for (int i = 0; i < PortraitLook::SkinCount; ++i) {
        PortraitLook look;
        look.skin = static_cast<PortraitLook::Skin>(i);
        if (look.skin != PortraitLook::Skin::Fair) look.iris = PortraitLook::Iris::DarkBrown;
        Measure(PaintedSubject(1200, look, names[i]), wishes, report);
    }
}

}  // namespace

int main(int argc, char** argv) {
    Wishes wishes;
    if (!Parse(argc, argv, wishes)) {
        std::fprintf(stderr,
                     "usage: quince_quality [--only NAME] [--regions FOLDER] [--crops FOLDER] [--no-others] "
                     "[PICTURE...]\n");
        return 2;
    }
    if (!wishes.crops.empty()) fs::create_directories(wishes.crops);
    QualityReport report(wishes.others, wishes.crops);
    if (wishes.pictures.empty()) MeasureSamples(wishes, report);
    for (const std::string& picture : wishes.pictures) {
        if (const std::optional<Subject> subject = ReadSubject(picture, RegionsOf(picture, wishes.regions)))
            Measure(*subject, wishes, report);
        else
            std::fprintf(stderr, "no face found in %s\n", picture.c_str());
    }
    PrintMedians(report);
    return report.Rows().empty() ? 1 : 0;
}
