// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstring>

#include "Parallel.h"
#include "WholeFile.h"
#include "Writers.h"

namespace {

constexpr std::size_t HeaderBytes = 14 + 108;

void Put16(std::uint8_t* p, std::uint32_t value) {
    p[0] = static_cast<std::uint8_t>(value);
    p[1] = static_cast<std::uint8_t>(value >> 8);
}

void Put32(std::uint8_t* p, std::uint32_t value) {
    Put16(p, value);
    Put16(p + 2, value >> 16);
}

void PutHeader(const Bitmap& bitmap, bool alpha, std::size_t size, std::uint8_t* p) {
    p[0] = 'B';
    p[1] = 'M';
    Put32(p + 2, static_cast<std::uint32_t>(size));
    Put32(p + 10, HeaderBytes);
    Put32(p + 14, 108);
    Put32(p + 18, bitmap.Width());
    Put32(p + 22, bitmap.Height());
    Put16(p + 26, 1);
    Put16(p + 28, alpha ? 32 : 24);
    Put32(p + 30, alpha ? 3 : 0);  // bit fields or plain
    Put32(p + 34, static_cast<std::uint32_t>(size - HeaderBytes));
    Put32(p + 38, 2835);  // 72 pixels an inch
    Put32(p + 42, 2835);
    if (alpha) {
        Put32(p + 54, 0x00FF0000u);
        Put32(p + 58, 0x0000FF00u);
        Put32(p + 62, 0x000000FFu);
        Put32(p + 66, 0xFF000000u);
    }
    Put32(p + 70, 0x73524742u);  // "sRGB"
}

}  // namespace

ByteVector EncodeBmp(const Bitmap& bitmap) {
    const bool alpha = !bitmap.IsOpaque();
    const int width = bitmap.Width(), height = bitmap.Height();
    const std::size_t row = alpha ? std::size_t{4} * width : (std::size_t{3} * width + 3) / 4 * 4;
    ByteVector file(HeaderBytes + row * height);
    PutHeader(bitmap, alpha, file.size(), file.data());
    ForEachBand(height, 64, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            const std::uint8_t* in = bitmap.Row(y);
            std::uint8_t* out = file.data() + HeaderBytes + row * (height - 1 - y);
            if (alpha)
                std::memcpy(out, in, row);
            else
                for (int x = 0; x < width; ++x, in += 4, out += 3) {
                    out[0] = in[0];
                    out[1] = in[1];
                    out[2] = in[2];
                }
        }
    });
    return file;
}

bool WriteWhole(const std::filesystem::path& path, const ByteVector& bytes) {
    WholeFile file(path);
    return file.Open() && file.Write(bytes.data(), bytes.size()) && file.Commit();
}
