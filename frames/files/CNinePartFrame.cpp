// SPDX-License-Identifier: GPL-3.0-or-later
#include "CNinePartFrame.h"

#include "FrameSides.h"
#include "Truncate.h"

namespace {

constexpr std::size_t KindAt = 8;
constexpr std::size_t PictureXAt = 40, PictureYAt = 44, ExtraWidthAt = 48, ExtraHeightAt = 52;
constexpr std::size_t NameCountAt = 64;
// Whatever the number of names is.
constexpr std::size_t NamesAt = 96;

}  // namespace

FrameFault CNinePartFrame::Sniff(const FrameBytes& head, std::uint64_t total) const {
    if (total <= NamesAt) return FrameFault::TooShort;
    const bool ours = head.HasMagic(0, "VNBK", Qt::CaseInsensitive) && head.Int(KindAt) == 0;
    return ours ? FrameFault::None : FrameFault::OtherKind;
}

FrameFault CNinePartFrame::Parse(const FrameBytes& bytes) {
    m_pictureX = bytes.Int(PictureXAt);
    m_pictureY = bytes.Int(PictureYAt);
    m_extraWidth = bytes.Int(ExtraWidthAt);
    m_extraHeight = bytes.Int(ExtraHeightAt);
    const std::size_t names = bytes.data[NameCountAt];
    if (!bytes.Holds(NameCountAt + 1, names)) return FrameFault::Damaged;
    std::uint64_t at = NamesAt;
    for (std::size_t i = 0; i < names; ++i) at += 2 * std::uint64_t{bytes.data[NameCountAt + 1 + i]};
    for (Bitmap& part : m_parts) {
        if (!bytes.Holds(at, 4)) return FrameFault::Damaged;
        const int size = bytes.Int(static_cast<std::size_t>(at));
        at += 4;
        if (size < 1) continue;
        part = bytes.Picture(at, static_cast<std::uint64_t>(size));
        if (!part) return FrameFault::Damaged;
        at += static_cast<std::uint64_t>(size);
    }
    m_loaded = true;
    return FrameFault::None;
}

void CNinePartFrame::Forget() {
    m_loaded = false;
    m_parts.fill({});
}

Bitmap CNinePartFrame::Compose(const Bitmap& picture, float scale, const ProgressSpan& span) const {
    FramePlan plan;
    return Plan(picture, scale, plan) ? DrawFramePlan(plan, picture, span) : Bitmap();
}

bool CNinePartFrame::Plan(const Bitmap& picture, float scale, FramePlan& plan) const {
    if (!m_loaded || !picture || !(scale > 0)) return false;
    const std::int64_t fullWidth = FrameSpan(picture.Width(), m_extraWidth, scale);
    const std::int64_t fullHeight = FrameSpan(picture.Height(), m_extraHeight, scale);
    const FrameRun top = RunOf(fullWidth - Width(TopRight) - Width(TopLeft), Width(Top));
    const FrameRun left = RunOf(fullHeight - Height(BottomLeft) - Height(TopLeft), Height(Left));
    const FrameRun right = RunOf(fullHeight - Height(BottomRight) - Height(TopRight), Height(Right));
    const FrameRun bottom = RunOf(fullWidth - Width(BottomRight) - Width(BottomLeft), Width(Bottom));
    const FrameSide across = SideOf(fullWidth - top.trim, scale), down = SideOf(fullHeight - left.trim, scale);
    if (!AllowedSides(across, down)) return false;

    plan = {};
    plan.width = static_cast<int>(across.frame);
    plan.height = static_cast<int>(down.frame);
    plan.resultWidth = across.result;
    plan.resultHeight = down.result;
    plan.pictureX = Truncate(static_cast<double>(m_pictureX - top.trim / 2) * scale);
    plan.pictureY = Truncate(static_cast<double>(m_pictureY - left.trim / 2) * scale);
    plan.texture = m_parts[Centre];
    const auto add = [&](Part part, std::int64_t x, std::int64_t y, std::int64_t countAcross = 1,
                         std::int64_t countDown = 1) {
        if (m_parts[part])
            plan.pieces.push_back({m_parts[part], 0, 0, Width(part), Height(part), x, y, countAcross, countDown});
    };
    add(TopLeft, 0, 0);
    add(Top, Width(TopLeft), 0, top.count);
    add(TopRight, plan.width - Width(TopRight), 0);
    add(Left, 0, Height(TopLeft), 1, left.count);
    add(Right, plan.width - Width(Right), Height(TopRight), 1, right.count);
    add(BottomLeft, 0, plan.height - Height(BottomLeft));
    add(Bottom, Width(BottomLeft), plan.height - Height(Bottom), bottom.count);
    add(BottomRight, plan.width - Width(BottomRight), plan.height - Height(BottomRight));
    return true;
}
