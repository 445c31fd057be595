// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColourToSrgb.h"

#include <lcms2.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>

#include "Parallel.h"

namespace {

using Model = PictureTarget::Model;

struct CloseContext {
    void operator()(cmsContext context) const { cmsDeleteContext(context); }
};
struct CloseProfile {
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
struct CloseTransform {
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};
using Profile = std::unique_ptr<void, CloseProfile>;
using Transform = std::unique_ptr<void, CloseTransform>;

// A context of its own has no error handler, so nothing is printed and no global state is touched.
using Context = std::unique_ptr<std::remove_pointer_t<cmsContext>, CloseContext>;

Context MakeContext() {
    return Context(cmsCreateContext(nullptr, nullptr));
}

bool Fits(cmsColorSpaceSignature space, Model model) {
    switch (model) {
        case Model::Gray:
            return space == cmsSigGrayData;
        case Model::Cmyk:
            return space == cmsSigCmykData;
        case Model::Rgb:
            return space == cmsSigRgbData;
    }
    return false;
}

// A grey picture may carry an RGB profile: its equal channels are then ordinary RGB.
Model EffectiveModel(Model model, cmsColorSpaceSignature space) {
    return model == Model::Gray && space == cmsSigRgbData ? Model::Rgb : model;
}

// From `colours` in the pixel format `input` to sRGB in `output`; null when there is no profile that can be used.
Transform MakeTransform(cmsContext context, const SourceColours& colours, Model& model, bool deep) {
    if (colours.profile.empty()) return nullptr;
    const Profile from(cmsOpenProfileFromMemTHR(context, colours.profile.data(), colours.profile.size()));
    if (!from) return nullptr;
    const cmsColorSpaceSignature space = cmsGetColorSpace(from.get());
    model = EffectiveModel(colours.model, space);
    if (!Fits(space, model)) return nullptr;
    const Profile to(cmsCreate_sRGBProfileTHR(context));
    const cmsUInt32Number input = model == Model::Cmyk   ? TYPE_CMYK_8
                                  : model == Model::Gray ? (deep ? TYPE_GRAY_16 : TYPE_GRAY_8)
                                                         : (deep ? TYPE_RGBA_16 : TYPE_BGRA_8);
    const bool alpha = model == Model::Rgb;
    // NOCACHE is what makes one transform usable from several threads.
    const cmsUInt32Number flags =
        cmsFLAGS_NOCACHE | cmsFLAGS_BLACKPOINTCOMPENSATION | (alpha ? cmsFLAGS_COPY_ALPHA : 0);
    return Transform(
        cmsCreateTransformTHR(context, from.get(), input, to.get(), TYPE_BGRA_8, INTENT_RELATIVE_COLORIMETRIC, flags));
}

// True when the transform moves no colour of a lattice by more than one level.
bool ChangesNothing(void* transform) {
    std::array<std::uint8_t, 4> in, out;
    for (int r = 0; r <= 255; r += 17)
        for (int g = 0; g <= 255; g += 51)
            for (int b = 0; b <= 255; b += 51) {
                in = {std::uint8_t(b), std::uint8_t(g), std::uint8_t(r), 255};
                cmsDoTransform(transform, in.data(), out.data(), 1);
                for (int c = 0; c < 3; ++c)
                    if (std::abs(in[c] - out[c]) > 1) return false;
            }
    return true;
}

int BandRows(int width) {
    return std::max(1, 16384 / std::max(1, width));
}

// Grey has 256 colours only.
void ConvertGray(Bitmap& picture, void* transform) {
    std::array<std::uint8_t, 256> levels;
    std::array<std::uint32_t, 256> colours;
    for (int i = 0; i < 256; ++i) levels[i] = static_cast<std::uint8_t>(i);
    cmsDoTransform(transform, levels.data(), colours.data(), 256);
    auto* pixels = reinterpret_cast<std::uint32_t*>(picture.MutablePixels());
    const std::ptrdiff_t width = picture.Width();
    ForEachBand(picture.Height(), BandRows(picture.Width()), [&](int first, int last) {
        for (std::ptrdiff_t i = first * width; i < last * width; ++i)
            pixels[i] = (pixels[i] & 0xFF000000u) | (colours[pixels[i] & 255] & 0x00FFFFFFu);
    });
}

void ConvertInkPlainly(Bitmap& picture) {
    std::uint8_t* pixels = picture.MutablePixels();
    const std::ptrdiff_t stride = picture.Stride();
    ForEachBand(picture.Height(), BandRows(picture.Width()), [&](int first, int last) {
        for (std::uint8_t* p = pixels + first * stride; p < pixels + last * stride; p += 4) {
            const int light = 255 - p[3];
            const int red = (255 - p[0]) * light, green = (255 - p[1]) * light, blue = (255 - p[2]) * light;
            p[0] = static_cast<std::uint8_t>((blue + 127) / 255);
            p[1] = static_cast<std::uint8_t>((green + 127) / 255);
            p[2] = static_cast<std::uint8_t>((red + 127) / 255);
            p[3] = 255;
        }
    });
}

void ConvertRows(Bitmap& picture, void* transform, bool opaque) {
    std::uint8_t* pixels = picture.MutablePixels();
    const std::ptrdiff_t stride = picture.Stride();
    ForEachBand(picture.Height(), BandRows(picture.Width()), [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            std::uint8_t* row = pixels + y * stride;
            cmsDoTransform(transform, row, row, static_cast<cmsUInt32Number>(picture.Width()));
            if (opaque)
                for (std::ptrdiff_t i = 3; i < stride; i += 4) row[i] = 255;
        }
    });
}

std::uint8_t ToByte(std::uint16_t value) {
    return static_cast<std::uint8_t>((value * 255u + 32767u) / 65535u);
}

}  // namespace

void ConvertToSrgb(Bitmap& picture, const SourceColours& colours) {
    if (!picture) return;
    const Context context = MakeContext();
    Model model = colours.model;
    const Transform transform = MakeTransform(context.get(), colours, model, false);
    if (!transform) {
        if (colours.model == Model::Cmyk) ConvertInkPlainly(picture);
        return;
    }
    if (model == Model::Gray)
        ConvertGray(picture, transform.get());
    else if (model == Model::Cmyk || !ChangesNothing(transform.get()))
        ConvertRows(picture, transform.get(), model == Model::Cmyk);
}

Bitmap DeepToSrgb(const std::uint16_t* pixels, int width, int height, const SourceColours& colours) {
    Bitmap picture = Bitmap::Uninitialised(width, height);
    std::uint8_t* out = picture.MutablePixels();
    const std::ptrdiff_t stride = picture.Stride();
    const Context context = MakeContext();
    Model model = colours.model;
    const Transform transform = MakeTransform(context.get(), colours, model, true);
    ForEachBand(height, BandRows(width), [&](int first, int last) {
        std::vector<std::uint16_t> grey(model == Model::Gray && transform ? width : 0);
        for (int y = first; y < last; ++y) {
            const std::uint16_t* in = pixels + std::ptrdiff_t{4} * width * y;
            std::uint8_t* row = out + y * stride;
            for (int x = 0; x < width; ++x) {
                row[4 * x] = ToByte(in[4 * x + 2]);
                row[4 * x + 1] = ToByte(in[4 * x + 1]);
                row[4 * x + 2] = ToByte(in[4 * x]);
                row[4 * x + 3] = ToByte(in[4 * x + 3]);
            }
            if (!transform) continue;
            if (model == Model::Rgb) {
                cmsDoTransform(transform.get(), in, row, static_cast<cmsUInt32Number>(width));
                continue;
            }
            for (int x = 0; x < width; ++x) grey[x] = in[4 * x];
            std::vector<std::uint32_t> colour(width);
            cmsDoTransform(transform.get(), grey.data(), colour.data(), static_cast<cmsUInt32Number>(width));
            for (int x = 0; x < width; ++x)
                for (int c = 0; c < 3; ++c) row[4 * x + c] = static_cast<std::uint8_t>(colour[x] >> 8 * c);
        }
    });
    return picture;
}

namespace {

std::vector<std::uint8_t> Bytes(void* profile) {
    cmsUInt32Number size = 0;
    if (!profile || !cmsSaveProfileToMem(profile, nullptr, &size)) return {};
    std::vector<std::uint8_t> bytes(size);
    if (!cmsSaveProfileToMem(profile, bytes.data(), &size)) bytes.clear();
    return bytes;
}

void Describe(cmsContext context, void* profile) {
    cmsMLU* text = cmsMLUalloc(context, 1);
    cmsMLUsetASCII(text, "en", "US", "sRGB IEC61966-2.1");
    cmsWriteTag(profile, cmsSigProfileDescriptionTag, text);
    cmsMLUfree(text);
}

cmsToneCurve* MakeCurve(cmsContext context, double gamma) {
    if (gamma > 0) return cmsBuildGamma(context, gamma);
    const cmsFloat64Number srgb[5] = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    return cmsBuildParametricToneCurve(context, 4, srgb);
}

}  // namespace

std::vector<std::uint8_t> MakeProfile(const double (&xy)[8], double gamma) {
    for (int i = 1; i < 8; i += 2)
        if (!(xy[i] > 0.0001 && xy[i] <= 1) || !(xy[i - 1] >= 0 && xy[i - 1] <= 1)) return {};
    const Context context = MakeContext();
    const cmsCIExyY white = {xy[0], xy[1], 1};
    const cmsCIExyYTRIPLE primaries = {{xy[2], xy[3], 1}, {xy[4], xy[5], 1}, {xy[6], xy[7], 1}};
    cmsToneCurve* curve = MakeCurve(context.get(), gamma);
    cmsToneCurve* curves[3] = {curve, curve, curve};
    const Profile profile(cmsCreateRGBProfileTHR(context.get(), &white, &primaries, curves));
    cmsFreeToneCurve(curve);
    return Bytes(profile.get());
}

const std::vector<std::uint8_t>& SrgbProfile() {
    // A table of 256 points instead of the library's own 4096 keeps the profile near 1 KiB; between the points it is
    // off by less than a tenth of a level.
    static const std::vector<std::uint8_t> bytes = [] {
        const Context context = MakeContext();
        std::array<std::uint16_t, 256> table;
        for (int i = 0; i < 256; ++i) {
            const double v = i / 255.0;
            const double light = v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
            table[i] = static_cast<std::uint16_t>(std::lround(65535 * light));
        }
        cmsToneCurve* curve = cmsBuildTabulatedToneCurve16(context.get(), 256, table.data());
        cmsToneCurve* curves[3] = {curve, curve, curve};
        const cmsCIExyY white = {0.3127, 0.3290, 1};
        const cmsCIExyYTRIPLE primaries = {{0.64, 0.33, 1}, {0.30, 0.60, 1}, {0.15, 0.06, 1}};
        const Profile profile(cmsCreateRGBProfileTHR(context.get(), &white, &primaries, curves));
        cmsFreeToneCurve(curve);
        cmsSetProfileVersion(profile.get(), 2.1);
        Describe(context.get(), profile.get());
        return Bytes(profile.get());
    }();
    return bytes;
}
