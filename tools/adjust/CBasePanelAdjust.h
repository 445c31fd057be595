// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "AdjustSliders.h"
#include "CAdjustLogic.h"
#include "CToolPanel.h"

class CSliderCtrl;
class QAbstractButton;
class QLabel;

// The left panel of the adjust tool: scenes, two groups of sliders and their resets.
class CBasePanelAdjust : public CToolPanel {
    Q_OBJECT

  public:
    CBasePanelAdjust(ToolHost& host, QWidget* parent);

    // The highlighted scene, 1 to 4; 0 for none.
    int SelectedScenario() const { return m_selectedScenario; }

  protected:
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    void OnNotify(const Notify& notify) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void Refresh() override;

  private:
    struct SliderControls {
        CSliderCtrl* slider = nullptr;
        QLabel* valueLabel = nullptr;
    };

    void FindControls();
    void OnNode(const QString& name);
    void OnButton(const QString& name);
    void OnScene(const AdjustScene& scene);
    void OnSliderMoves(const AdjustSlider& row, int value);
    void OnSliderSettles(const AdjustSlider& row, int value);
    void ShowValues(const AdjustPanelValues& values);
    void ShowGroup(AdjustGroup group, const AdjustPanelValues& values);
    void ShowSelection(int scenario);

    // In the order of AdjustSliders and AdjustScenes.
    std::array<SliderControls, AdjustSliders.size()> m_sliders;
    std::array<QAbstractButton*, AdjustScenes.size()> m_scenes{};
    QAbstractButton* m_sceneReset = nullptr;
    QAbstractButton* m_basicReset = nullptr;
    QAbstractButton* m_advanceReset = nullptr;
    int m_selectedScenario = 0;
    // A slider moved since it was last recorded.
    bool m_moved = false;
};
