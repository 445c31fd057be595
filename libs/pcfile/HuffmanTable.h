// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

// A JPEG Huffman table: bits[n] codes of n bits (n = 1 to 16), and the symbols in the order of their codes.
struct HuffmanTable {
    enum class Kind { Dc, Ac };

    std::array<std::uint8_t, 17> bits = {};
    std::array<std::uint8_t, 256> values = {};

    // A table with codes for every symbol that 8-bit pictures can need (12 sizes of DC, 162 run-and-size pairs of AC),
    // in which the symbols of this one keep about their lengths and the others get long codes. This is how a table made
    // from a sample becomes safe for the whole picture.
    HuffmanTable WithAllSymbols(Kind kind) const;
};

// The shortest code of at most 16 bits for symbols of these weights (0: no code), none of it all ones.
HuffmanTable MakeHuffmanTable(const std::array<std::uint64_t, 256>& weights);
