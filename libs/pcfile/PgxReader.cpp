// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <cstring>
#include <string>

#include "CodecModule.h"

// PGX, the plain grey format of the JPEG 2000 conformance files: a text line
//     PG <ML or LM> <+ or -><bits> <width> <height>
// and then the samples in one, two or four bytes, most (ML) or least (LM) significant byte first.

namespace {

struct PgxHeader {
    bool bigEndian = true;
    bool negative = false;  // samples are signed
    int bits = 0;
    int width = 0;
    int height = 0;
    std::size_t length = 0;

    int SampleBytes() const { return bits <= 8 ? 1 : bits <= 16 ? 2 : 4; }
};

bool ParseHeader(const std::uint8_t* data, std::size_t size, PgxHeader& header) {
    const void* end = std::memchr(data, '\n', size < 128 ? size : 128);
    if (!end) return false;
    header.length = static_cast<std::size_t>(static_cast<const std::uint8_t*>(end) - data) + 1;
    const std::string line(reinterpret_cast<const char*>(data), header.length - 1);
    char order[3] = {}, sign[2] = {};
    // The sign may stand alone, before the number, or be missing.
    if (std::sscanf(line.c_str(), "PG %2[ML]%*[ ]%1[+-]%d %d %d", order, sign, &header.bits, &header.width,
                    &header.height) != 5 &&
        std::sscanf(line.c_str(), "PG %2[ML] %d %d %d", order, &header.bits, &header.width, &header.height) != 4)
        return false;
    header.bigEndian = std::strcmp(order, "ML") == 0;
    header.negative = sign[0] == '-';
    return header.bits >= 1 && header.bits <= 32 && header.width > 0 && header.height > 0 &&
           (header.bigEndian || std::strcmp(order, "LM") == 0);
}

// A sample scaled to 0 to 255.
std::uint8_t Level(const std::uint8_t* p, const PgxHeader& header) {
    const int count = header.SampleBytes();
    std::uint64_t value = 0;
    for (int i = 0; i < count; ++i) value = value << 8 | p[header.bigEndian ? i : count - 1 - i];
    const std::uint64_t most = (std::uint64_t{1} << header.bits) - 1;
    if (header.negative) value += std::uint64_t{1} << (header.bits - 1);
    value &= most;
    return static_cast<std::uint8_t>((value * 255 + most / 2) / most);
}

}  // namespace

bool ReadPgx(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    PgxHeader header;
    if (!ParseHeader(data, size, header)) return false;
    const std::size_t sample = static_cast<std::size_t>(header.SampleBytes());
    const std::size_t pixels = static_cast<std::size_t>(header.width) * static_cast<std::size_t>(header.height);
    if ((size - header.length) / sample < pixels) return false;
    std::uint8_t* out = target.Begin(header.width, header.height);
    if (!out) return false;
    target.SetModel(PictureTarget::Model::Gray);
    const std::uint8_t* in = data + header.length;
    for (std::size_t i = 0; i < pixels; ++i, in += sample, out += 4) {
        out[0] = out[1] = out[2] = Level(in, header);
        out[3] = 255;
    }
    return target.Report(1);
}
