// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Recipe.h"
#include "ToneCurve.h"

// The part of a look that depends on one pixel's colour alone, exactly. Values are gamma-coded sRGB, 0 to 1; results
// may lie outside and are held there at the very end by whoever uses them, so that everything before stays smooth and a
// lattice of samples can stand for it.
//
// In this order: matrix; black and white mix; master curve, then the curves of the channels; saturation and hues;
// split tones; fade; then skin goes back towards its own hue and chroma, as far as the recipe says; last, in a recipe
// that changes colours at all, a shoulder bends the red of warm colours, which burns out first, below the top; and
// where the recipe keeps the ends of the scale, no channel goes more than a part of the way to the end it moves to.
// Chroma is a vector in the plane across the grey axis, its angle the hue (0 red, 120 green, 240 blue); everything that
// changes chroma keeps the luma (ITU-R BT.709) unless it says otherwise.
class ColourPart {
  public:
    explicit ColourPart(const Recipe& recipe);

    Triple At(const Triple& colour) const;
    // Standard deviation of the grain on a result, in levels.
    double GrainAt(const Triple& result) const;

  private:
    void ChangeHues(Triple& colour) const;
    void SplitTone(Triple& colour) const;
    void KeepSkin(Triple& colour, const Triple& source) const;
    // Holds the chroma of skin below m_recipe.mostSkin of its own.
    void LimitSkin(Triple& colour, const Triple& source) const;
    // Takes chroma from a warm colour whose red goes beyond what the source's did, and leaves its luma.
    static void Shoulder(Triple& colour, const Triple& source);
    // Bends each channel's change so that it takes at most Way of the way to the end that it moves to, and is as it was
    // where it asks for a third of that.
    static void StayInside(Triple& colour, const Triple& source);

    const Recipe m_recipe;
    const ToneCurve m_master, m_red, m_green, m_blue;
    bool m_matrix, m_hues, m_split, m_changes;
    Triple m_shadowLean, m_highlightLean;
    std::vector<HueChange> m_wheel;  // by whole degrees
};
