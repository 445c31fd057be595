// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "CUndoRedoParams.h"

class Graphics;

// Base of the records that stand on the picture as objects of their own and draw themselves: a box in picture pixels,
// unturned, with an angle about its centre. `order` is the object's rank from below, counted from 1.
class RenderParams : public CUndoRedoParams {
  public:
    // Gives the box other sides, in whole picture pixels; -1 leaves one as it is. `anchor` says what stays in place: 1
    // and 7 the upper left corner, 8 the lower side, 9 and 10 the right side, anything else the centre.
    virtual void SetBoxSize(int width, int height, int anchor) = 0;
    // Draws the object at `scale` surface pixels per picture pixel.
    virtual void Draw(Graphics& graphics, double scale) = 0;
    // Where the picture's upper left corner stands on the surface; 0, 0 to draw into the picture.
    virtual void SetOffset(int x, int y) = 0;
    virtual void GetPosition(float* x, float* y) const = 0;
    virtual void SetPosition(float x, float y) = 0;
    // Keeps the position aside, and gives it back.
    virtual void SavePosition() = 0;
    virtual void GetSavedPosition(float* x, float* y) const = 0;
    virtual void GetBoxSize(double* width, double* height) const = 0;
    virtual void SetAngle(double degrees) = 0;
    virtual double GetAngle() const = 0;
    // 0 to 1.
    virtual void SetAlpha(float alpha) = 0;
    virtual float GetAlpha() const = 0;
    // The picture's size. Another size takes the object along: it keeps its place and its size in proportion.
    virtual void SetCanvasSize(float width, float height) = 0;
    virtual float GetCanvasWidth() const = 0;
    virtual float GetCanvasHeight() const = 0;
    virtual int GetPlacement() const = 0;
    virtual void SetPlacement(int mode) = 0;
    virtual void SetGridCell(int cell) = 0;
    virtual int GetGridCell() const = 0;
    // Does nothing.
    virtual void OnReservedRender(int, int, int) {}
    // A number that means nothing to the object.
    virtual void SetTag(int tag) = 0;
    virtual int GetTag() const = 0;
    // What a list may call it.
    virtual QString GetStepName() const = 0;
};
