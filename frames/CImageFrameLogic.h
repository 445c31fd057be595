// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FrameParams.h"
#include "LookLogic.h"

inline constexpr ToolFacts FrameTool{
    6, SectionBasic, "btnTab4", "", "FrameLayout", "BasePanelFrame.xml", "ids_biankuang", "888020401"};

// The frame tool without its window: one frame around the picture, which makes it larger, or over it, faded by its
// strength. The looks are the numbers of the catalogue of frames.
class CImageFrameLogic : public LookLogic {
  public:
    // The steps go to `history`, which outlives the object; the framed picture lies in its folder as FrameRes.bin.
    explicit CImageFrameLogic(CHistoryManager& history = CHistoryManager::Instance())
        : LookLogic(FrameTool, QStringLiteral("FrameRes.bin"), history) {}

    // ApplyLook of the frame in a file, by its FrameKind.
    bool ApplyFrame(const QString& path, int kind, CObjProgress* progress);

    // The record that a step of the present state holds.
    FrameParams Params() const;

    bool OwnsRecord(int type) const override { return type == FrameParams::Type; }

  protected:
    bool Exists(int look) const override;
    bool Compute(Bitmap& picture, int look, const ProgressSpan& span) const override;
    // Ornate frames alone.
    bool Fades(int look) const override;
    std::unique_ptr<CUndoRedoParams> MakeRecord() const override { return std::make_unique<FrameParams>(Params()); }
    Recorded ReadRecord(const CUndoRedoParams& record) const override;
};
