// SPDX-License-Identifier: GPL-3.0-or-later
// The retouches of faces at full size, and the repairs of places of them.
#include <array>
#include <cmath>
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

constexpr int MarkColour = static_cast<int>(0xFF38EEFF);
constexpr int MiddleX = Size24.width / 2, MiddleY = Size24.height / 2;

// Fills a disc with a colour (0xAARRGGBB).
void FillDisc(Bitmap& bitmap, int x, int y, int radius, std::uint32_t colour) {
    std::uint8_t* const pixels = bitmap.MutablePixels();
    for (int v = y - radius; v <= y + radius; ++v)
        for (int u = x - radius; u <= x + radius; ++u)
            if (std::hypot(u - x, v - y) <= radius)
                for (int c = 0; c < 4; ++c)
                    pixels[4 * (std::ptrdiff_t{bitmap.Width()} * v + u) + c] =
                        static_cast<std::uint8_t>(colour >> 8 * c);
}

// A repair of a part of a picture of 24 megapixels, which is put back before each run.
void ReportRepair(BenchReport& report, const std::string& name, const Bitmap& source, const PixelRect& part,
                  const std::function<void(Bitmap&)>& repair) {
    Bitmap picture = source.Clone();
    const auto restore = [&] {
        std::uint8_t* const pixels = picture.MutablePixels();
        for (int y = part.top; y < part.bottom; ++y)
            std::copy_n(source.Row(y) + 4 * part.left, 4 * part.Width(), pixels + picture.Stride() * y + 4 * part.left);
    };
    report.Add(name, Size24.Megapixels(),
               MedianMs(
                   31, [&] { repair(picture); }, restore),
               "copy", CopyMs(Size24));
}

void ReportSpot(BenchReport& report, int radius) {
    Bitmap mask(Size24.width, Size24.height);
    FillDisc(mask, MiddleX, MiddleY, radius, static_cast<std::uint32_t>(MarkColour));
    const PixelRect part = PixelRect{MiddleX, MiddleY, MiddleX + 1, MiddleY + 1}.Grown(radius);
    ReportRepair(report, "spot." + std::to_string(radius), BenchPicture(Size24), part, [&](Bitmap& picture) {
        PC_Dsp::ImageProcessWithInpaint(picture.MutablePixels(), picture.Width(), picture.Height(), mask.Pixels(),
                                        MarkColour, part, nullptr, 0, 100);
    });
}

void ReportCircle(BenchReport& report) {
    constexpr int radius = 80, half = 350;
    Bitmap mask(Size24.width, Size24.height);
    for (int x = MiddleX - half + radius; x <= MiddleX + half - radius; x += 10)
        FillDisc(mask, x, MiddleY, radius, 0x66FF6363u);
    const PixelRect part{MiddleX - half, MiddleY - radius, MiddleX + half + 1, MiddleY + radius + 1};
    ReportRepair(report, "dark_circle", BenchPicture(Size24), part, [&](Bitmap& picture) {
        PC_Dsp::BlackEye(picture.MutablePixels(), picture.Width(), picture.Height(), mask.Pixels(), radius, 10, part,
                         nullptr, 0, 100);
    });
}

void ReportRedEye(BenchReport& report) {
    Bitmap source = BenchPicture(Size24).Clone();
    FillDisc(source, MiddleX, MiddleY, 100, 0xFF587896u);
    FillDisc(source, MiddleX, MiddleY, 40, 0xFFD61E2Au);
    const PixelRect part = PixelRect{MiddleX, MiddleY, MiddleX, MiddleY}.Grown(120);
    ReportRepair(report, "red_eye", source, part, [&](Bitmap& picture) { PC_Dsp::RedEyeRemove(picture, part); });
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
static const BenchCase spot("spot", [](BenchReport& report) {
    ReportSpot(report, 25);
    ReportSpot(report, 60);
});
static const BenchCase darkCircle("dark_circle", ReportCircle);
static const BenchCase redEyes("red_eye", ReportRedEye);
