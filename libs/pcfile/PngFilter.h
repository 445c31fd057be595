// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

// Filters one row of a PNG picture. `row` and `above` are `count` bytes of pixels of `pixelBytes` (3 or 4) each, and
// both have pixelBytes zero bytes before their first; `above` is all zero for the first row. `out` gets the filter's
// number and the filtered bytes, count + 1 in all: of the five filters the one with the least sum of absolute signed
// values, which deflates best as a rule. `scratch` has room for count bytes.
void FilterPngRow(const std::uint8_t* row, const std::uint8_t* above, std::size_t count, std::size_t pixelBytes,
                  std::uint8_t* out, std::uint8_t* scratch);
