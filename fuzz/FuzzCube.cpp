// SPDX-License-Identifier: GPL-3.0-or-later
// .cube files: any bytes may be one. One that is accepted gives finite colours, and writing and reading it again gives
// the same table.
#include <cmath>
#include <cstdlib>

#include "CubeFile.h"

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const CubeResult result = ParseCube({reinterpret_cast<const char*>(data), size});
    Require((result.table.size != 0) == result.error.empty());
    if (result.table.size == 0) return 0;
    for (const Triple& colour : {Triple{0, 0, 0}, Triple{1, 1, 1}, Triple{0.3, 0.7, 0.5}, Triple{-4, 9, 0}})
        for (const double v : result.table.At(colour)) Require(std::isfinite(v));
    // A domain narrower than what is written with seven digits may come back empty.
    for (int i = 0; i < 3; ++i)
        if (result.table.domainHigh[i] - result.table.domainLow[i] < 1e-4) return 0;
    const CubeResult again = ParseCube(CubeText(result.table));
    Require(again.error.empty() && again.table.points.size() == result.table.points.size());
    return 0;
}
