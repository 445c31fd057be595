// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "ProgressSpan.h"
#include "SceneJudge.h"

// PC_Dsp::ScenarioBeauty on checked arguments. False when it was cancelled; every row is then either done or as it was.
bool BeautifyScene(std::uint8_t* pixels, int width, int height, std::ptrdiff_t stride, const SceneRecipe& recipe,
                   const ProgressSpan& span);
