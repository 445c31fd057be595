// SPDX-License-Identifier: GPL-3.0-or-later
#include "PointCurves.h"

#include <algorithm>
#include <cmath>

namespace PointCurves {

double Brightness(double x, double step) {
    const double slopeAtBlack = std::exp2(0.14 * step);
    return x * slopeAtBlack / (1.0 + (slopeAtBlack - 1.0) * x);
}

double Contrast(double x, double contrast) {
    const double t = 2.0 * x - 1.0;
    if (contrast < 0.0) return 0.5 + 0.5 * t * (1.0 + 0.006 * contrast);
    // Slope sqrt(1 + s) in the middle and 1 / (1 + s) at both ends.
    const double s = 0.025 * contrast;
    return 0.5 + 0.5 * t * std::sqrt((1.0 + s) / (1.0 + s * t * t));
}

double ToLinear(double coded) {
    return coded <= 0.04045 ? coded / 12.92 : std::pow((coded + 0.055) / 1.055, 2.4);
}

double ToCoded(double linear) {
    return linear <= 0.0031308 ? linear * 12.92 : 1.055 * std::pow(linear, 1.0 / 2.4) - 0.055;
}

double Exposure(double x, double stops) {
    const double gain = std::exp2(stops);
    const double linear = ToLinear(x);
    if (gain <= 1.0) return ToCoded(gain * linear);
    // The shoulder: gain times the light in the shadows, white stays white, never flat. The power says how late it
    // bends.
    constexpr double power = 1.5;
    return ToCoded(gain * linear /
                   std::pow(1.0 + (std::pow(gain, power) - 1.0) * std::pow(linear, power), 1.0 / power));
}

double StopsOf(double value) {
    return std::clamp((value - 1.5) * (2.0 / 8.5), -4.0, 4.0);
}

}  // namespace PointCurves

PointCurve PackCurve(const LevelCurve& curve) {
    PointCurve packed{};
    for (int i = 0; i < 256; ++i)
        packed.value[i] = static_cast<std::uint16_t>(std::lround(std::clamp(curve[i], 0.0f, 255.0f) * 256.0f));
    for (int i = 0; i < 255; ++i)
        packed.rise[i] = static_cast<std::uint16_t>(std::max(0, packed.value[i + 1] - packed.value[i]));
    for (int i = 0; i < 256; ++i) packed.both[i] = std::uint32_t{packed.value[i]} << 16 | packed.rise[i];
    return packed;
}
