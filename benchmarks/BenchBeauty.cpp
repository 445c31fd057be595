// SPDX-License-Identifier: GPL-3.0-or-later
// The retouches of faces at full size.
#include <array>
#include <filesystem>
#include <memory>

#include "BeautyShelf.h"
#include "Bench.h"
#include "InstructionSets.h"
#include "PC_Dsp.h"

namespace {

using Retouch = std::function<int(Bitmap& picture)>;

int Smooth1(Bitmap& picture) {
    return PC_Dsp::CannyDericheBlur(picture, 1.0f, 1.0f, nullptr, nullptr, 0, 100);
}
int Smooth5(Bitmap& picture) {
    return PC_Dsp::CannyDericheBlur(picture, 5.0f, 5.0f, nullptr, nullptr, 0, 100);
}
int TintOf(Bitmap& picture) {
    return PC_Dsp::CompositeColor(picture, 252, 203, 186, nullptr, 0, 100);
}
int Recolour(Bitmap& picture) {
    return PC_Dsp::Color_Channel_Composite(picture, 208, 66, 64, nullptr, 0, 100);
}
int Teeth(Bitmap& picture) {
    return PC_Dsp::MeiBaiYaChi(picture.MutablePixels(), picture.Width(), picture.Height(), nullptr, 0, 100);
}

double MsOf(const Bitmap& source, const Retouch& retouch) {
    Bitmap picture = source.Clone();
    const auto restore = [&] { std::copy_n(source.Pixels(), source.ByteCount(), picture.MutablePixels()); };
    return MedianMs(
        15, [&] { retouch(picture); }, restore);
}

// Every size with the widest instruction set, and 24 megapixels with AVX2 as most machines have it.
void Report(BenchReport& report, const std::string& name, const Retouch& retouch) {
    constexpr int avx2 = 1;
    for (const BenchSize& size : BenchSizes)
        report.Add(name, size.Megapixels(), MsOf(BenchPicture(size), retouch), "copy", CopyMs(size));
    if (KernelSetCount() <= avx2 + 1) return;
    SelectKernelSet(avx2);
    report.Add(name + ".avx2", Size24.Megapixels(), MsOf(BenchPicture(Size24), retouch), "copy", CopyMs(Size24));
    SelectKernelSet(-1);
}

// The looks beside the program, with which the measurements lie.
std::wstring Program() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path().wstring();
}

Retouch LookOf(int type) {
    return [type, folder = Program()](Bitmap& picture) mutable {
        return PC_Dsp::AutoBeauty(type, picture.MutablePixels(), picture.Width(), picture.Height(), 0, 0, 0, 0,
                                  folder.data());
    };
}

// One row for each look by its type, so that a filter finds it.
const std::array<std::unique_ptr<BenchCase>, BeautyShelf::Count> g_looks = [] {
    std::array<std::unique_ptr<BenchCase>, BeautyShelf::Count> cases;
    static std::array<std::string, BeautyShelf::Count> names;
    for (int i = 0; i < BeautyShelf::Count; ++i) {
        names[i] = "beauty." + std::to_string(i + 1);
        cases[i] = std::make_unique<BenchCase>(names[i].c_str(), [i](BenchReport& report) {
            report.Add(names[i], Size24.Megapixels(), MsOf(BenchPicture(Size24), LookOf(i + 1)), "copy",
                       CopyMs(Size24));
        });
    }
    return cases;
}();

}  // namespace

static const BenchCase thumbnail("beauty.thumbnail", [](BenchReport& report) {
    // One of the list's eight, from its crop of the source on.
    const Bitmap small = PC_Dsp::Resample(BenchPicture(Size24), 70, 96);
    report.Add("beauty.thumbnail", Size24.Megapixels(), MsOf(small, LookOf(1)), "copy of 24 megapixels",
               CopyMs(Size24));
});
static const BenchCase smooth1("smooth.1", [](BenchReport& report) { Report(report, "smooth.1", Smooth1); });
static const BenchCase smooth5("smooth.5", [](BenchReport& report) { Report(report, "smooth.5", Smooth5); });
static const BenchCase tint("tint", [](BenchReport& report) { Report(report, "tint", TintOf); });
static const BenchCase recolour("recolour", [](BenchReport& report) { Report(report, "recolour", Recolour); });
static const BenchCase teeth("teeth", [](BenchReport& report) { Report(report, "teeth", Teeth); });
