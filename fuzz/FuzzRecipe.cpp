// SPDX-License-Identifier: GPL-3.0-or-later
// Looks: any bytes may be a recipe. One that is accepted can be used, on a colour and on a small picture.
#include <cmath>
#include <cstdlib>

#include "Look.h"
#include "RecipeReader.h"

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const RecipeResult result = ParseRecipe({reinterpret_cast<const char*>(data), size});
    Require(result.recipe.has_value() == result.error.empty());
    if (!result.recipe) return 0;
    const ColourPart colours(*result.recipe);
    for (const Triple& colour : {Triple{0, 0, 0}, Triple{1, 1, 1}, Triple{0.9, 0.6, 0.5}, Triple{0, 0.2, 1}})
        for (const double v : colours.At(colour)) Require(std::isfinite(v));
    // Making a look ready takes milliseconds, so only one input in some gets so far.
    if (size % 16 != 0) return 0;
    unsigned char pixels[12 * 9 * 4];
    for (std::size_t i = 0; i < sizeof pixels; ++i) pixels[i] = static_cast<unsigned char>(i * 37);
    Require(Look(*result.recipe).Apply(pixels, 12, 9, {}) != 0);
    for (std::size_t i = 3; i < sizeof pixels; i += 4) Require(pixels[i] == static_cast<unsigned char>(i * 37));
    return 0;
}
