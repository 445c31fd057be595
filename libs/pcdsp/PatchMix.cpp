// SPDX-License-Identifier: GPL-3.0-or-later
#include "PatchMix.h"

#include <cmath>

#include "PlaneBlur.h"

namespace {

constexpr int Colours = SpotPlace::Colours;
constexpr float Falloff = 2.0f;     // a patch of twice the best one's cost counts e^-2 of it
constexpr float SureCost = 0.5f;    // squared levels below which costs are all the same
constexpr float FineSigma = 1.3f;   // what is finer comes from the best patch
constexpr float CoarsePart = 0.2f;  // and so much of what is coarser

}  // namespace

PatchMix::PatchMix(const SpotPlace& place, const std::vector<Patch>& patches) : m_place(place), m_patches(patches) {
    float total = 0.0f;
    for (const Patch& patch : patches) {
        m_shares.push_back(std::exp(-Falloff * (patch.cost / (patches[0].cost + SureCost) - 1.0f)));
        total += m_shares.back();
    }
    for (float& share : m_shares) share /= total;
}

// Beyond the place its border repeats.
void PatchMix::AddPatch(const Patch& patch, float share, const PixelRect& box, Planes& out) const {
    const int lastX = m_place.holes.width - 1, lastY = m_place.holes.height - 1;
    const int width = box.Width(), left = box.left + patch.dx;
    const int from = std::clamp(-left, 0, width), to = std::clamp(lastX + 1 - left, from, width);
    for (int c = 0; c < Colours; ++c)
        for (int y = 0; y < box.Height(); ++y) {
            const float* const row = m_place.colours.Row(c, std::clamp(box.top + y + patch.dy, 0, lastY));
            float* const sums = out.Row(c, y);
            for (int x = 0; x < from; ++x) sums[x] += share * row[0];
            for (int x = from; x < to; ++x) sums[x] += share * row[left + x];
            for (int x = to; x < width; ++x) sums[x] += share * row[lastX];
        }
}

void PatchMix::Fill(const PixelRect& box, Planes& out, const Pace& pace) const {
    Planes grain(Colours, box.Width(), box.Height()), coarse(Colours, box.Width(), box.Height());
    ForEachRow(out, [&](int c, int y, int width) {
        std::fill_n(out.Row(c, y), width, 0.0f);
        std::fill_n(grain.Row(c, y), width, 0.0f);
    });
    for (std::size_t i = 0; i < m_patches.size() && pace.GoesOn(); ++i) AddPatch(m_patches[i], m_shares[i], box, out);
    AddPatch(m_patches[0], 1.0f, box, grain);
    ForEachRow(out, [&](int c, int y, int width) {
        for (int x = 0; x < width; ++x) coarse.Row(c, y)[x] = grain.Row(c, y)[x] -= out.Row(c, y)[x];
    });
    BlurPlanes(coarse, FineSigma, pace);
    ForEachRow(out, [&](int c, int y, int width) {
        const float* const blurred = coarse.Row(c, y);
        const float* const whole = grain.Row(c, y);
        for (int x = 0; x < width; ++x) out.Row(c, y)[x] += whole[x] - (1.0f - CoarsePart) * blurred[x];
    });
}

bool PatchMix::MeanAt(int x, int y, float* mean) const {
    float got = 0.0f, sums[Colours] = {};
    for (std::size_t i = 0; i < m_patches.size(); ++i) {
        const int u = x + m_patches[i].dx, v = y + m_patches[i].dy;
        if (u < 0 || v < 0 || u >= m_place.holes.width || v >= m_place.holes.height || m_place.holes.Row(v)[u])
            continue;
        got += m_shares[i];
        for (int c = 0; c < Colours; ++c) sums[c] += m_shares[i] * m_place.colours.Row(c, v)[u];
    }
    if (got < 0.5f) return false;
    for (int c = 0; c < Colours; ++c) mean[c] = sums[c] / got;
    return true;
}
