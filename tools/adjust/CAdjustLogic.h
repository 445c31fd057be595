// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>
#include <QtCore/QString>

#include "AdjustState.h"
#include "CanvasLogic.h"
#include "ProgressSpan.h"
#include "SharpenedLayer.h"

class CObjProgress;

inline constexpr ToolFacts AdjustTool{
    1, SectionBasic, "btnTab1", "", "AdjustLayout", "BasePanelAdjust.xml", "ids_bianji", "888020101"};

// What the canvas tells the panel: scene, then the nine slider values, in the order of the panel.
using AdjustPanelValues = std::array<int, 10>;

// The adjust tool without its window: the pictures, the nine slider values, the scene, and the steps that they make in
// the history.
//
// Live work happens on a bitmap of the view's size; the full picture is computed only when its result is asked for. The
// two slider groups and the scene never act at once on one base: touching one folds the others into the picture.
//
// Threads, units, and what happens without a picture or memory: CanvasLogic.
class CAdjustLogic : public CanvasLogic {
  public:
    // The steps go to `history`, which outlives the object; the scene's result lies in its folder as AdEffectRes.bin.
    explicit CAdjustLogic(CHistoryManager& history = CHistoryManager::Instance());
    // Deletes the scene file.
    ~CAdjustLogic() override;

    // Sets a slider's value by its index and previews it; does not touch the history. An unknown index does nothing.
    void SetValue(int index, int value);
    // The value of a slider; 0 for an unknown index.
    int GetValue(int index) const;
    AdjustPanelValues GetPanelValues() const;
    // Runs a scene (1 to 4) on the base, previews and commits it. False when nothing came of it: no picture, the scene
    // already active, or the sink stopped the work, and then everything is as it was before.
    bool ApplyScenario(int scenario, CObjProgress* progress);
    // Take one group back to no change. None commits: the state is recorded at the next commit, undo or leaving.
    void ResetScenario();
    void ResetBasic();
    void ResetAdvance();

    const Bitmap& Picture() const override { return m_state.WorkBitmap; }
    // Computed when something changed, else as it was.
    Bitmap RenderResult() override;

    // The step for the present state: with `finalImage` a snapshot of the result alone, else the base and the records
    // of the values. Null when there is nothing to record.
    std::unique_ptr<CHistoryStep> BuildStep(bool finalImage) override;
    // Shows a step: its picture and values. False, and nothing changes, for null, a step without a pixel record, and
    // one whose snapshot can't be read. A scene's result whose file is gone is computed again from the snapshot.
    bool LoadStep(std::unique_ptr<CHistoryStep> step) override;
    bool HasParameters() const override { return m_state.HasValues(); }
    bool OwnsRecord(int type) const override;
    bool HasWork() const override;
    bool IsRecorded() const override { return m_state.Recorded; }
    void OnStepCommitted() override {
        m_state.BakedPending = false;
        m_state.Recorded = true;
    }

    const AdjustState& State() const { return m_state; }
    QString SceneFilePath() const { return m_sceneFilePath; }

  protected:
    void ForgetAll() override {
        m_state = {};
        m_sharpened = {};
    }
    // The values stay.
    void TakeSource(const Bitmap& picture) override;
    void Compose(Bitmap& shown, const std::vector<Bitmap>& views, const QRect& part, double scale) const override;
    std::function<void()> RememberTool() override {
        return [this, state = m_state] { m_state = state; };
    }

  private:
    void MarkChanged();
    void ChangeValues(const std::function<void()>& change);
    bool Bake(const ProgressSpan& span);
    bool RunScenario(int scenario, CObjProgress* progress);
    bool RenderInto(Bitmap& result, const ProgressSpan& span) const;

    void AddRecords(CHistoryStep& step);
    void SaveSceneFile();
    void TakeRecords(const CHistoryStep& step);
    void ReadScene();

    const QString m_sceneFilePath;
    AdjustState m_state;
    mutable SharpenedLayer m_sharpened;  // of the view; tells nothing that the state does not
};
