// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "Bitmap.h"

// What the fuzz targets of the frame files share. An input is either a file as it is, behind a first byte that is even,
// or changes to a true one: noise alone would rarely come past a header.
namespace FrameFuzz {

using Bytes = std::vector<std::uint8_t>;

// A PNG of 5 x 4 pixels with alpha.
inline constexpr std::uint8_t Png[] = {
    0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 0x49, 0x48, 0x44, 0x52, 0x00,
    0x00, 0x00, 0x05, 0x00, 0x00, 0x00, 0x04, 0x08, 0x06, 0x00, 0x00, 0x00, 0x46, 0x33, 0xF5, 0x40, 0x00,
    0x00, 0x00, 0x3E, 0x49, 0x44, 0x41, 0x54, 0x78, 0xDA, 0x0D, 0xCB, 0x31, 0x01, 0x00, 0x30, 0x08, 0x04,
    0xB1, 0xD3, 0xC4, 0x5C, 0x39, 0x88, 0x60, 0x7C, 0x15, 0x28, 0x41, 0x04, 0xAE, 0xE8, 0x6F, 0x59, 0x02,
    0x88, 0x40, 0x97, 0xA8, 0xDA, 0x5E, 0x1B, 0x9E, 0x2E, 0x9E, 0x2A, 0x9F, 0x68, 0x7B, 0x6D, 0x28, 0x55,
    0x94, 0xC8, 0xD2, 0xB5, 0xBD, 0x36, 0x8C, 0xFB, 0xB8, 0x8F, 0xBB, 0xBD, 0xF6, 0x07, 0x16, 0xC5, 0x22,
    0xA2, 0x06, 0x62, 0x86, 0xBE, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82};

inline void PutInt(Bytes& bytes, std::size_t at, unsigned value) {
    for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

inline Bytes Header(std::size_t size, std::size_t magicAt, const char* magic) {
    Bytes bytes(size, 0);
    for (; *magic; ++magic) bytes[magicAt++] = static_cast<std::uint8_t>(*magic);
    return bytes;
}

// The file that an input stands for. Changes are groups of three bytes: the place in two, the new value.
inline Bytes FileOf(const std::uint8_t* data, std::size_t size, Bytes file) {
    if (size == 0) return file;
    if (data[0] % 2 == 0) return Bytes(data + 1, data + size);
    for (std::size_t i = 1; i + 2 < size; i += 3) {
        const std::size_t place = data[i] | data[i + 1] << 8;
        if (place == 0xFFFF)
            file.resize(file.size() * data[i + 2] / 255);
        else if (!file.empty())
            file[place % file.size()] = data[i + 2];
    }
    return file;
}

// A small picture to put frames on; some of it translucent.
inline Bitmap Picture() {
    Bitmap picture = Bitmap::Uninitialised(9, 7);
    std::uint8_t* bytes = picture.MutablePixels();
    for (std::size_t i = 0; i < picture.ByteCount(); ++i) bytes[i] = static_cast<std::uint8_t>(i * 37);
    return picture;
}

inline void Require(bool condition) {
    if (!condition) std::abort();
}

// Every byte is there.
inline void Read(const Bitmap& result) {
    volatile std::uint8_t seen = 0;
    for (std::size_t i = 0; i < result.ByteCount(); i += 61) seen = result.Pixels()[i];
    static_cast<void>(seen);
}

// Loads a simple frame and composes it where the result is small: larger ones are as right and take their time.
template <class Frame, class Plan>
void TrySimple(const Bytes& file) {
    constexpr std::int64_t MostPixels = 1 << 16;
    Frame frame;
    if (!frame.Load(file.data(), file.size())) return;
    const Bitmap picture = Picture();
    for (const float scale : {1.0f, 0.4f, 3.0f}) {
        Plan plan;
        if (!frame.Plan(picture, scale, plan)) continue;
        Require(Bitmap::Allowed(plan.width, plan.height) && Bitmap::Allowed(plan.resultWidth, plan.resultHeight));
        if (std::int64_t{plan.width} * plan.height > MostPixels) continue;
        if (std::int64_t{plan.resultWidth} * plan.resultHeight > MostPixels) continue;
        const Bitmap result = frame.Compose(picture, scale);
        Require(result.Width() == plan.resultWidth && result.Height() == plan.resultHeight);
        Read(result);
    }
}

}  // namespace FrameFuzz
