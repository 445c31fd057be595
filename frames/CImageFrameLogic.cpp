// SPDX-License-Identifier: GPL-3.0-or-later
#include "CImageFrameLogic.h"

#include "FrameCatalogue.h"

namespace {

// A frame's pixels are as large as the picture's.
constexpr float Scale = 1.0f;

FrameParams ParamsOfLook(int look) {
    FrameParams params;
    FrameEntry frame;
    if (!FindFrame(look, frame)) return params;
    params.FramePath = frame.path;
    params.FrameType = frame.kind;
    return params;
}

}  // namespace

bool CImageFrameLogic::ApplyFrame(const QString& path, int kind, CObjProgress* progress) {
    if (path.isEmpty() || kind == FrameNone) return false;
    return ApplyLook(FrameNumber(kind, path), progress);
}

FrameParams CImageFrameLogic::Params() const {
    FrameParams params = ParamsOfLook(Look());
    params.Alpha = Alpha();
    return params;
}

bool CImageFrameLogic::Exists(int look) const {
    FrameEntry frame;
    return FindFrame(look, frame);
}

bool CImageFrameLogic::Compute(Bitmap& picture, int look, const ProgressSpan& span) const {
    const Bitmap framed = ParamsOfLook(look).Apply(picture, Scale, span);
    if (!framed) return false;
    picture = framed;
    return true;
}

bool CImageFrameLogic::Fades(int look) const {
    return ParamsOfLook(look).FrameType == FrameOrnate;
}

LookLogic::Recorded CImageFrameLogic::ReadRecord(const CUndoRedoParams& record) const {
    const auto* params = RecordAs<FrameParams>(record);
    if (params->FramePath.isEmpty() || params->FrameType == FrameNone) return {};
    return {FrameNumber(params->FrameType, params->FramePath), params->FrameType == FrameOrnate ? params->Alpha : 100};
}
