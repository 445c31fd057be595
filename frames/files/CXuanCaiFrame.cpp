// SPDX-License-Identifier: GPL-3.0-or-later
#include "CXuanCaiFrame.h"

#include <algorithm>
#include <cstring>

#include "CEffect.h"
#include "PC_Dsp.h"
#include "Premultiplied.h"
#include "RectRows.h"
#include "Rows.h"
#include "Truncate.h"

namespace {

constexpr std::size_t MagicAt = 12;
constexpr std::size_t MayRotateAt = 138, KeepRatioAt = 139, StretchAt = 140, BlendModeAt = 141;
constexpr std::size_t DataSizeAt = 166, DataAt = 174;
constexpr std::uint64_t ShortestRefused = 182;

bool IsSet(std::uint8_t digit) {
    return digit >= '1' && digit <= '9';
}

bool IsTall(const Bitmap& bitmap) {
    return bitmap.Height() > bitmap.Width();
}

}  // namespace

FrameFault CXuanCaiFrame::Sniff(const FrameBytes& head, std::uint64_t total) const {
    if (total <= ShortestRefused) return FrameFault::TooShort;
    return head.HasMagic(MagicAt, "XCBK1", Qt::CaseSensitive) ? FrameFault::None : FrameFault::OtherKind;
}

// The file also names the picture's format; the picture's own bytes say it better.
FrameFault CXuanCaiFrame::Parse(const FrameBytes& bytes) {
    m_mayRotate = IsSet(bytes.data[MayRotateAt]);
    m_keepRatio = IsSet(bytes.data[KeepRatioAt]);
    m_stretch = IsSet(bytes.data[StretchAt]);
    m_blendMode = bytes.data[BlendModeAt];
    if (m_blendMode >= BlendModeCount) return FrameFault::Damaged;
    const int size = bytes.Int(DataSizeAt);
    if (size > 0) {
        m_overlay = bytes.Picture(DataAt, static_cast<std::uint64_t>(size));
        if (!m_overlay) return FrameFault::Damaged;
    }
    m_loaded = true;
    return FrameFault::None;
}

void CXuanCaiFrame::Forget() {
    m_loaded = false;
    m_overlay = m_before = m_after = {};
}

CXuanCaiFrame::Fit CXuanCaiFrame::FitTo(const Bitmap& picture) const {
    Fit fit{m_overlay, 0, 0, m_overlay.Width(), m_overlay.Height()};
    if (m_stretch) return fit;
    if (m_keepRatio) {
        const double scale =
            std::min(double(m_overlay.Width()) / picture.Width(), double(m_overlay.Height()) / picture.Height());
        fit.width = TruncateSide(picture.Width() * scale);
        fit.height = TruncateSide(picture.Height() * scale);
        fit.x = Truncate((m_overlay.Width() - fit.width) * 0.5);
        fit.y = Truncate((m_overlay.Height() - fit.height) * 0.5);
        return fit;
    }
    const bool bothLandscape = !IsTall(picture) && !IsTall(m_overlay);
    if (!m_mayRotate || bothLandscape) return fit;
    PC_Dsp::SingleRotate(fit.overlay, RotateFlipType::Rotate90FlipNone);
    fit.width = fit.overlay.Width();
    fit.height = fit.overlay.Height();
    return fit;
}

// The stretched overlay as a whole would be written to memory and read again; row by row it never leaves the cache.
Bitmap CXuanCaiFrame::Laid(const Bitmap& picture, const ProgressSpan& span) const {
    const Fit fit = FitTo(picture);
    const int width = picture.Width(), height = picture.Height();
    const bool plain = m_blendMode == BlendNormal;
    const RectRows overlay(plain ? Premultiplied(fit.overlay) : fit.overlay, fit.x, fit.y, fit.width, fit.height, width,
                           height, plain ? FourthByte::Channel : FourthByte::Alpha);
    Bitmap result = Bitmap::Uninitialised(width, height);
    std::uint8_t* out = result.MutablePixels();
    const auto lay = [&](int y, std::uint8_t* layer) {
        std::uint8_t* to = out + y * result.Stride();
        if (plain) return DrawPremultipliedOver(picture.Row(y), layer, width, to);
        std::memcpy(to, picture.Row(y), static_cast<std::size_t>(result.Stride()));
        CEffect::ChannelBlend_X(to, layer, width, 1, m_blendMode, nullptr, 0, 100);
    };
    const bool done =
        RunRows(span, height, GrainOf(width), [&](int first, int last) { overlay.ForEach(first, last, lay); });
    return done ? result : Bitmap();
}

bool CXuanCaiFrame::Compose(Bitmap& picture, const ProgressSpan& span) {
    if (!m_loaded || !picture) return false;
    const Bitmap result = m_overlay ? Laid(picture, span) : picture;
    if (!result) return false;
    if (!m_before) m_before = picture;
    if (!m_after) m_after = result;
    picture = result;
    return true;
}
