// SPDX-License-Identifier: GPL-3.0-or-later
#include "HandMade.h"

#include <zlib.h>

#include <cstring>
#include <string>

namespace HandMade {
namespace {

void AppendChunk(Bytes& png, const char* type, const Bytes& content) {
    PutBig32(png, static_cast<std::uint32_t>(content.size()));
    const std::size_t start = png.size();
    PutText(png, type);
    png.insert(png.end(), content.begin(), content.end());
    PutBig32(png, static_cast<std::uint32_t>(crc32(0, png.data() + start, static_cast<uInt>(png.size() - start))));
}

}  // namespace

void Put16(Bytes& bytes, std::uint32_t value) {
    bytes.push_back(static_cast<std::uint8_t>(value));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}

void Put32(Bytes& bytes, std::uint32_t value) {
    Put16(bytes, value);
    Put16(bytes, value >> 16);
}

void PutBig32(Bytes& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

void PutText(Bytes& bytes, const char* text) {
    bytes.insert(bytes.end(), text, text + std::strlen(text));
}

Bytes PalettePng() {
    Bytes png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    AppendChunk(png, "IHDR", {0, 0, 0, 2, 0, 0, 0, 1, 8, 3, 0, 0, 0});
    AppendChunk(png, "PLTE", {0x11, 0x22, 0x33, 0x44, 0x55, 0x66});
    AppendChunk(png, "tRNS", {0xFF, 0x80});
    const Bytes raw = {0, 0, 1};
    Bytes packed(64);
    uLongf length = static_cast<uLongf>(packed.size());
    compress(packed.data(), &length, raw.data(), static_cast<uLong>(raw.size()));
    packed.resize(length);
    AppendChunk(png, "IDAT", packed);
    AppendChunk(png, "IEND", {});
    return png;
}

Bytes TwoFrameGif() {
    Bytes gif;
    PutText(gif, "GIF89a");
    Put16(gif, 4);
    Put16(gif, 2);
    gif.insert(gif.end(), {0x80, 0, 0});                     // a palette of two
    gif.insert(gif.end(), {0xFF, 0, 0, 0, 0xFF, 0});         // red, green
    gif.insert(gif.end(), {0x21, 0xF9, 4, 0, 10, 0, 0, 0});  // shown for a tenth of a second
    for (const int index : {0, 1}) {
        gif.push_back(0x2C);
        Put16(gif, index == 0 ? 1 : 0);
        Put16(gif, 0);
        Put16(gif, 2);
        Put16(gif, 2);
        gif.push_back(0);
        // Codes of three bits: clear, then each pixel, with a clear again before the code size would grow, then the
        // end.
        gif.push_back(2);
        const int p = index;
        const int codes[] = {4, p, p, 4, p, p, 5};
        std::uint32_t bits = 0;
        int count = 0;
        Bytes data;
        for (const int code : codes) {
            bits |= static_cast<std::uint32_t>(code) << count;
            count += 3;
        }
        for (; count > 0; count -= 8, bits >>= 8) data.push_back(static_cast<std::uint8_t>(bits));
        gif.push_back(static_cast<std::uint8_t>(data.size()));
        gif.insert(gif.end(), data.begin(), data.end());
        gif.push_back(0);
    }
    gif.push_back(0x3B);
    return gif;
}

Bytes Pcx(const Bitmap& bitmap) {
    const int width = bitmap.Width(), stride = (width + 1) / 2 * 2;
    Bytes pcx = {0x0A, 5, 1, 8};
    for (const int v : {0, 0, width - 1, bitmap.Height() - 1, 72, 72}) Put16(pcx, static_cast<std::uint32_t>(v));
    pcx.resize(64, 0);
    pcx.insert(pcx.end(), {0, 3});
    Put16(pcx, static_cast<std::uint32_t>(stride));
    Put16(pcx, 1);
    pcx.resize(128, 0);
    for (int y = 0; y < bitmap.Height(); ++y)
        for (int plane = 2; plane >= 0; --plane)
            for (int x = 0; x < stride;) {
                const auto at = [&](int i) { return i < width ? bitmap.Row(y)[4 * i + plane] : std::uint8_t{0}; };
                int run = 1;
                while (x + run < stride && run < 63 && at(x + run) == at(x)) ++run;
                if (run > 1 || at(x) >= 0xC0) pcx.push_back(static_cast<std::uint8_t>(0xC0 | run));
                pcx.push_back(at(x));
                x += run;
            }
    return pcx;
}

Bytes Ras(const Bitmap& bitmap) {
    const std::uint32_t width = static_cast<std::uint32_t>(bitmap.Width()), stride = (3 * width + 1) / 2 * 2;
    const std::uint32_t height = static_cast<std::uint32_t>(bitmap.Height());
    Bytes ras;
    for (const std::uint32_t v : {0x59A66A95u, width, height, 24u, stride * height, 1u, 0u, 0u}) PutBig32(ras, v);
    for (int y = 0; y < bitmap.Height(); ++y) {
        for (int x = 0; x < bitmap.Width(); ++x)
            ras.insert(ras.end(), bitmap.Row(y) + 4 * x, bitmap.Row(y) + 4 * x + 3);
        if (stride > 3 * width) ras.push_back(0);
    }
    return ras;
}

Bytes Tga(const Bitmap& bitmap, int bits, bool runs) {
    Bytes tga = {0, 0, static_cast<std::uint8_t>(runs ? 10 : 2), 0, 0, 0, 0, 0, 0, 0, 0, 0};
    Put16(tga, static_cast<std::uint32_t>(bitmap.Width()));
    Put16(tga, static_cast<std::uint32_t>(bitmap.Height()));
    tga.push_back(static_cast<std::uint8_t>(bits));
    tga.push_back(static_cast<std::uint8_t>(0x20 | (bits == 32 ? 8 : 0)));
    for (int y = 0; y < bitmap.Height(); ++y)
        for (int x = 0; x < bitmap.Width();) {
            const std::uint8_t* p = bitmap.Row(y) + 4 * x;
            int run = 1;
            while (runs && x + run < bitmap.Width() && run < 128 && std::memcmp(p + 4 * run, p, 4) == 0) ++run;
            if (runs) tga.push_back(static_cast<std::uint8_t>(0x80 | (run - 1)));
            tga.insert(tga.end(), p, p + bits / 8);
            x += run;
        }
    return tga;
}

Bytes Pnm(const Bitmap& bitmap, int kind, int most) {
    Bytes pnm;
    const bool text = kind <= 3, bit = kind == 1 || kind == 4, colour = kind == 3 || kind == 6;
    PutText(pnm, ("P" + std::to_string(kind) + "\n# made by hand\n" + std::to_string(bitmap.Width()) + " " +
                  std::to_string(bitmap.Height()) + "\n")
                     .c_str());
    if (!bit) PutText(pnm, (std::to_string(most) + "\n").c_str());
    for (int y = 0; y < bitmap.Height(); ++y) {
        int packed = 0;
        for (int x = 0; x < bitmap.Width(); ++x)
            for (int c = colour ? 2 : 1; c >= (colour ? 0 : 1); --c) {
                const int level = bitmap.Row(y)[4 * x + c];
                const int value = bit ? level < 128 : most == 65535 ? level * 257 : level;
                if (text) {
                    PutText(pnm, (std::to_string(value) + "\n").c_str());
                } else if (bit) {
                    packed = packed << 1 | value;
                    if (x % 8 == 7 || x == bitmap.Width() - 1)
                        pnm.push_back(static_cast<std::uint8_t>(packed << (7 - x % 8)));
                } else {
                    if (most == 65535) pnm.push_back(static_cast<std::uint8_t>(value >> 8));
                    pnm.push_back(static_cast<std::uint8_t>(value));
                }
            }
    }
    return pnm;
}

Bytes Pgx(const Bitmap& bitmap, int bits, bool negative, bool bigEndian) {
    Bytes pgx;
    PutText(pgx,
            (std::string("PG ") + (bigEndian ? "ML " : "LM ") + (negative ? "-" : "+") + " " + std::to_string(bits) +
             " " + std::to_string(bitmap.Width()) + " " + std::to_string(bitmap.Height()) + "\n")
                .c_str());
    for (int y = 0; y < bitmap.Height(); ++y)
        for (int x = 0; x < bitmap.Width(); ++x) {
            int value = bitmap.Row(y)[4 * x + 1] * (bits == 16 ? 257 : 1);
            if (negative) value -= 1 << (bits - 1);
            if (bits == 16) pgx.push_back(static_cast<std::uint8_t>(bigEndian ? value >> 8 : value));
            pgx.push_back(static_cast<std::uint8_t>(bits == 8 || bigEndian ? value : value >> 8));
        }
    return pgx;
}

Bytes Wmf() {
    // The placeable header: key, handle, bounds, units to the inch, reserved, sum of the words before.
    const std::uint32_t words[10] = {0xCDD7, 0x9AC6, 0, 0, 0, 100, 50, 72, 0, 0};
    Bytes wmf;
    std::uint32_t sum = 0;
    for (const std::uint32_t word : words) {
        Put16(wmf, word);
        sum ^= word;
    }
    Put16(wmf, sum);
    Bytes body;
    std::uint32_t largest = 0;
    const auto record = [&](std::uint32_t function, const std::vector<std::uint32_t>& parameters) {
        const auto length = static_cast<std::uint32_t>(3 + parameters.size());
        largest = std::max(largest, length);
        Put32(body, length);
        Put16(body, function);
        for (const std::uint32_t parameter : parameters) Put16(body, parameter);
    };
    record(0x0103, {8});                     // map mode: own units
    record(0x020B, {0, 0});                  // window origin
    record(0x020C, {50, 100});               // window extent
    record(0x02FC, {0, 0x0000, 0x00FF, 0});  // solid blue brush
    record(0x012D, {0});                     // select it
    record(0x041B, {50, 100, 0, 0});         // rectangle
    record(0x0000, {});
    Put16(wmf, 1);
    Put16(wmf, 9);
    Put16(wmf, 0x0300);
    Put32(wmf, static_cast<std::uint32_t>(9 + body.size() / 2));
    Put16(wmf, 1);
    Put32(wmf, largest);
    Put16(wmf, 0);
    wmf.insert(wmf.end(), body.begin(), body.end());
    return wmf;
}

}  // namespace HandMade
