// SPDX-License-Identifier: GPL-3.0-or-later
#include "Portrait.h"

#include "Background.h"
#include "Clothing.h"
#include "Eyes.h"
#include "Hair.h"
#include "Mouth.h"
#include "Picture.h"
#include "Skin.h"

PortraitPixels PaintPortrait(int width, std::uint32_t skin) {
    const Scene scene(FromSrgb(skin >> 16 & 255, skin >> 8 & 255, skin & 255));
    Picture picture(width);
    picture.Paint([](Brush& brush) { PaintBackground(brush); });
    StrandSet back;
    AddBackHair(scene, back);
    back.Draw(picture);
    picture.Paint([&](Brush& brush) {
        PaintNeck(scene, brush);
        PaintClothing(scene, brush);
        const Vec2 face = scene.ToFace(brush.canvas);
        if (std::abs(face.x) > 0.75 || face.y < -1.05 || face.y > 1.05) return;
        PaintFaceSkin(scene, brush, face);
        PaintNostrils(brush, face);
        PaintMouth(scene, brush, face);
        PaintEyes(scene, brush, face);
    });
    StrandSet front;
    AddBrows(scene, front);
    AddLashes(scene, front);
    AddFrontHair(scene, front);
    front.Draw(picture);
    return {picture.Width(), picture.Height(), picture.Develop()};
}
