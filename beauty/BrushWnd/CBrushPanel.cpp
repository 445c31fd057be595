// SPDX-License-Identifier: GPL-3.0-or-later
#include "CBrushPanel.h"

#include <algorithm>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "CPenWnd.h"
#include "CSliderCtrl.h"
#include "ValueLabel.h"

CBrushPanel::BrushSlider CBrushPanel::PenSlider(const char* control, const char* valueLabel) {
    return {control, valueLabel, Unit::Plain, {}, [this](int value) { Brush()->SetPenSize(2 * value); }, {}};
}

void CBrushPanel::SetErase(const char* button, const char* penLabel, const char* eraseLabel) {
    m_eraseName = button;
    m_penLabelName = penLabel;
    m_eraseLabelName = eraseLabel;
}

void CBrushPanel::OnNotify(const Notify& notify) {
    if (notify.type == u"windowinit") {
        for (BrushSlider& row : m_sliders) {
            row.slider = Find<CSliderCtrl>(QLatin1String(row.control));
            row.value = Find<QLabel>(QLatin1String(row.valueLabel));
            ShowValueOf(row);
        }
        if (*m_eraseName) {
            m_erase = Find<QAbstractButton>(QLatin1String(m_eraseName));
            m_penLabel = Find<QWidget>(QLatin1String(m_penLabelName));
            m_eraseLabel = Find<QWidget>(QLatin1String(m_eraseLabelName));
        }
        ShowErase(false);
        return OnSkin();
    }
    for (BrushSlider& row : m_sliders)
        if (notify.name == QLatin1String(row.control)) return OnSlider(row, notify);
    if (notify.type != u"click") return;
    LeaveCompare();
    if (m_erase && notify.name == QLatin1String(m_eraseName)) return OnErase();
    OnChoice(notify);
}

void CBrushPanel::OnSlider(BrushSlider& row, const Notify& notify) {
    const bool moves = notify.type == u"valuechanging";
    if (!moves && notify.type != u"valuechanged") return;
    LeaveCompare();
    ShowValueOf(row);
    const std::function<void(int)>& tell = moves ? row.moves : row.settles;
    if (Brush() && tell) tell(notify.value);
}

void CBrushPanel::OnErase() {
    CPenWnd* brush = Brush();
    if (brush) brush->SetErase(!brush->IsErasing());
    ShowErase(brush && brush->IsErasing());
}

void CBrushPanel::ShowErase(bool erase) {
    if (m_erase) m_erase->setChecked(erase);
    if (m_penLabel) m_penLabel->setVisible(!erase);
    if (m_eraseLabel) m_eraseLabel->setVisible(erase);
}

void CBrushPanel::ShowValueOf(const BrushSlider& row) {
    if (!row.slider) return;
    const int value = row.slider->value();
    ShowValue(row.value, QString::number(value) + (row.unit == Unit::Percent ? QStringLiteral("%") : QString()), false);
}

void CBrushPanel::OnFrameMessage(const FrameMessage& message) {
    if (const auto* step = PanelNewsOf<BrushStepNews>(message)) return Step(*step);
    CToolPanel::OnFrameMessage(message);
}

// As a key pressed on the slider itself does it.
void CBrushPanel::Step(const BrushStepNews& news) {
    const auto index = static_cast<std::size_t>(news.slider);
    if (index >= m_sliders.size() || !m_sliders[index].slider) return;
    BrushSlider& row = m_sliders[index];
    CSliderCtrl& slider = *row.slider;
    const int value = std::clamp(slider.value() + news.step * slider.pageStep(), slider.minimum(), slider.maximum());
    if (value == slider.value()) return;
    slider.SetQuietly(value);
    OnSlider(row, {QStringLiteral("valuechanged"), slider.objectName(), &slider, value});
}

void CBrushPanel::GiveValues() {
    for (const BrushSlider& row : m_sliders)
        if (row.slider && row.settles) row.settles(row.slider->value());
    GiveChoices();
    Brush()->SetErase(false);
}

void CBrushPanel::Refresh() {
    CPenWnd* brush = Brush();
    if (!brush) return;
    if (m_known != brush) {
        m_known = brush;
        GiveValues();
    }
    for (const BrushSlider& row : m_sliders) {
        if (row.slider && row.held && row.slider->value() != row.held()) row.slider->SetQuietly(row.held());
        ShowValueOf(row);
    }
    ShowErase(brush->IsErasing());
    ShowChoices();
}
