// SPDX-License-Identifier: GPL-3.0-or-later
#include "TiffSamples.h"

#include <cmath>
#include <cstring>

namespace {

template <class T>
T At(const std::uint8_t* in, std::size_t i) {
    T value;
    std::memcpy(&value, in + i * sizeof value, sizeof value);
    return value;
}

std::uint32_t BitsAt(const std::uint8_t* in, std::size_t bit, int bits) {
    std::uint32_t value = 0;
    for (int left = bits; left > 0;) {
        const int inside = static_cast<int>(bit % 8), taken = left < 8 - inside ? left : 8 - inside;
        const std::uint32_t part = in[bit / 8] >> (8 - inside - taken) & ((1u << taken) - 1);
        value = value << taken | part;
        bit += static_cast<std::size_t>(taken);
        left -= taken;
    }
    return value;
}

std::uint32_t WholeAt(const std::uint8_t* in, std::size_t i, int bits) {
    switch (bits) {
        case 8:
            return in[i];
        case 16:
            return At<std::uint16_t>(in, i);
        case 24:
            return in[3 * i] | in[3 * i + 1] << 8 | in[3 * i + 2] << 16;
        case 32:
            return At<std::uint32_t>(in, i);
        default:
            return BitsAt(in, i * static_cast<std::size_t>(bits), bits);
    }
}

// A number of sixteen bits: a sign, five of exponent, ten of fraction.
double FromHalf(std::uint16_t half) {
    const int exponent = half >> 10 & 31, fraction = half & 1023;
    const double size = exponent == 31  ? (fraction ? NAN : INFINITY)
                        : exponent == 0 ? std::ldexp(fraction, -24)
                                        : std::ldexp(1024 + fraction, exponent - 25);
    return half & 0x8000 ? -size : size;
}

double FloatAt(const std::uint8_t* in, std::size_t i, int bits) {
    return bits == 16   ? FromHalf(At<std::uint16_t>(in, i))
           : bits == 32 ? static_cast<double>(At<float>(in, i))
                        : At<double>(in, i);
}

std::uint16_t FromFloat(double value) {
    // What is no number is black as well.
    return !(value > 0) ? 0 : value >= 1 ? 65535 : static_cast<std::uint16_t>(value * 65535 + 0.5);
}

}  // namespace

bool CanUnpackTiff(TiffSample kind, int bits) {
    if (kind == TiffSample::Float) return bits == 16 || bits == 32 || bits == 64;
    return bits >= 1 && bits <= (kind == TiffSample::Index ? 16 : 32);
}

void UnpackTiff(TiffSample kind, int bits, const std::uint8_t* in, std::size_t count, std::uint16_t* out,
                std::size_t step) {
    if (kind == TiffSample::Float) {
        for (std::size_t i = 0; i < count; ++i) out[i * step] = FromFloat(FloatAt(in, i, bits));
        return;
    }
    const std::uint64_t most = (std::uint64_t{1} << bits) - 1;
    const std::uint32_t flipped = kind == TiffSample::Signed ? 1u << (bits - 1) : 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint64_t value = WholeAt(in, i, bits) ^ flipped;
        out[i * step] =
            static_cast<std::uint16_t>(kind == TiffSample::Index ? value : (value * 65535 + most / 2) / most);
    }
}
