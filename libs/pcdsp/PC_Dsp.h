// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Bitmap.h"
#include "CObjProgress.h"
#include "PcDspTypes.h"

// Pixel work on whole pictures.
//
// Pixels are 32-bit straight-alpha ARGB (bytes blue, green, red, alpha), rows of 4 x width bytes without padding,
// changed in place; alpha is never touched unless a call says so. Sizes from 1 x 1 to what Bitmap::Allowed allows. Any
// thread may call, several at a time on different pixels; all cores are used, and the bytes of a result do not depend
// on how many they are. Different instruction sets may differ by one level.
//
// Each call gives non-zero when it is done, and 0 when an argument is refused (nothing has changed) or when the sink
// asked to stop: every row is then either finished or as it was. Progress goes from `start` to `end` percent on the
// calling thread; a null sink is legal. Nothing is thrown but std::bad_alloc.
//
// A neutral value gives the same bytes. Values are gamma-coded sRGB levels unless "light" is said; luma and luminance
// use the weights of ITU-R BT.709: 0.2126, 0.7152, 0.0722.
class PC_Dsp {
  public:
    // --- Point operations: each pixel by itself
    // -----------------------------------------------------------------------

    // Several point operations in one pass over the pixels, in the order given, calculated in floating point and
    // rounded once. The same as the single calls in a row up to their rounding: within 3 levels for three operations
    // (each call's half level, raised by the slopes of those that follow). A neutral operation costs nothing. Refused
    // when a number is infinite or none; numbers out of range are held at its ends.
    static int ApplyPointOps(unsigned char* pixels, int width, int height, const PointOp* ops, int count,
                             CObjProgress* progress, int start, int end);

    // Brightness in steps: 0 neutral, -10 to 10, anything beyond held there. Mode 3, the only one: black and white stay
    // where they are.
    // Curve: y = k x / (1 + (k - 1) x) with k = 2^(0.14 step), a hyperbola (the bias function of Schlick 1994); slope k
    // at black and 1/k at white, so that nothing clips. Ten steps move mid-grey from 128 to 185 or 71, one step by at
    // most 7 levels. The curve is laid on the largest and smallest channel and the middle one keeps its place between
    // them: the hue (of HSV) stays exactly.
    static int LightNew(unsigned char* pixels, int width, int height, long step, int mode, CObjProgress* progress,
                        int start, int end);

    // Contrast about mid-grey (127.5): 0 neutral, -100 to 100, anything beyond held there.
    // Above 0, with t from -1 at black to 1 at white: y = t sqrt((1 + s) / (1 + s t^2)), s = contrast / 40: an S that
    // keeps black and white, slope at most 1.87 in the middle and never below 0.28, so that nothing clips. Below 0: t
    // is multiplied by 1 + 0.006 contrast, down to 0.4. Hue stays as in LightNew. `brightness` in tenths of LightNew's
    // steps is applied first; 0 for contrast alone.
    static int Light(unsigned char* pixels, int width, int height, long brightness, long contrast,
                     CObjProgress* progress, int start, int end);

    // Colourfulness: 0 neutral, -100 grey, 100 at most twice the chroma; anything beyond held there.
    // Luminance is kept in squared levels, near enough to light (gamma 2; within 4.5 of L*). Below 0 levels go evenly
    // towards the grey, then get their luminance back. Above 0 squared levels go C = Y + (C - Y) k; with d the way from
    // grey to the border of the cube (0 to 1), k = 1 + saturation / 100 (1 - d): strong colours gain less and none
    // clips. With `protectSkin` colours of skin gain only 35 % of that, so that faces do not turn orange.
    static int Saturateconst(unsigned char* pixels, int width, int height, long saturation, int protectSkin,
                             CObjProgress* progress, int start, int end);

    // Exposure: 1.5 neutral; every 4.25 above or below is one stop, so that 1.5 + 8.5 is +2 stops; held at 4 stops.
    // In light (sRGB transfer function of IEC 61966-2-1): with gain g = 2^stops, below 1: y = g x. Above:
    // y = g x / (1 + (g^1.5 - 1) x^1.5)^(1/1.5): the full gain in the shadows, a shoulder that rolls off to white,
    // which stays white. Hue stays as in LightNew.
    static int ExposureFilter(unsigned char* pixels, int width, int height, float value, CObjProgress* progress,
                              int start, int end);

    // Turns all hues: 0 neutral, in degrees, any number, modulo 360.
    // A turn about the grey axis that keeps the weighted sum (Haeberli 1993), then a scale that gives back the
    // luminance in squared levels; what leaves the cube is drawn towards its grey until it touches. Greys stay as they
    // are.
    static int SetHue(unsigned char* pixels, int width, int height, int degrees, CObjProgress* progress, int start,
                      int end);

    // Colour balance: 0, 0, 0 neutral, each -100 to 100, anything beyond held there.
    // Every channel gets the parabola v + v (255 - v) s / 255 with s = (its value - the weighted mean of the three) /
    // 200: black and white stay, mid-grey moves most (red 100: +25 levels of red, -7 of the others), and since the mean
    // is taken away the luma of greys stays. Equal values are therefore neutral too.
    static int SetColor(unsigned char* pixels, int width, int height, int red, int green, int blue,
                        CObjProgress* progress, int start, int end);

    // Recolours lips, irises and the like: hue and colourfulness of (red, green, blue), light and texture of the
    // picture. L* runs along a hyperbola that lightens what is dark, more for a light colour, and keeps black and
    // white, so that gloss and pupils stay; the hue in CIE L*a*b* is the colour's on every pixel; its chroma falls
    // towards black and white (ColourRamp.h).
    static int Color_Channel_Composite(unsigned char* pixels, int width, int height, unsigned char red,
                                       unsigned char green, unsigned char blue, CObjProgress* progress, int start,
                                       int end);
    static int Color_Channel_Composite(Bitmap& bitmap, unsigned char red, unsigned char green, unsigned char blue,
                                       CObjProgress* progress, int start, int end);

    // --- Operations that look at neighbours
    // ----------------------------------------------------------------------------

    // Unsharp mask on luma. `radius` is the standard deviation of a Gaussian in pixels, above 0, held at 0.3 to 5.
    // `amount` 0 is neutral; above 0 sharpens, held at 20; below 0 softens down to the blur itself at -1, where it is
    // held. The change d = amount (Y - blur) is added to the three channels alike. When sharpening it is bent to d r /
    // (d + r), r being the way to the brightest (darkest) luma of the 3 x 3 neighbours plus 10: no pixel ever leaves
    // the range of its neighbours by more than 10 levels, which keeps haloes out.
    static int UsmSharp(unsigned char* pixels, int width, int height, float radius, float amount,
                        CObjProgress* progress, int start, int end);

    // UsmSharp and then ApplyPointOps in one pass over a picture that stays as it is: writes to `target`, of the same
    // size and not overlapping, the bytes that both calls would leave in a copy. Refused where one of them is.
    static int SharpenAndApply(const unsigned char* source, unsigned char* target, int width, int height, float radius,
                               float amount, const PointOp* ops, int count, CObjProgress* progress, int start, int end);

    // Skin smoothing: evens blotches, fine wrinkles and the shadows of pores, and keeps grain, edges and shading.
    // `sigma` is the strength: 0 is neutral, anything beyond 10 is held there; unequal numbers act as their geometric
    // mean. Cost does not depend on it. `mask`, when there is one, has a byte for each pixel: 0 leaves the pixel, 255
    // gives it the whole effect. The mathematics stands in SkinSmooth.cpp. Refused when a number is below 0, infinite
    // or none.
    static int CannyDericheBlur(unsigned char* pixels, int width, int height, float sigmaX, float sigmaY,
                                const unsigned char* mask, CObjProgress* progress, int start, int end);
    static int CannyDericheBlur(Bitmap& bitmap, float sigmaX, float sigmaY, const unsigned char* mask,
                                CObjProgress* progress, int start, int end);

    // Gives skin the tone (red, green, blue) and keeps its shading and texture. Each pixel goes two thirds of the way
    // to what that tone looks like at its own lightness, which moves by at most 8 L*; on much darker skin less far, so
    // that a pale tone is never powder. What is not skin, by colour and evenness of its neighbourhood, hardly moves.
    static int CompositeColor(unsigned char* pixels, int width, int height, unsigned char red, unsigned char green,
                              unsigned char blue, CObjProgress* progress, int start, int end);
    static int CompositeColor(Bitmap& bitmap, unsigned char red, unsigned char green, unsigned char blue,
                              CObjProgress* progress, int start, int end);

    // Whitens teeth: most of the yellow goes, the light rises by 4 to 10 L* along a hyperbola that clips nothing. Teeth
    // are known by being light and much less colourful than the skin around them, in patches of some size; lips, gums,
    // skin and beard hardly move (TeethWhiten.cpp).
    static int MeiBaiYaChi(unsigned char* pixels, int width, int height, CObjProgress* progress, int start, int end);

    // --- Repairs of marked places
    // ----------------------------------------------------------------------------------------------
    //
    // They change marked pixels only, or those of a rectangle, and cost what those cost. A form with a rectangle looks
    // for marks within it alone and leaves the rest of the mask unread; the other form reads the whole mask. A
    // rectangle may reach out of the picture or lie outside. They ask whether to go on many times for each group of
    // marks that touch each other, on the largest about every tenth of a second; cancelled, a group is either repaired
    // or as it was.

    // Removes spots: fills the pixels whose four bytes in `mask` (4 x width bytes a row) are those of `colour`, an
    // 0xAARRGGBB, with what the skin around would show there: its light, its grain, and the lines that run through. The
    // same mark on the same picture always gives the same. Where nothing but marks is known the picture stays
    // (SpotHeal.cpp).
    static int ImageProcessWithInpaint(unsigned char* pixels, int width, int height, const unsigned char* mask,
                                       int colour, CObjProgress* progress, int start, int end);
    static int ImageProcessWithInpaint(unsigned char* pixels, int width, int height, const unsigned char* mask,
                                       int colour, const PixelRect& marks, CObjProgress* progress, int start, int end);

    // Lightens dark circles: moves the low frequencies of the skin under every pixel of `mask` whose alpha is not 0
    // towards those of the cheek below the mark, in light and colour. `strength` 0 is neutral and 10 closes 70 % of the
    // gap; anything beyond is held there. Texture stays, so do lashes and the eye. The change fades out towards the
    // mark's border, within four tenths of `radius`, the brush's in pixels, at least 1, and towards its left and right
    // end (DarkCircle.cpp).
    static int BlackEye(unsigned char* pixels, int width, int height, const unsigned char* mask, int radius,
                        int strength, CObjProgress* progress, int start, int end);
    static int BlackEye(unsigned char* pixels, int width, int height, const unsigned char* mask, int radius,
                        int strength, const PixelRect& marks, CObjProgress* progress, int start, int end);

    // Removes a red eye: darkens the red pupil whose middle lies in the rectangle, found by colour, roundness and the
    // iris around it, and keeps its highlight. Where there is none no pixel changes, so that a second call changes
    // nothing more (RedPupil.cpp). 0 for a null bitmap.
    static int RedEyeRemove(Bitmap* bitmap, const PixelRect& rect);
    static int RedEyeRemove(Bitmap& bitmap, const PixelRect& rect);

    // --- Looks of whole pictures
    // -----------------------------------------------------------------------------------------------

    // One of eight looks of a portrait: 1 natural, 2 warm, 3 fair, 4 dreamy, 5 fresh, 6 rosy, 7 cool, 8 clear. Each is
    // a recipe, a file of the folder "Beauty" in the program's folder `path` (a null-terminated const wchar_t*; null
    // or an empty text stands for the folder of the call before): what it does to skin, known by colour, evenness and
    // place without a face finder (FaceRetouch.cpp), then light, colour and glow of the whole picture as in CEffect.
    // Lengths follow the face, so that a reduced picture shows the same look. The four numbers have no meaning.
    // Refused for any other type and when the recipe cannot be read. Instruction sets may differ by two levels.
    static int AutoBeauty(int type, unsigned char* pixels, int width, int height, int, int, int, int, void* path,
                          CObjProgress* progress = nullptr, int start = 0, int end = 100);

    // Improves a whole picture after judging it; `stride` in bytes, at least 4 x width.
    // A copy of at most 480 pixels gives the black and white point, the middle, the light of nearly grey pixels and the
    // share of skin; from these come levels and a white balance, each with a limit by scene. Two guided filters (He,
    // Sun, Tang 2010) on reduced copies divide luma into a base, middle detail and the finest detail, which a scene
    // weighs differently on skin and elsewhere; then colours are raised by their kind (sky, foliage, warm) as in
    // Saturateconst. What the scenes want stands in SceneJudge.cpp: scenery lifts local contrast, sky and foliage;
    // portrait smooths the finest detail of skin and warms it a little; objects gets neutral whites and crispness; food
    // gets warm colour. Skin likelihood is one rule, kernels/SkinTone.h.
    static int ScenarioBeauty(unsigned char* pixels, int width, int height, int stride, eScenarioType type,
                              CObjProgress* progress, int start, int end);

    // --- Brushes
    // ---------------------------------------------------------------------------------------------------------------

    // Fills a table of 2 * radius rows of as many bytes with the alpha of a soft disc: 255 on the four middle pixels,
    // falling all the way without a bend that a row of stamps could show, 0 at `radius`. Refused when the table is null
    // or radius is below 1.
    static int Circle_Gradient_Alpha(unsigned char** table, int radius);
    // The same, fuller: 255 over the inner two thirds, then a narrow soft edge.
    static int Circle_Gradient_Alpha2Eye(unsigned char** table, int radius);

    // --- Size and place
    // ------------------------------------------------------------------------------------------------

    // The whole picture at another size, by a sinc in a window of Kaiser's (1974): over ten pixels where it enlarges,
    // over eight pixels of the result where it reduces (six from a half on), which keeps out what the smaller picture
    // can't carry. Separable, in whole numbers whose weights sum to exactly one: flat areas stay flat, the same size
    // gives the same bytes. Beyond the source its border repeats. Translucent pixels count by their alpha. Null for a
    // null picture, a size that is not allowed, or when cancelled.
    static Bitmap Resample(const Bitmap& source, int width, int height, CObjProgress* progress = nullptr, int start = 0,
                           int end = 100);

    // Draws the rectangle of `source` at (sx, sy) of size sw x sh, in source pixels and parts of them, over all of
    // `target`, whose size says the scale. Where it reduces, each result pixel is the exact mean of the area it covers;
    // where it enlarges, Fast is bilinear and Best cubic. Beyond the source its border repeats. A part of a view is the
    // same part of the whole view, within a level. Nothing happens for a null bitmap or an empty or senseless
    // rectangle.
    static void ResampleRect(const Bitmap& source, double sx, double sy, double sw, double sh, Bitmap& target,
                             ResampleQuality quality);

    // Quarter turns and mirrors, exact. 0 for a null bitmap or a number out of range.
    static int SingleRotate(Bitmap* bitmap, RotateFlipType type);
    static int SingleRotate(Bitmap& bitmap, RotateFlipType type);

    // A copy turned clockwise about the centre by any whole number of degrees. Multiples of 90 are exact; otherwise the
    // result is as large as the bounds of the turned picture, rounded up, and each of its pixels is taken once from the
    // source with a cubic (Catmull and Rom 1974) of 4 x 4 pixels at the nearest of 256 places between pixels each way.
    // Border pixels are covered by the share of their area that the picture has (exact along its sides), with the
    // picture's own colours; corners are transparent white. Translucent pixels count by their alpha. Opaque pictures
    // give the same bytes with every instruction set. The four other numbers have no meaning. Null for a null picture
    // and when the bounds are larger than a bitmap may be.
    static Bitmap MultiRotate(const Bitmap& source, int angle, int, int, int, int);
    // What MultiRotate gives, drawn about the middle of width x height pixels which are as large as `scale` source
    // pixels: still one cubic sample each, without a filter before it, so for scales near 1, as under a moving hand.
    // Multiples of 90 degrees fill the size. Null for a null picture and a size that is not allowed.
    static Bitmap MultiRotateInto(const Bitmap& source, int angle, double scale, int width, int height);
    // The size that MultiRotate would give a picture of width x height, both above 0, without making it. It may be
    // larger than a bitmap may be; a side beyond the range of int is held at its end.
    static void MultiRotateSize(int width, int height, int angle, int* rotatedWidth, int* rotatedHeight);

    // A copy of the part of `source` that lies in the rectangle; null when none does.
    static Bitmap Clone(const Bitmap& source, int x, int y, int width, int height);
};
