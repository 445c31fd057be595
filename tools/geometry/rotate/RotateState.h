// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// What was done to the picture since it came into the rotate tool: counts of the operations, the free angle, and the
// orientation that the turns and mirrors come to. A plain value.
class RotateState {
  public:
    // A quarter turn, clockwise to the right.
    void TurnRight();
    void TurnLeft();
    // A mirror takes the free angle with it: a mirrored picture turns the other way.
    void FlipLeftRight();
    void FlipTopBottom();

    // Degrees, clockwise; any int.
    int Angle() const { return m_angle; }
    void SetAngle(int degrees) { m_angle = degrees; }
    // Quarter turns to the right less those to the left.
    int QuarterTurns() const { return m_quarterTurns; }
    // 1, or -1 after an odd number of mirrors.
    int FlipX() const { return m_flipX; }
    int FlipY() const { return m_flipY; }

    // Nothing is left of what was done: quarter turns in fours, mirrors in pairs, no angle, and the picture upright.
    bool IsUnchanged() const { return IsLike(RotateState()); }
    // The same as far as a step is concerned.
    bool IsLike(const RotateState& other) const;

  private:
    void Turn(int quarters);

    int m_quarterTurns = 0;
    int m_flipX = 1;
    int m_flipY = 1;
    int m_angle = 0;
    // The orientation: 0 to 3 quarter turns clockwise, then a mirror left to right. The counts alone don't tell it,
    // since turns and mirrors may not be put in another order.
    int m_turned = 0;
    bool m_mirrored = false;
};
