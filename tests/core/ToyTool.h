// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "HistorySteps.h"
#include "StepCommitter.h"

// The smallest tool with every kind of state that a tool has: a base picture, one slider, work that was folded into the
// base. Its result is the base's colour plus the slider's value.
class ToyTool : public StepSource {
  public:
    ToyTool(CHistoryManager& history, StepStyle style = StepStyle::OnePerVisit)
        : committer(*this, style, history), m_history(history), m_style(style) {
        base = HistorySteps::ColourOf(history.CurrentBitmap());
    }

    std::int64_t Result() const { return base + value; }

    void Slide(int to) {
        value = to;
        modified = true;
        recorded = false;
    }
    // Folds the slider into the base, as touching another group of sliders does.
    void Bake() {
        base = Result();
        value = 0;
        baked = modified = true;
        recorded = false;
    }
    bool Leave() {
        m_history.SetCurrentBitmap(HistorySteps::Colour(static_cast<std::uint32_t>(Result())));
        committer.Leave();
        return !m_history.Owes();
    }

    std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) override {
        if (!HasWork()) return nullptr;
        const bool snapshot = finalImage || m_style == StepStyle::OnePerCommit;
        auto step =
            HistorySteps::Snapshot(HistorySteps::Colour(static_cast<std::uint32_t>(snapshot ? Result() : base)));
        if (snapshot) return step;
        step->Image()->save = baked;
        if (value == 0) return step;
        auto record = std::make_unique<SampleParams>();
        record->order = 1;
        record->Brightness = value;
        step->AddParams(std::move(record));
        return step;
    }

    bool LoadStep(std::unique_ptr<CHistoryStep> step) override {
        ++loads;
        if (!step || !step->Image()) return false;
        const QString path = step->GetImagePath();
        if (path != m_path || modified) {
            const Bitmap picture = step->ReadImage();
            if (!picture) return false;
            m_path = path;
            base = HistorySteps::ColourOf(picture);
        }
        value = 0;
        for (const auto& record : step->Params())
            if (const auto* basic = RecordAs<SampleParams>(*record)) value = basic->Brightness;
        modified = value != 0;
        baked = false;
        recorded = true;
        return true;
    }

    bool HasWork() const override { return modified && (committer.StepOpen() || baked || value != 0); }
    bool IsRecorded() const override { return recorded; }
    bool HasParameters() const override { return value != 0; }
    bool OwnsRecord(int type) const override { return type == SampleParams::Type; }
    void OnStepCommitted() override {
        baked = false;
        recorded = true;
        if (m_style == StepStyle::OnePerCommit) {
            base = Result();
            value = 0;
            modified = false;
        }
    }

    StepCommitter committer;
    std::int64_t base = 0;
    int value = 0;
    bool modified = false;
    bool baked = false;
    bool recorded = false;
    int loads = 0;

  private:
    CHistoryManager& m_history;
    const StepStyle m_style;
    QString m_path;
};
