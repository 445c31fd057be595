// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortraitScene.h"

namespace {

constexpr double Turn = 0.13;  // sine of the head's turn to the viewer's right
const double TiltSine = std::sin(0.065);
const double TiltCosine = std::cos(0.065);
constexpr Vec2 NeckJoint{0.0, 1.05};

}  // namespace

Scene::Scene(const PortraitLook& look) : m_look(look), m_relief(Light::Key) {}

Vec2 Scene::Tilt(Vec2 head) {
    const Vec2 p = head - NeckJoint;
    return Vec2{p.x * TiltCosine - p.y * TiltSine, p.x * TiltSine + p.y * TiltCosine} + NeckJoint;
}

Vec2 Scene::Untilt(Vec2 canvas) {
    const Vec2 p = canvas - NeckJoint;
    return Vec2{p.x * TiltCosine + p.y * TiltSine, -p.x * TiltSine + p.y * TiltCosine} + NeckJoint;
}

// What stands out towards the viewer moves with the turn. The point that moved here is found by repeated correction,
// which converges because the smooth head is nowhere steep enough to fold.
Vec2 Scene::ToFace(Vec2 canvas) const {
    const Vec2 upright = Untilt(canvas);
    Vec2 face = upright;
    for (int round = 0; round < 6; ++round) face.x = upright.x - Turn * m_relief.SmoothHeightAt(face);
    return face;
}

Vec2 Scene::ToCanvas(Vec2 face) const {
    return Tilt({face.x + Turn * m_relief.SmoothHeightAt(face), face.y});
}
