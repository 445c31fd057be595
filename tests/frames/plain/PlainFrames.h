// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FrameBuilder.h"

// The composition of frames in one loop each, without any thought of speed: the judge of the fast ones.
namespace PlainFrames {

// `over` on `below` by its alpha, both straight.
std::uint32_t Over(std::uint32_t below, std::uint32_t over);

Bitmap Compose(const FrameBuilder::Strip& frame, const Bitmap& picture, float scale);
Bitmap Compose(const FrameBuilder::NinePart& frame, const Bitmap& picture, float scale);
// The overlay as it lies on the picture, for plain drawing.
Bitmap Compose(const FrameBuilder::Overlay& frame, const Bitmap& picture);
// The stretched overlay alone.
Bitmap Stretched(const FrameBuilder::Overlay& frame, int width, int height);

}  // namespace PlainFrames
