// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Bench.h"
#include "CEffect.h"
#include "Look.h"
#include "LookShelf.h"

namespace {

// The looks beside the program, with which the measurements lie.
std::filesystem::path Program() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

// Runs work(pixels, width, height) on a fresh copy each time and reports it against one copy.
template <class Work>
void ReportFull(BenchReport& report, const std::string& name, int runs, Work work) {
    const Bitmap& source = BenchPicture(Size24);
    Bitmap picture = source.Clone();
    const auto restore = [&] { std::copy_n(source.Pixels(), source.ByteCount(), picture.MutablePixels()); };
    const double ms = MedianMs(
        runs, [&] { work(picture.MutablePixels(), picture.Width(), picture.Height()); }, restore);
    report.Add(name, Size24.Megapixels(), ms, "copy", CopyMs(Size24));
}

// One row for each of the fifty, so that a filter finds it by its name.
const std::array<std::unique_ptr<BenchCase>, LookShelf::Count> g_effects = [] {
    std::array<std::unique_ptr<BenchCase>, LookShelf::Count> cases;
    static std::array<std::string, LookShelf::Count> names;
    for (int i = 0; i < LookShelf::Count; ++i) {
        names[i] = "effect." + std::to_string(i);
        cases[i] = std::make_unique<BenchCase>(names[i].c_str(), [i](BenchReport& report) {
            const auto look = LookShelf::Take(Program(), i);
            if (!look) return;
            ReportFull(report, names[i], 5, [&](unsigned char* p, int w, int h) { look->Apply(p, w, h, {}); });
        });
    }
    return cases;
}();

const BenchCase g_lut3d("lut3d", [](BenchReport& report) {
    const auto look = LookShelf::Take(Program(), 3);
    if (!look) return;
    ReportFull(report, "lut3d", 9,
               [&](unsigned char* p, int w, int h) { ApplyLattice(look->Colour3D(), p, w, h, {}); });
});

const BenchCase g_alpha("alpha", [](BenchReport& report) {
    Bitmap other = BenchPicture(Size24).Clone();
    std::uint8_t* const bytes = other.MutablePixels();
    for (std::size_t i = 0; i < other.ByteCount(); ++i) bytes[i] = static_cast<std::uint8_t>(255 - bytes[i]);
    ReportFull(report, "alpha", 15,
               [&](unsigned char* p, int w, int h) { CEffect::Effect_AlphaAdJust(p, bytes, w, h, 0.37); });
});

}  // namespace
