// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FrameArt.h"
#include "FrameWriter.h"

// The overlays are drawn at this size, which is enlarged to the picture's: what they show is soft, or small enough to
// be sharp at two and a half times its size. All are landscapes, so that those that may turn are right on a portrait.
struct OverlaySize {
    static constexpr int Width = 2400, Height = 1600;
};

QByteArray DrawBokeh();
QByteArray DrawConfetti();
QByteArray DrawDust();
QByteArray DrawFlourish();
QByteArray DrawLace();
QByteArray DrawPetals();
QByteArray DrawRain();
QByteArray DrawSnow();
QByteArray DrawSoftLight();
QByteArray DrawStars();
QByteArray DrawSunFlare();
QByteArray DrawWindowLight();
