// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PortraitScene.h"
#include "Strands.h"

// Ball, iris, pupil and lids of both eyes over the painted skin. The pupil of the eye at the viewer's right shines red,
// as a flash makes it.
void PaintEyes(const Scene& scene, Brush& brush, Vec2 face);
// Lashes and brows, drawn over the face.
void AddLashes(const Scene& scene, StrandSet& strands);
void AddBrows(const Scene& scene, StrandSet& strands);
