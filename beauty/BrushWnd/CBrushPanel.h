// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QPointer>
#include <vector>

#include "BrushNews.h"
#include "CToolPanel.h"

class CBaseWnd;
class CPenWnd;
class CSliderCtrl;
class QAbstractButton;
class QLabel;
class QWidget;

// Base of the panels of tools with a pen: sliders with their value labels, the erase button, and the rule of who knows
// the values. A panel gives its values to each new canvas; from then on what the canvas has after a move in the history
// is shown.
class CBrushPanel : public CToolPanel {
    Q_OBJECT

  public:
    void OnFrameMessage(const FrameMessage& message) override;

  protected:
    CBrushPanel(ToolHost& host, QWidget* parent) : CToolPanel(host, parent) {}

    enum class Unit { Plain, Percent };
    struct BrushSlider {
        const char* control;
        const char* valueLabel;
        Unit unit;
        // Told to the canvas, which is there, while the handle moves and when it settles; may be empty.
        std::function<void(int)> moves;
        std::function<void(int)> settles;
        // The value that the canvas has; empty where the slider is the only one to know.
        std::function<int()> held;
        CSliderCtrl* slider = nullptr;
        QLabel* value = nullptr;
    };
    // The pen's slider first, then the effect's; then any others. Before Create.
    void SetSliders(std::vector<BrushSlider> sliders) { m_sliders = std::move(sliders); }
    // The pen's slider: half the canvas's pen.
    BrushSlider PenSlider(const char* control, const char* valueLabel);
    // The erase button, and the pen's labels for painting and erasing; for a tool that erases. Before Create.
    void SetErase(const char* button, const char* penLabel, const char* eraseLabel);

    // The canvas of this panel's tool; null while another's is on show.
    virtual CPenWnd* Brush() const = 0;
    // A click on any other control.
    virtual void OnChoice(const Notify&) {}
    // A new canvas: what the sliders do not say. After them.
    virtual void GiveChoices() {}
    // What the canvas has besides the sliders' values.
    virtual void ShowChoices() {}
    // The skin is there.
    virtual void OnSkin() {}

    void OnNotify(const Notify& notify) override;
    void Refresh() override;

  private:
    void OnSlider(BrushSlider& row, const Notify& notify);
    void OnErase();
    void ShowErase(bool erase);
    void Step(const BrushStepNews& news);
    void GiveValues();
    static void ShowValueOf(const BrushSlider& row);

    std::vector<BrushSlider> m_sliders;
    const char* m_eraseName = "";
    const char* m_penLabelName = "";
    const char* m_eraseLabelName = "";
    QAbstractButton* m_erase = nullptr;
    QWidget* m_penLabel = nullptr;
    QWidget* m_eraseLabel = nullptr;
    // The canvas that has been given the values.
    QPointer<CBaseWnd> m_known;
};
