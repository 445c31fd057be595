// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrameParams.h"

#include "CNinePartFrame.h"
#include "CStripFrame.h"
#include "CXuanCaiFrame.h"

Bitmap FrameParams::Apply(const Bitmap& source, float scale, const ProgressSpan& span) const {
    if (FramePath.isEmpty() || !source || FrameType == FrameNone) return {};
    if (FrameType != FrameSimple) {
        CXuanCaiFrame ornate;
        Bitmap framed = source;
        return ornate.Load(FramePath) && ornate.Compose(framed, span) ? framed : Bitmap();
    }
    CStripFrame strip;
    if (strip.Load(FramePath)) return strip.Compose(source, scale, span);
    CNinePartFrame nine;
    return nine.Load(FramePath) ? nine.Compose(source, scale, span) : Bitmap();
}
