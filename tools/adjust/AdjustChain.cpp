// SPDX-License-Identifier: GPL-3.0-or-later
#include "AdjustChain.h"

#include "AdjustSliders.h"
#include "PC_Dsp.h"
#include "Truncate.h"
#include "ViewDrawing.h"

namespace {

constexpr float UsmRadius = 1.1f;
// Brightness mode that keeps black and white points.
constexpr float KeepEnds = 3.0f;
// Neutral exposure, and what one slider unit adds: 85 thousandths, the thousandth being a float.
constexpr double ExposureNeutral = 1.5;
constexpr double ExposureUnit = 85.0;
constexpr double Thousandth = 0.001f;

// Positive sharpness is four times as strong per slider unit as negative. Rounded to float after each step.
float SharpAmount(int sharpness, double scale) {
    auto amount = static_cast<float>(sharpness);
    if (sharpness > 0) amount = static_cast<float>(amount * 4.0);
    amount = static_cast<float>(amount * scale);
    return static_cast<float>(amount / 100.0);
}

PointOp ToPointOp(const AdjustCall& call) {
    using Kind = AdjustCall::Kind;
    switch (call.kind) {
        case Kind::LightNew:
            return {PointOp::Kind::LightNew, call.a};
        case Kind::Light:
            return {PointOp::Kind::Light, call.b};
        case Kind::Saturateconst:
            return {PointOp::Kind::Saturateconst, call.a, call.b};
        case Kind::ExposureFilter:
            return {PointOp::Kind::ExposureFilter, call.a};
        case Kind::SetHue:
            return {PointOp::Kind::SetHue, call.a};
        case Kind::SetColor:
        case Kind::UsmSharp:
            break;
    }
    return {PointOp::Kind::SetColor, call.a, call.b, call.c};
}

}  // namespace

std::vector<AdjustCall> AdjustChain(const BasicAdjustParams& basic, const AdvanceAdjustParams& advance, double scale) {
    using Kind = AdjustCall::Kind;
    std::vector<AdjustCall> calls;
    if (basic.Sharpness != 0) calls.push_back({Kind::UsmSharp, UsmRadius, SharpAmount(basic.Sharpness, scale)});
    if (basic.Brightness != 0) {
        const float step = static_cast<float>(Truncate(static_cast<float>(basic.Brightness) / 10.0f));
        calls.push_back({Kind::LightNew, step, KeepEnds});
    }
    if (basic.Contrast != 0) calls.push_back({Kind::Light, 0.0f, static_cast<float>(basic.Contrast)});
    if (basic.Saturation != 0) calls.push_back({Kind::Saturateconst, static_cast<float>(basic.Saturation), 1.0f});
    if (advance.Exposure != 0) {
        const double value = advance.Exposure * ExposureUnit * Thousandth + ExposureNeutral;
        calls.push_back({Kind::ExposureFilter, static_cast<float>(value)});
    }
    if (advance.Hue != 0) calls.push_back({Kind::SetHue, static_cast<float>(advance.Hue)});
    if (advance.Red != 0 || advance.Green != 0 || advance.Blue != 0)
        calls.push_back({Kind::SetColor, static_cast<float>(advance.Red), static_cast<float>(advance.Green),
                         static_cast<float>(advance.Blue)});
    return calls;
}

bool RunAdjustChain(const Bitmap& source, Bitmap& target, const std::vector<AdjustCall>& calls,
                    const ProgressSpan& span) {
    if (!source || calls.empty()) {
        target = source;
        return span.CanContinue();
    }
    float amount = 0.0f;
    std::vector<PointOp> points;
    for (const AdjustCall& call : calls) {
        if (call.kind == AdjustCall::Kind::UsmSharp)
            amount = call.b;
        else
            points.push_back(ToPointOp(call));
    }
    MakeRoom(target, source);
    if (!PC_Dsp::SharpenAndApply(source.Pixels(), target.MutablePixels(), source.Width(), source.Height(), UsmRadius,
                                 amount, points.data(), static_cast<int>(points.size()), span.sink, span.start,
                                 span.end))
        target = source;
    return span.CanContinue();
}

bool RunAdjustChain(Bitmap& bitmap, const std::vector<AdjustCall>& calls, const ProgressSpan& span) {
    const Bitmap source = bitmap;
    return RunAdjustChain(source, bitmap, calls, span);
}

bool RunAdjustScene(Bitmap& bitmap, int scenario, const ProgressSpan& span) {
    const AdjustScene* scene = FindAdjustScene(scenario);
    if (!scene || !bitmap) return false;
    PC_Dsp::ScenarioBeauty(bitmap.MutablePixels(), bitmap.Width(), bitmap.Height(), static_cast<int>(bitmap.Stride()),
                           static_cast<eScenarioType>(scene->type), span.sink, span.start, span.end);
    return span.CanContinue();
}
