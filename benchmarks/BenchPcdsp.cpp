// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <iterator>

#include "Bench.h"
#include "PC_Dsp.h"
#include "Truncate.h"

namespace {

// Runs work(pixels, width, height) on a fresh copy each time and reports it against one copy.
template <class Work>
void Report(BenchReport& report, const char* name, Work work) {
    for (const BenchSize& size : BenchSizes) {
        const Bitmap& source = BenchPicture(size);
        Bitmap picture = source.Clone();
        const auto restore = [&] { std::copy_n(source.Pixels(), source.ByteCount(), picture.MutablePixels()); };
        const double ms = MedianMs(
            15, [&] { work(picture.MutablePixels(), picture.Width(), picture.Height()); }, restore);
        report.Add(name, size.Megapixels(), ms, "copy", CopyMs(size));
    }
}

template <class Make>
void ReportMaking(BenchReport& report, const char* name, Make make) {
    for (const BenchSize& size : BenchSizes) {
        const Bitmap& source = BenchPicture(size);
        report.Add(name, size.Megapixels(), MedianMs(15, [&] { make(source); }), "copy", CopyMs(size));
    }
}

void ReportScene(BenchReport& report, const char* name, eScenarioType type) {
    Report(report, name, [type](unsigned char* pixels, int w, int h) {
        PC_Dsp::ScenarioBeauty(pixels, w, h, 4 * w, type, nullptr, 0, 100);
    });
}

}  // namespace

// One point operation by itself.
static void ReportOp(BenchReport& report, const char* name, const PointOp& op) {
    Report(report, name, [&op](unsigned char* pixels, int w, int h) {
        PC_Dsp::ApplyPointOps(pixels, w, h, &op, 1, nullptr, 0, 100);
    });
}

static const BenchCase lightNew("point.LightNew", [](BenchReport& report) {
    ReportOp(report, "point.LightNew", {PointOp::Kind::LightNew, 3});
});
static const BenchCase light("point.Light", [](BenchReport& report) {
    ReportOp(report, "point.Light", {PointOp::Kind::Light, 20});
    ReportOp(report, "point.Light.less", {PointOp::Kind::Light, -20});
});
static const BenchCase exposure("point.ExposureFilter", [](BenchReport& report) {
    ReportOp(report, "point.ExposureFilter", {PointOp::Kind::ExposureFilter, 3.2f});
});
static const BenchCase saturation("point.Saturateconst", [](BenchReport& report) {
    ReportOp(report, "point.Saturateconst", {PointOp::Kind::Saturateconst, 25, 1});
    ReportOp(report, "point.Saturateconst.less", {PointOp::Kind::Saturateconst, -25, 1});
});
static const BenchCase hue("point.SetHue", [](BenchReport& report) {
    ReportOp(report, "point.SetHue", {PointOp::Kind::SetHue, 12});
});
static const BenchCase balance("point.SetColor", [](BenchReport& report) {
    ReportOp(report, "point.SetColor", {PointOp::Kind::SetColor, 20, -10, 5});
});

static const BenchCase basic("adjust.basic", [](BenchReport& report) {
    Report(report, "adjust.basic", [](unsigned char* pixels, int w, int h) {
        const PointOp ops[] = {
            {PointOp::Kind::LightNew, 3}, {PointOp::Kind::Light, 20}, {PointOp::Kind::Saturateconst, 25, 1}};
        PC_Dsp::ApplyPointOps(pixels, w, h, ops, static_cast<int>(std::size(ops)), nullptr, 0, 100);
    });
});

static const BenchCase advanced("adjust.advanced", [](BenchReport& report) {
    Report(report, "adjust.advanced", [](unsigned char* pixels, int w, int h) {
        const PointOp ops[] = {
            {PointOp::Kind::ExposureFilter, 3.2f}, {PointOp::Kind::SetHue, 12}, {PointOp::Kind::SetColor, 20, -10, 5}};
        PC_Dsp::ApplyPointOps(pixels, w, h, ops, static_cast<int>(std::size(ops)), nullptr, 0, 100);
    });
});

static const BenchCase usm("adjust.usm", [](BenchReport& report) {
    Report(report, "adjust.usm",
           [](unsigned char* pixels, int w, int h) { PC_Dsp::UsmSharp(pixels, w, h, 1.1f, 1.2f, nullptr, 0, 100); });
});

static const BenchCase scene1("adjust.scene.1",
                              [](BenchReport& r) { ReportScene(r, "adjust.scene.1", ScenarioScenery); });
static const BenchCase scene2("adjust.scene.2",
                              [](BenchReport& r) { ReportScene(r, "adjust.scene.2", ScenarioPortrait); });
static const BenchCase scene3("adjust.scene.3",
                              [](BenchReport& r) { ReportScene(r, "adjust.scene.3", ScenarioObjects); });
static const BenchCase scene4("adjust.scene.4", [](BenchReport& r) { ReportScene(r, "adjust.scene.4", ScenarioFood); });

static const BenchCase resample("resample.2000", [](BenchReport& report) {
    ReportMaking(report, "resample.2000",
                 [](const Bitmap& source) { PC_Dsp::Resample(source, 2000, source.Height() * 2000 / source.Width()); });
});

static const BenchCase view("resample.view", [](BenchReport& report) {
    ReportMaking(report, "resample.view", [](const Bitmap& source) {
        static Bitmap target = Bitmap::Uninitialised(1500, 1000);
        PC_Dsp::ResampleRect(source, 0, 0, source.Width(), source.Height(), target, ResampleQuality::Best);
    });
});

static const BenchCase resize("resize.12mp", [](BenchReport& report) {
    ReportMaking(report, "resize.12mp", [](const Bitmap& source) {
        PC_Dsp::Resample(source, Truncate(source.Width() * M_SQRT1_2), Truncate(source.Height() * M_SQRT1_2));
    });
});

static const BenchCase crop("crop.half", [](BenchReport& report) {
    ReportMaking(report, "crop.half", [](const Bitmap& source) {
        PC_Dsp::Clone(source, source.Width() / 7, source.Height() / 7, Truncate(source.Width() * M_SQRT1_2),
                      Truncate(source.Height() * M_SQRT1_2));
    });
});

static void ReportTurn(BenchReport& report, const char* name, RotateFlipType type) {
    ReportMaking(report, name, [type](const Bitmap& source) {
        Bitmap turned = source;
        PC_Dsp::SingleRotate(turned, type);
    });
}

static const BenchCase quarter("rotate.quarter",
                               [](BenchReport& r) { ReportTurn(r, "rotate.quarter", Rotate90FlipNone); });
static const BenchCase flip("rotate.flip", [](BenchReport& r) { ReportTurn(r, "rotate.flip", RotateNoneFlipX); });

static const BenchCase free7("rotate.7", [](BenchReport& report) {
    ReportMaking(report, "rotate.7", [](const Bitmap& source) { PC_Dsp::MultiRotate(source, 7, 0, 0, 0, 0); });
});
