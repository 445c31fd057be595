// SPDX-License-Identifier: GPL-3.0-or-later
#include "Portrait.h"

#include "Background.h"
#include "Clothing.h"
#include "Eyes.h"
#include "Hair.h"
#include "Mouth.h"
#include "Picture.h"
#include "Skin.h"

PortraitPixels PaintPortrait(int width, const PortraitLook& look) {
    const Scene scene(look);
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
