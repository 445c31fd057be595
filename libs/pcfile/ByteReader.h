// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

// Numbers in files, at any alignment; the caller has checked that the bytes are there.
inline std::uint32_t LittleEndian16(const std::uint8_t* p) {
    return p[0] | p[1] << 8;
}
inline std::uint32_t BigEndian16(const std::uint8_t* p) {
    return p[0] << 8 | p[1];
}
inline std::uint32_t LittleEndian32(const std::uint8_t* p) {
    return LittleEndian16(p) | LittleEndian16(p + 2) << 16;
}
inline std::uint32_t BigEndian32(const std::uint8_t* p) {
    return BigEndian16(p) << 16 | BigEndian16(p + 2);
}
