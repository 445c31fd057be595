// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <vector>

// What a look does, as its file says it. The units are those of the file (RecipeReader.h); a recipe as constructed
// changes nothing.

// A curve through points in levels (x rising, y not falling); empty for none.
struct CurvePoint {
    double x = 0.0;
    double y = 0.0;
};
using CurvePoints = std::vector<CurvePoint>;

using Triple = std::array<double, 3>;  // red, green, blue

// What one band of hues gets: turned by degrees, percent of chroma and of luminance more or less.
struct HueChange {
    double turn = 0.0;
    double saturation = 0.0;
    double light = 0.0;
};

// A colour that shadows or highlights lean to: hue in degrees, strength in percent.
struct Tint {
    double hue = 0.0;
    double strength = 0.0;
};

// Light that bleeds from bright places. Amount and threshold in percent, radius in thousandths of the diagonal.
struct Bloom {
    double amount = 0.0;
    double threshold = 60.0;
    double radius = 10.0;
    Triple colour{255.0, 255.0, 255.0};
};

// Coloured light that enters the picture. Places and sizes in percent of its width and height.
struct Leak {
    enum class Shape { Glow, Band, Border };
    Shape shape = Shape::Glow;
    double strength = 0.0;               // exposure in percent: 100 is bright, 200 burns out
    double x = 0.0, y = 0.0;             // centre; it may lie outside
    double width = 30.0, height = 30.0;  // half axes; of a band: half its thickness, and its half length
    double angle = 0.0;                  // degrees clockwise
    double wobble = 0.0;                 // percent by which the shape is uneven
    double seed = 0.0;                   // which unevenness
    Triple core{255.0, 240.0, 200.0};    // colour where it is strongest
    Triple rim{255.0, 90.0, 20.0};       // and where it fades
};

struct Recipe {
    static constexpr int HueBands = 8;
    // Middle of each band in degrees: red, orange, yellow, green, aqua, blue, purple, magenta.
    static constexpr std::array<double, HueBands> HueCentres{0, 30, 60, 120, 180, 240, 275, 315};

    std::string title;

    std::array<Triple, 3> matrix{Triple{1, 0, 0}, Triple{0, 1, 0}, Triple{0, 0, 1}};
    bool grey = false;  // black and white by `mix`
    Triple mix{0.2126, 0.7152, 0.0722};
    CurvePoints master, red, green, blue;
    double saturation = 100.0;  // percent
    double vibrance = 0.0;      // percent more for weak colours
    std::array<HueChange, HueBands> hues{};
    Tint shadows, highlights;
    double balance = 0.0;     // -100 to 100: where shadows end
    double keepSkin = 0.0;    // percent by which skin goes back to its own hue
    double mostSkin = 130.0;  // percent of its own chroma that skin gets at most
    Triple black{0, 0, 0}, white{255, 255, 255};

    struct Vignette {
        double amount = 0.0;        // percent
        double start = 30.0;        // percent of the way from the centre to a corner
        double end = 110.0;         // where it is full
        double round = 0.0;         // 0: as wide as the picture, 100: a circle
        double x = 50.0, y = 50.0;  // centre, percent
        Triple colour{0, 0, 0};     // what it darkens to
    } vignette;

    struct Edges {
        double amount = 0.0;  // percent
        double radius = 4.0;  // thousandths of the diagonal
        double start = 55.0;  // percent of the way from the centre to the border
    } edges;

    Bloom glow, halation;

    struct Grain {
        double amount = 0.0;                       // standard deviation in levels, in the middle tones
        double size = 0.5;                         // thousandths of the diagonal
        double shadows = 40.0, highlights = 25.0;  // percent of the amount at black and at white
    } grain;

    std::vector<Leak> leaks;

    // What comes before all of the above, on the skin of a face; only the looks of beauty have it, and it is worked by
    // whoever runs those (pcdsp/FaceRetouch.h).
    struct Face {
        double smooth = 0.0;        // strength of skin smoothing, 0 to 10
        double even = 0.0;          // percent by which blotches of colour go to the mean of the skin
        double light = 0.0;         // L* that middle tones of skin gain
        double turn = 0.0;          // degrees that the hue of skin turns
        double saturation = 100.0;  // percent of its chroma
        double clarity = 0.0;       // percent more of local contrast, but on skin

        bool IsNeutral() const {
            return smooth <= 0 && even <= 0 && light == 0 && turn == 0 && saturation == 100 && clarity <= 0;
        }
    } face;

    // True when no channel may come to an end of the scale that was not there: a face's light and shade are not burnt
    // out, while an effect may well do so.
    bool KeepsEnds() const { return !face.IsNeutral(); }

    // True when a step needs the surroundings of a pixel, and when one needs its place.
    bool NeedsNeighbours() const { return edges.amount > 0 || glow.amount > 0 || halation.amount > 0; }
    bool NeedsPlace() const { return NeedsNeighbours() || vignette.amount > 0 || !leaks.empty(); }
};
