// SPDX-License-Identifier: GPL-3.0-or-later
#include "PointPlan.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "CurvePieces.h"

namespace {

constexpr double Luminance[3] = {0.2126, 0.7152, 0.0722};

double Percent(double value) {
    return std::clamp(value, -100.0, 100.0);
}

// Turns about the grey axis, then moves along it so that the weighted sum of the channels stays.
void HueMatrix(double degrees, float* matrix) {
    const double angle = degrees * std::acos(-1.0) / 180.0;
    const double c = std::cos(angle), s = std::sin(angle) / std::sqrt(3.0);
    // The turn of the part across the grey axis: each channel's share of itself, of the next and of the one after.
    const double share[3] = {c * 2.0 / 3.0, -c / 3.0 - s, -c / 3.0 + s};
    double turn[3][3];
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) turn[row][column] = share[(column - row + 3) % 3];
    for (int column = 0; column < 3; ++column) {
        double moved = 0.0;
        for (int row = 0; row < 3; ++row) moved += Luminance[row] * turn[row][column];
        for (int row = 0; row < 3; ++row)
            matrix[3 * row + column] = static_cast<float>(turn[row][column] + Luminance[column] - moved);
    }
}

}  // namespace

bool PointPlan::Add(const PointOp* ops, int count) {
    for (int i = 0; i < count; ++i)
        if (!std::isfinite(ops[i].a) || !std::isfinite(ops[i].b) || !std::isfinite(ops[i].c)) return false;
    for (int i = 0; i < count; ++i) AddOp(ops[i]);
    return true;
}

void PointPlan::AddOp(const PointOp& op) {
    switch (op.kind) {
        case PointOp::Kind::LightNew:
            AddTone(PointCurves::Brightness, std::clamp<double>(op.a, -10.0, 10.0));
            break;
        case PointOp::Kind::Light:
            AddTone(PointCurves::Contrast, Percent(op.a));
            break;
        case PointOp::Kind::ExposureFilter:
            AddTone(PointCurves::Exposure, PointCurves::StopsOf(op.a));
            break;
        case PointOp::Kind::Saturateconst:
            AddSaturation(Percent(op.a), op.b != 0.0f);
            break;
        case PointOp::Kind::SetHue:
            AddHue(std::fmod(op.a, 360.0f));
            break;
        case PointOp::Kind::SetColor:
            AddBalance(Percent(op.a), Percent(op.b), Percent(op.c));
            break;
    }
}

void PointPlan::AddTone(double (*curve)(double, double), double amount) {
    if (amount == 0.0) return;
    LevelCurve levels;
    for (int i = 0; i < 256; ++i) levels[i] = static_cast<float>(255.0 * curve(i / 255.0, amount));
    const bool bytes = m_stages.empty();
    auto packed = std::make_unique<PointCurve>(PackCurve(levels));
    if (Kernels().readsPieces)
        packed->pieces = FitPieces(*packed, bytes ? CurveReading::WholeLevels : CurveReading::BetweenLevels);
    m_stages.push_back({bytes ? PointStage::Kind::ToneOfBytes : PointStage::Kind::Tone, packed.get()});
    m_curves.push_back(std::move(packed));
}

void PointPlan::AddSaturation(double percent, bool protectSkin) {
    if (percent == 0.0) return;
    PointStage stage{PointStage::Kind::Saturate};
    stage.numbers[0] = static_cast<float>(percent / 100.0);
    stage.numbers[1] = protectSkin ? 0.65f : 0.0f;
    m_stages.push_back(stage);
}

void PointPlan::AddHue(double degrees) {
    if (degrees == 0.0) return;
    PointStage stage{PointStage::Kind::Hue};
    HueMatrix(degrees, stage.numbers);
    m_stages.push_back(stage);
}

void PointPlan::AddBalance(double red, double green, double blue) {
    const double values[3] = {red, green, blue};
    double grey = 0.0;
    for (int i = 0; i < 3; ++i) grey += Luminance[i] * values[i];
    PointStage stage{PointStage::Kind::Balance};
    bool neutral = true;
    for (int i = 0; i < 3; ++i) {
        // A quarter of the way at mid-grey is the most that keeps the parabola rising; the largest shift is 200.
        stage.numbers[i] = static_cast<float>((values[i] - grey) / 200.0 / 255.0);
        if (std::abs(values[i] - grey) > 1e-9) neutral = false;
    }
    if (neutral) return;
    m_stages.push_back(stage);
}
