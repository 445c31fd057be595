// SPDX-License-Identifier: GPL-3.0-or-later
#include "RotateState.h"

#include <climits>

// Behind a mirror a turn goes the other way.
void RotateState::Turn(int quarters) {
    m_quarterTurns += quarters;
    m_turned = (m_turned + (m_mirrored ? 4 - quarters : 4 + quarters)) % 4;
}

void RotateState::TurnRight() {
    Turn(1);
}

void RotateState::TurnLeft() {
    Turn(-1);
}

void RotateState::FlipLeftRight() {
    m_flipX = -m_flipX;
    m_mirrored = !m_mirrored;
    m_angle = m_angle == INT_MIN ? INT_MAX : -m_angle;
}

// The same as a half turn and a mirror left to right.
void RotateState::FlipTopBottom() {
    m_flipY = -m_flipY;
    m_mirrored = !m_mirrored;
    m_turned = (m_turned + 2) % 4;
    m_angle = m_angle == INT_MIN ? INT_MAX : -m_angle;
}

bool RotateState::IsLike(const RotateState& other) const {
    return (m_quarterTurns - other.m_quarterTurns) % 4 == 0 && m_flipX == other.m_flipX && m_flipY == other.m_flipY &&
           m_angle == other.m_angle && m_turned == other.m_turned && m_mirrored == other.m_mirrored;
}
