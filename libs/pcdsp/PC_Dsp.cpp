// SPDX-License-Identifier: GPL-3.0-or-later
#include "PC_Dsp.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <new>

#include "AutoBeauty.h"
#include "BeautyShelf.h"
#include "ColourRamp.h"
#include "DarkCircle.h"
#include "FreeRotate.h"
#include "PointPlan.h"
#include "RedPupil.h"
#include "Resampler.h"
#include "Rotate.h"
#include "Rows.h"
#include "Scene.h"
#include "SkinSmooth.h"
#include "SkinTint.h"
#include "SoftDisc.h"
#include "SpotHeal.h"
#include "TeethWhiten.h"
#include "Truncate.h"
#include "UsmSharpen.h"

namespace {

bool Usable(const unsigned char* pixels, int width, int height) {
    return pixels && Bitmap::Allowed(width, height);
}

// Whole numbers of any size, near enough for a float; every operation holds its own range.
float Held(long value) {
    return static_cast<float>(std::clamp(value, -1000000L, 1000000L));
}

// A neutral call still reports its end and obeys a cancel.
int NothingToDo(const ProgressSpan& span) {
    if (!span.CanContinue()) return 0;
    span.Report(1, 1);
    return 1;
}

bool IsSharpening(float radius, float amount) {
    return std::isfinite(radius) && radius > 0.0f && !std::isnan(amount);
}

bool AreOps(const PointOp* ops, int count) {
    return count == 0 || (count > 0 && ops);
}

void RunStages(const PointPlan& plan, std::uint8_t* row, int width) {
    const std::vector<PointStage>& stages = plan.Stages();
    if (!plan.IsNeutral()) Kernels().pointRow(row, width, stages.data(), static_cast<int>(stages.size()));
}

PixelView ViewOf(const Bitmap& bitmap) {
    return {bitmap.Pixels(), bitmap.Width(), bitmap.Height(), bitmap.Stride()};
}

// The same angle in 0 to 359 degrees.
int WithinTurn(int angle) {
    return (angle % 360 + 360) % 360;
}

ResampleFilter WholeFilter(int sourceLength, int length) {
    if (sourceLength == length) return ResampleFilter::Area;
    return sourceLength > length ? ResampleFilter::Smooth : ResampleFilter::Sharp;
}

}  // namespace

int PC_Dsp::ApplyPointOps(unsigned char* pixels, int width, int height, const PointOp* ops, int count,
                          CObjProgress* progress, int start, int end) {
    if (!Usable(pixels, width, height) || !AreOps(ops, count)) return 0;
    PointPlan plan;
    if (!plan.Add(ops, count)) return 0;
    const ProgressSpan span{progress, start, end};
    if (plan.IsNeutral()) return NothingToDo(span);
    const std::ptrdiff_t stride = std::ptrdiff_t{4} * width;
    return RunRows(span, height, GrainOf(width), [&](int first, int last) {
        for (int y = first; y < last; ++y) RunStages(plan, pixels + y * stride, width);
    });
}

int PC_Dsp::LightNew(unsigned char* pixels, int width, int height, long step, int mode, CObjProgress* progress,
                     int start, int end) {
    if (mode != 3) return 0;
    const PointOp op{PointOp::Kind::LightNew, Held(step)};
    return ApplyPointOps(pixels, width, height, &op, 1, progress, start, end);
}

int PC_Dsp::Light(unsigned char* pixels, int width, int height, long brightness, long contrast, CObjProgress* progress,
                  int start, int end) {
    const PointOp ops[] = {{PointOp::Kind::LightNew, Held(brightness) / 10.0f}, {PointOp::Kind::Light, Held(contrast)}};
    return ApplyPointOps(pixels, width, height, ops, 2, progress, start, end);
}

int PC_Dsp::Saturateconst(unsigned char* pixels, int width, int height, long saturation, int protectSkin,
                          CObjProgress* progress, int start, int end) {
    const PointOp op{PointOp::Kind::Saturateconst, Held(saturation), protectSkin ? 1.0f : 0.0f};
    return ApplyPointOps(pixels, width, height, &op, 1, progress, start, end);
}

int PC_Dsp::ExposureFilter(unsigned char* pixels, int width, int height, float value, CObjProgress* progress, int start,
                           int end) {
    const PointOp op{PointOp::Kind::ExposureFilter, value};
    return ApplyPointOps(pixels, width, height, &op, 1, progress, start, end);
}

int PC_Dsp::SetHue(unsigned char* pixels, int width, int height, int degrees, CObjProgress* progress, int start,
                   int end) {
    const PointOp op{PointOp::Kind::SetHue, static_cast<float>(degrees % 360)};
    return ApplyPointOps(pixels, width, height, &op, 1, progress, start, end);
}

int PC_Dsp::SetColor(unsigned char* pixels, int width, int height, int red, int green, int blue, CObjProgress* progress,
                     int start, int end) {
    const PointOp op{PointOp::Kind::SetColor, Held(red), Held(green), Held(blue)};
    return ApplyPointOps(pixels, width, height, &op, 1, progress, start, end);
}

int PC_Dsp::UsmSharp(unsigned char* pixels, int width, int height, float radius, float amount, CObjProgress* progress,
                     int start, int end) {
    if (!Usable(pixels, width, height) || !IsSharpening(radius, amount)) return 0;
    const ProgressSpan span{progress, start, end};
    if (amount == 0.0f) return NothingToDo(span);
    return UsmSharpen(pixels, width, height, radius, amount, span);
}

int PC_Dsp::SharpenAndApply(const unsigned char* source, unsigned char* target, int width, int height, float radius,
                            float amount, const PointOp* ops, int count, CObjProgress* progress, int start, int end) {
    if (!Usable(source, width, height) || !target || !IsSharpening(radius, amount) || !AreOps(ops, count)) return 0;
    PointPlan plan;
    if (!plan.Add(ops, count)) return 0;
    const ProgressSpan span{progress, start, end};
    const auto apply = [&](std::uint8_t* row) { RunStages(plan, row, width); };
    if (amount != 0.0f) return UsmSharpenInto(source, target, width, height, radius, amount, apply, span);
    const std::ptrdiff_t stride = std::ptrdiff_t{4} * width;
    return RunRows(span, height, GrainOf(width), [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            std::copy_n(source + y * stride, stride, target + y * stride);
            apply(target + y * stride);
        }
    });
}

int PC_Dsp::CannyDericheBlur(unsigned char* pixels, int width, int height, float sigmaX, float sigmaY,
                             const unsigned char* mask, CObjProgress* progress, int start, int end) {
    if (!Usable(pixels, width, height) || !std::isfinite(sigmaX) || !std::isfinite(sigmaY)) return 0;
    if (sigmaX < 0.0f || sigmaY < 0.0f) return 0;
    const ProgressSpan span{progress, start, end};
    const float sigma = std::min(std::sqrt(sigmaX) * std::sqrt(sigmaY), 10.0f);
    return sigma == 0.0f ? NothingToDo(span) : SmoothSkin(pixels, width, height, sigma, mask, span);
}

int PC_Dsp::CannyDericheBlur(Bitmap& bitmap, float sigmaX, float sigmaY, const unsigned char* mask,
                             CObjProgress* progress, int start, int end) {
    if (!bitmap) return 0;
    return CannyDericheBlur(bitmap.MutablePixels(), bitmap.Width(), bitmap.Height(), sigmaX, sigmaY, mask, progress,
                            start, end);
}

int PC_Dsp::CompositeColor(unsigned char* pixels, int width, int height, unsigned char red, unsigned char green,
                           unsigned char blue, CObjProgress* progress, int start, int end) {
    if (!Usable(pixels, width, height)) return 0;
    return TintSkin(pixels, width, height, SkinToneRamp(red, green, blue), {progress, start, end});
}

int PC_Dsp::CompositeColor(Bitmap& bitmap, unsigned char red, unsigned char green, unsigned char blue,
                           CObjProgress* progress, int start, int end) {
    if (!bitmap) return 0;
    return CompositeColor(bitmap.MutablePixels(), bitmap.Width(), bitmap.Height(), red, green, blue, progress, start,
                          end);
}

int PC_Dsp::Color_Channel_Composite(unsigned char* pixels, int width, int height, unsigned char red,
                                    unsigned char green, unsigned char blue, CObjProgress* progress, int start,
                                    int end) {
    if (!Usable(pixels, width, height)) return 0;
    const ColourRamp ramp = RecolouringRamp(red, green, blue);
    const std::ptrdiff_t stride = std::ptrdiff_t{4} * width;
    return RunRows({progress, start, end}, height, GrainOf(width), [&](int first, int last) {
        for (int y = first; y < last; ++y) Kernels().recolourRow(pixels + y * stride, width, ramp.colours);
    });
}

int PC_Dsp::Color_Channel_Composite(Bitmap& bitmap, unsigned char red, unsigned char green, unsigned char blue,
                                    CObjProgress* progress, int start, int end) {
    if (!bitmap) return 0;
    return Color_Channel_Composite(bitmap.MutablePixels(), bitmap.Width(), bitmap.Height(), red, green, blue, progress,
                                   start, end);
}

int PC_Dsp::MeiBaiYaChi(unsigned char* pixels, int width, int height, CObjProgress* progress, int start, int end) {
    if (!Usable(pixels, width, height)) return 0;
    return WhitenTeeth(pixels, width, height, {progress, start, end});
}

int PC_Dsp::ImageProcessWithInpaint(unsigned char* pixels, int width, int height, const unsigned char* mask, int colour,
                                    CObjProgress* progress, int start, int end) {
    return ImageProcessWithInpaint(pixels, width, height, mask, colour, {0, 0, width, height}, progress, start, end);
}

int PC_Dsp::ImageProcessWithInpaint(unsigned char* pixels, int width, int height, const unsigned char* mask, int colour,
                                    const PixelRect& marks, CObjProgress* progress, int start, int end) {
    if (!Usable(pixels, width, height) || !mask) return 0;
    const PixelRect part = marks.Within({0, 0, width, height});
    const ProgressSpan span{progress, start, end};
    if (part.IsEmpty()) return NothingToDo(span);
    return HealSpots(pixels, width, height, mask, static_cast<std::uint32_t>(colour), part, span);
}

int PC_Dsp::BlackEye(unsigned char* pixels, int width, int height, const unsigned char* mask, int radius, int strength,
                     CObjProgress* progress, int start, int end) {
    return BlackEye(pixels, width, height, mask, radius, strength, {0, 0, width, height}, progress, start, end);
}

int PC_Dsp::BlackEye(unsigned char* pixels, int width, int height, const unsigned char* mask, int radius, int strength,
                     const PixelRect& marks, CObjProgress* progress, int start, int end) {
    if (!Usable(pixels, width, height) || !mask || radius < 1) return 0;
    const PixelRect part = marks.Within({0, 0, width, height});
    const ProgressSpan span{progress, start, end};
    if (part.IsEmpty() || strength <= 0) return NothingToDo(span);
    return LightenCircles(pixels, width, height, mask, radius, std::min(strength, 10), part, span);
}

int PC_Dsp::RedEyeRemove(Bitmap* bitmap, const PixelRect& rect) {
    return bitmap ? RedEyeRemove(*bitmap, rect) : 0;
}

int PC_Dsp::RedEyeRemove(Bitmap& bitmap, const PixelRect& rect) {
    if (!bitmap) return 0;
    const PixelRect part = rect.Within({0, 0, bitmap.Width(), bitmap.Height()});
    if (!part.IsEmpty()) DarkenRedPupil(bitmap, part);
    return 1;
}

int PC_Dsp::AutoBeauty(int type, unsigned char* pixels, int width, int height, int, int, int, int, void* path,
                       CObjProgress* progress, int start, int end) {
    if (!Usable(pixels, width, height)) return 0;
    std::shared_ptr<const Look> look;
    try {
        const wchar_t* folder = static_cast<const wchar_t*>(path);
        look = BeautyShelf::Take(folder ? std::filesystem::path(folder) : std::filesystem::path(), type);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return 0;  // a folder whose name is no text
    }
    return look ? Beautify(pixels, width, height, *look, {progress, start, end}) : 0;
}

int PC_Dsp::Circle_Gradient_Alpha(unsigned char** table, int radius) {
    if (!table || radius < 1) return 0;
    FillSoftDisc(table, radius, 0.0);
    return 1;
}

int PC_Dsp::Circle_Gradient_Alpha2Eye(unsigned char** table, int radius) {
    if (!table || radius < 1) return 0;
    FillSoftDisc(table, radius, 2.0 / 3.0);
    return 1;
}

int PC_Dsp::ScenarioBeauty(unsigned char* pixels, int width, int height, int stride, eScenarioType type,
                           CObjProgress* progress, int start, int end) {
    const SceneRecipe* recipe = RecipeOf(type);
    if (!Usable(pixels, width, height) || !recipe || stride < std::int64_t{4} * width) return 0;
    return BeautifyScene(pixels, width, height, stride, *recipe, {progress, start, end});
}

Bitmap PC_Dsp::Resample(const Bitmap& source, int width, int height, CObjProgress* progress, int start, int end) {
    if (!source || !Bitmap::Allowed(width, height)) return {};
    const ProgressSpan span{progress, start, end};
    if (width == source.Width() && height == source.Height()) {
        span.Report(1, 1);
        return source;
    }
    Bitmap out = Bitmap::Uninitialised(width, height);
    const ResampleTaps columns(source.Width(), 0, source.Width(), width, WholeFilter(source.Width(), width));
    const ResampleTaps rows(source.Height(), 0, source.Height(), height, WholeFilter(source.Height(), height));
    return ResampleInto(ViewOf(source), columns, rows, out.MutablePixels(), span) ? out : Bitmap();
}

void PC_Dsp::ResampleRect(const Bitmap& source, double sx, double sy, double sw, double sh, Bitmap& target,
                          ResampleQuality quality) {
    if (!source || !target || !(sw > 0.0) || !(sh > 0.0) || !std::isfinite(sx + sy + sw + sh)) return;
    const double far = 4.0 * Bitmap::MaxSide;
    if (std::max({std::abs(sx), std::abs(sy), sw, sh}) > far) return;
    const Bitmap kept = source;  // target may be the source itself
    if (target.SharesPixelsWith(source)) target = Bitmap::Uninitialised(target.Width(), target.Height());
    const ResampleTaps columns(kept.Width(), sx, sw, target.Width(), ViewFilter(sw, target.Width(), quality));
    const ResampleTaps rows(kept.Height(), sy, sh, target.Height(), ViewFilter(sh, target.Height(), quality));
    ResampleInto(ViewOf(kept), columns, rows, target.MutablePixels(), {});
}

int PC_Dsp::SingleRotate(Bitmap* bitmap, RotateFlipType type) {
    if (!bitmap || !*bitmap || type < RotateNoneFlipNone || type > Rotate270FlipX) return 0;
    *bitmap = Rotated(*bitmap, type);
    return 1;
}

int PC_Dsp::SingleRotate(Bitmap& bitmap, RotateFlipType type) {
    return SingleRotate(&bitmap, type);
}

Bitmap PC_Dsp::MultiRotate(const Bitmap& source, int angle, int, int, int, int) {
    if (!source) return {};
    const int degrees = WithinTurn(angle);
    if (degrees % 90 == 0) return Rotated(source, static_cast<RotateFlipType>(degrees / 90));
    return FreelyRotated(source, degrees);
}

Bitmap PC_Dsp::MultiRotateInto(const Bitmap& source, int angle, double scale, int width, int height) {
    if (!source || !Bitmap::Allowed(width, height)) return {};
    const int degrees = WithinTurn(angle);
    if (degrees % 90 == 0) return Resample(Rotated(source, static_cast<RotateFlipType>(degrees / 90)), width, height);
    return FreelyRotated(source, degrees, scale, width, height);
}

void PC_Dsp::MultiRotateSize(int width, int height, int angle, int* rotatedWidth, int* rotatedHeight) {
    const RotatedBounds bounds = BoundsOf(width, height, WithinTurn(angle));
    *rotatedWidth = Truncate(bounds.width);
    *rotatedHeight = Truncate(bounds.height);
}

Bitmap PC_Dsp::Clone(const Bitmap& source, int x, int y, int width, int height) {
    const std::int64_t left = std::max(x, 0), top = std::max(y, 0);
    const std::int64_t right = std::min<std::int64_t>(std::int64_t{x} + width, source.Width());
    const std::int64_t bottom = std::min<std::int64_t>(std::int64_t{y} + height, source.Height());
    if (width < 1 || height < 1 || right <= left || bottom <= top) return {};
    Bitmap out = Bitmap::Uninitialised(static_cast<int>(right - left), static_cast<int>(bottom - top));
    std::uint8_t* to = out.MutablePixels();
    const std::ptrdiff_t stride = out.Stride();
    ForEachBand(out.Height(), GrainOf(out.Width()), [&](int first, int last) {
        for (int row = first; row < last; ++row)
            std::copy_n(source.Row(static_cast<int>(top) + row) + 4 * left, stride, to + row * stride);
    });
    return out;
}
