// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mutex>
#include <vector>

#include "Bitmap.h"
#include "BlockAllocator.h"
#include "WarpTiles.h"

// A picture that is pushed about: a dense field of displacements with a soft round brush. Every step bends the field,
// and what the step covers is sampled once, bilinearly, from the untouched picture, so that no blur adds up over many
// steps. The field says for each pixel of the output how far away its source lies.
//
// Lengths are in pixels of the picture. The arithmetic is in double precision, the field is kept in floats; the bits of
// field and output depend neither on the number of threads nor on the instruction set. Memory of the field grows with
// the places that were pushed.
//
// Many steps over each other may leave the output for later, so that each pixel is sampled once and not once a step.
//
// One thread at a time. Nothing is thrown but std::bad_alloc, and then the object is as it was before the call (of a
// long move: as after the last whole step of it).
class CWarpField {
  public:
    enum Mode { Grow = 0, Shrink = 1, Move = 2, Remove = 3, SwirlLeft = 4, SwirlRight = 5 };
    static constexpr int MaxRadius = 1 << 16;

    // Radius of the brush, from 1; anything below 2 counts as 1, anything beyond MaxRadius as that.
    void SetRadius(int r);
    int Radius() const { return m_radius; }
    // How strong a step is: 0 does nothing, 1 is a slider's end. Below 0 every mode becomes Shrink.
    void SetAmount(double amount) { m_amount = amount; }
    double Amount() const { return m_amount; }
    // Bilinear samples (the default), or the nearest pixel towards the corner. For a whole picture where steps are
    // deferred.
    void SetBilinear(bool on) { m_bilinear = on; }

    // Takes a picture, laid on white where it is translucent, with nothing pushed. The lock, if there is one, is held
    // meanwhile. False for a null picture, which changes nothing.
    bool SetImage(const Bitmap* image, std::mutex* lock);

    // One step at (x1, y1); of Move a stroke from (x0, y0) to there, cut into parts of half a radius at most. False
    // when it is refused: no amount, a point outside of the picture, no such mode, no picture or no radius.
    bool Deform(int x1, int y1, int x0, int y0, int mode);

    // As Deform, but leaves the output as it is until Settle, which samples what all such steps have left: the same
    // bytes as if they had not. Any other step settles first.
    bool DeformLater(int x1, int y1, int x0, int y0, int mode);
    void Settle();

    // Makes the memory that such a Deform with this radius would need, so that it cannot fail afterwards. Nothing for
    // what would be refused. Throws std::bad_alloc.
    void Reserve(int x1, int y1, int x0, int y0, int mode, int radius);

    // The inner step about (x, y) with the radius, amount and mode of the last Deform: displaces by (dx, dy) (of Move
    // only) and samples into `output`, which has the picture's size. Nothing for a point outside.
    void ApplyAt(Bitmap& output, int x, int y, double dx, double dy);

    // The field between its pixels; 0 and 0 outside.
    void SampleField(double x, double y, double* dx, double* dy) const;

    // The picture as it was pushed. Null without a picture.
    const Bitmap& Output() const { return m_output; }
    const Bitmap& Source() const { return m_source; }
    int Width() const { return m_source.Width(); }
    int Height() const { return m_source.Height(); }
    // Where the source of a pixel inside the picture lies, relative to it: dx and dy.
    const float* FieldAt(int x, int y) const { return m_field.At(x, y); }
    // Memory that the field takes at present.
    std::size_t FieldBytes() const { return m_field.ByteCount(); }

  private:
    enum class Sampling { AtOnce, Later };

    bool Push(int x1, int y1, int x0, int y0, int mode, Sampling sampling);
    void Step(Bitmap& output, int x, int y, double dx, double dy, Sampling sampling);
    // A step of the kernels as far as it is the same for all.
    WarpStep PlanFor(std::uint8_t* output) const;
    void MarkUnsampled(int left, int top, int right, int bottom);
    void SampleTile(const WarpStep& step, int tile) const;
    bool Contains(int x, int y) const { return x >= 0 && x < Width() && y >= 0 && y < Height(); }

    // Scratch of one step: pairs of the window, clipped to the picture.
    class Scratch {
      public:
        ~Scratch() { BlockAllocator::Give(m_bytes, m_count); }
        Scratch() = default;
        Scratch(const Scratch&) = delete;
        Scratch& operator=(const Scratch&) = delete;
        float* OfPairs(std::size_t count);

      private:
        std::uint8_t* m_bytes = nullptr;
        std::size_t m_count = 0;
    };

    double m_amount = 0.0;
    int m_radius = 0;
    Bitmap m_output, m_source;
    std::vector<double> m_fallOff;
    int m_activeRadius = 20;
    double m_activeAmount = 0.3;
    int m_mode = Move;
    bool m_bilinear = true;
    WarpTiles m_field;
    // Squares of the field that were bent since they were sampled, and for each square whether it is among them.
    std::vector<int> m_unsampled;
    std::vector<bool> m_isUnsampled;
    Scratch m_scratch;
};
