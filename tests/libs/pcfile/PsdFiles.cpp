// SPDX-License-Identifier: GPL-3.0-or-later
#include "PsdFiles.h"

#include "HandMade.h"

namespace {

using HandMade::PutBig32;

void PutBig16(Bytes& bytes, std::size_t value) {
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
    bytes.push_back(static_cast<std::uint8_t>(value));
}

// A length or count that the large form writes in twice the bytes.
void PutLength(Bytes& bytes, std::size_t value, bool large) {
    if (large) PutBig32(bytes, 0);
    PutBig32(bytes, static_cast<std::uint32_t>(value));
}

void Append(Bytes& bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

Bytes Resources(const Bytes& profile) {
    Bytes bytes;
    HandMade::PutText(bytes, "8BIM");
    PutBig16(bytes, 1005);
    Append(bytes, {3, 'a', 'b', 'c'});
    PutBig32(bytes, 1);
    Append(bytes, {9, 0});
    if (profile.empty()) return bytes;
    HandMade::PutText(bytes, "8BIM");
    PutBig16(bytes, 1039);
    PutBig16(bytes, 0);
    PutBig32(bytes, static_cast<std::uint32_t>(profile.size()));
    Append(bytes, profile);
    if (profile.size() % 2) bytes.push_back(0);
    return bytes;
}

// A row as runs of equal bytes and stretches of others.
Bytes PackBits(const std::uint8_t* row, std::size_t count) {
    Bytes packed;
    for (std::size_t at = 0; at < count;) {
        std::size_t run = 1;
        while (at + run < count && run < 128 && row[at + run] == row[at]) ++run;
        if (run == 1) packed.push_back(0);
        if (run > 1) packed.push_back(static_cast<std::uint8_t>(257 - run));
        packed.push_back(row[at]);
        at += run;
    }
    packed.push_back(128);
    return packed;
}

}  // namespace

Bytes PsdFile::Write() const {
    const bool large = version == 2;
    Bytes psd;
    HandMade::PutText(psd, "8BPS");
    PutBig16(psd, static_cast<std::size_t>(version));
    psd.resize(psd.size() + 6);
    PutBig16(psd, planes.size());
    PutBig32(psd, height);
    PutBig32(psd, width);
    PutBig16(psd, static_cast<std::size_t>(bits));
    PutBig16(psd, static_cast<std::size_t>(mode));
    PutBig32(psd, static_cast<std::uint32_t>(palette.size()));
    Append(psd, palette);
    const Bytes resources = Resources(profile);
    PutBig32(psd, static_cast<std::uint32_t>(resources.size()));
    Append(psd, resources);
    // No layer but their number: one, or minus one for a transparent picture.
    Bytes layers;
    PutLength(layers, 2, large);
    PutBig16(layers, transparent ? 0xFFFF : 1);
    PutLength(psd, layers.size(), large);
    Append(psd, layers);
    PutBig16(psd, runs);
    const std::size_t row = (width * static_cast<std::size_t>(bits) + 7) / 8;
    Bytes counts, packed;
    for (const Bytes& plane : planes)
        for (std::size_t y = 0; y < height; ++y) {
            if (!runs) {
                packed.insert(packed.end(), &plane[y * row], &plane[y * row] + row);
                continue;
            }
            const Bytes one = PackBits(&plane[y * row], row);
            large ? PutBig32(counts, static_cast<std::uint32_t>(one.size())) : PutBig16(counts, one.size());
            Append(packed, one);
        }
    Append(psd, counts);
    Append(psd, packed);
    return psd;
}
