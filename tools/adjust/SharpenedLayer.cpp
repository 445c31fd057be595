// SPDX-License-Identifier: GPL-3.0-or-later
#include "SharpenedLayer.h"

Bitmap SharpenedLayer::Start(const Bitmap& layer, std::vector<AdjustCall>& calls) {
    if (calls.empty() || calls.front().kind != AdjustCall::Kind::UsmSharp) {
        *this = {};
        return layer;
    }
    const AdjustCall sharpening = calls.front();
    if (!layer.SharesPixelsWith(m_layer) || sharpening != m_sharpening) {
        m_layer = layer;
        m_sharpening = sharpening;
        m_sharpened = {};
        return layer;
    }
    if (!m_sharpened) {
        Bitmap sharpened;
        RunAdjustChain(layer, sharpened, {sharpening});
        m_sharpened = sharpened;
    }
    calls.erase(calls.begin());
    return m_sharpened;
}
