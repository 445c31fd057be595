// SPDX-License-Identifier: GPL-3.0-or-later
#include "CStripFrame.h"

#include "FrameSides.h"
#include "Truncate.h"

namespace {

constexpr std::size_t MagicAt = 12;
constexpr std::size_t PictureUnderAt = 36;
constexpr std::size_t PictureXAt = 37, PictureYAt = 41, ExtraWidthAt = 45, ExtraHeightAt = 49;
constexpr std::size_t SizesAt = 53;
constexpr std::size_t StripAt = 117;

// One tile more than fit: the surplus runs under the corner at the end.
std::int64_t TilesFor(std::int64_t span, int tile) {
    return span < 0 || tile < 1 ? 0 : span / tile + 1;
}

}  // namespace

FrameFault CStripFrame::Sniff(const FrameBytes& head, std::uint64_t total) const {
    if (total <= StripAt) return FrameFault::TooShort;
    return head.HasMagic(MagicAt, "LUXUS", Qt::CaseInsensitive) ? FrameFault::None : FrameFault::OtherKind;
}

FrameFault CStripFrame::Parse(const FrameBytes& bytes) {
    m_pictureOnTop = bytes.data[PictureUnderAt] == 0;
    m_pictureX = bytes.Int(PictureXAt);
    m_pictureY = bytes.Int(PictureYAt);
    m_extraWidth = bytes.Int(ExtraWidthAt);
    m_extraHeight = bytes.Int(ExtraHeightAt);
    for (std::size_t i = 0; i < PieceCount; ++i) {
        m_sizes[i] = {bytes.Int(SizesAt + 8 * i), bytes.Int(SizesAt + 8 * i + 4)};
        if (m_sizes[i].width < 0 || m_sizes[i].height < 0) return FrameFault::Damaged;
    }
    m_strip = bytes.Picture(StripAt, bytes.size - StripAt);
    return m_strip && PiecesLieInStrip() ? FrameFault::None : FrameFault::Damaged;
}

// Sides of corners that are no pieces themselves still say where the pieces beside them begin.
bool CStripFrame::PiecesLieInStrip() const {
    const auto width = [&](Piece piece) { return std::int64_t{m_sizes[piece].width}; };
    const auto height = [&](Piece piece) { return std::int64_t{m_sizes[piece].height}; };
    for (const Size& size : m_sizes)
        if (size.width > m_strip.Width() || size.height > m_strip.Height()) return false;
    return width(TopLeft) + width(Top) <= m_strip.Width() && width(BottomLeft) + width(Bottom) <= m_strip.Width() &&
           height(TopLeft) + height(Left) <= m_strip.Height() && height(TopRight) + height(Right) <= m_strip.Height();
}

void CStripFrame::AddPieces(FramePlan& plan) const {
    const int w = plan.width, h = plan.height, stripWidth = m_strip.Width(), stripHeight = m_strip.Height();
    const auto& s = m_sizes;
    const auto add = [&](Piece piece, int left, int top, std::int64_t x, std::int64_t y, std::int64_t across = 1,
                         std::int64_t down = 1) {
        const Size size = s[piece];
        if (size.width > 0 && size.height > 0)
            plan.pieces.push_back({m_strip, left, top, size.width, size.height, x, y, across, down});
    };
    const auto across = [&](Piece piece, Piece from, Piece to) {
        return TilesFor(std::int64_t{w} - s[to].width - s[from].width, s[piece].width);
    };
    const auto down = [&](Piece piece, Piece from, Piece to) {
        return TilesFor(std::int64_t{h} - s[to].height - s[from].height, s[piece].height);
    };
    add(TopLeft, 0, 0, 0, 0);
    add(Top, s[TopLeft].width, 0, s[TopLeft].width, 0, across(Top, TopLeft, TopRight));
    add(TopRight, stripWidth - s[TopRight].width, 0, w - s[TopRight].width, 0);
    add(Left, 0, s[TopLeft].height, 0, s[TopLeft].height, 1, down(Left, TopLeft, BottomLeft));
    add(Right, stripWidth - s[Right].width, s[TopRight].height, w - s[Right].width, s[TopRight].height, 1,
        down(Right, TopRight, BottomRight));
    add(BottomLeft, 0, stripHeight - s[BottomLeft].height, 0, h - s[BottomLeft].height);
    add(Bottom, s[BottomLeft].width, stripHeight - s[Bottom].height, s[BottomLeft].width, h - s[Bottom].height,
        across(Bottom, BottomLeft, BottomRight));
    add(BottomRight, stripWidth - s[BottomRight].width, stripHeight - s[BottomRight].height, w - s[BottomRight].width,
        h - s[BottomRight].height);
}

Bitmap CStripFrame::Compose(const Bitmap& picture, float scale, const ProgressSpan& span) const {
    FramePlan plan;
    return Plan(picture, scale, plan) ? DrawFramePlan(plan, picture, span) : Bitmap();
}

bool CStripFrame::Plan(const Bitmap& picture, float scale, FramePlan& plan) const {
    if (!m_strip || !picture || !(scale > 0)) return false;
    const FrameSide across = SideOf(FrameSpan(picture.Width(), m_extraWidth, scale), scale);
    const FrameSide down = SideOf(FrameSpan(picture.Height(), m_extraHeight, scale), scale);
    if (!AllowedSides(across, down)) return false;
    plan = {};
    plan.width = static_cast<int>(across.frame);
    plan.height = static_cast<int>(down.frame);
    plan.resultWidth = across.result;
    plan.resultHeight = down.result;
    plan.pictureX = Truncate(double(m_pictureX) * scale);
    plan.pictureY = Truncate(double(m_pictureY) * scale);
    plan.pictureOnTop = m_pictureOnTop;
    AddPieces(plan);
    return true;
}
