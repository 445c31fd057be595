// SPDX-License-Identifier: GPL-3.0-or-later
#include "CBasePanelAdjust.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "CAdjustWnd.h"
#include "CCardNode.h"
#include "CSliderCtrl.h"
#include "ValueLabel.h"

namespace {

const QString BtnMeiHuaRestart = QStringLiteral("BtnMeiHuaRestart");
const QString BtnJiChuRestart = QStringLiteral("BtnJiChuRestart");
const QString BtnGaoJiRestart = QStringLiteral("BtnGaoJiRestart");
const QString NodeTiaoSe = QStringLiteral("NodeTiaoSe");
const QString NodeGaoJi = QStringLiteral("NodeGaoJi");

// Padding below a scene's text, for style sheets: the chosen one has its text higher.
constexpr int TextPadding = 3;
constexpr int TextPaddingSelected = 24;

bool IsGroupSet(AdjustGroup group, const AdjustPanelValues& values) {
    for (const AdjustSlider& row : AdjustSliders)
        if (row.group == group && values[static_cast<std::size_t>(row.panelPlace)] != AdjustSlider::Neutral)
            return true;
    return false;
}

void EnableReset(QAbstractButton* reset, bool enabled) {
    if (reset) reset->setEnabled(enabled);
}

}  // namespace

CBasePanelAdjust::CBasePanelAdjust(ToolHost& host, QWidget* parent) : CToolPanel(host, parent) {
    Create(QLatin1String(AdjustTool.skin));
}

QWidget* CBasePanelAdjust::CreateControl(const QString& className, QWidget* parent, const QString&) {
    return className == QLatin1String("CCardNode") ? new CCardNode(parent) : nullptr;
}

void CBasePanelAdjust::FindControls() {
    for (std::size_t i = 0; i < AdjustSliders.size(); ++i) {
        m_sliders[i].slider = Find<CSliderCtrl>(AdjustSliders[i].Control());
        if (AdjustSliders[i].valueLabel) m_sliders[i].valueLabel = Find<QLabel>(AdjustSliders[i].ValueLabel());
    }
    for (std::size_t i = 0; i < AdjustScenes.size(); ++i) m_scenes[i] = Find<QAbstractButton>(AdjustScenes[i].Button());
    m_sceneReset = Find<QAbstractButton>(BtnMeiHuaRestart);
    m_basicReset = Find<QAbstractButton>(BtnJiChuRestart);
    m_advanceReset = Find<QAbstractButton>(BtnGaoJiRestart);
    // The label of a slider takes it back to no change like the slider itself.
    for (QLabel* label : findChildren<QLabel*>())
        if (label->buddy()) label->installEventFilter(this);
}

void CBasePanelAdjust::OnNotify(const Notify& notify) {
    if (notify.type == QLatin1String("windowinit")) {
        FindControls();
        ShowValues({});
        // The initial fold of the tree: its two nodes are clicked as a user would.
        for (const QString& node : {NodeTiaoSe, NodeTiaoSe, NodeGaoJi}) OnNotify({QStringLiteral("itemclick"), node});
    } else if (notify.type == QLatin1String("itemclick")) {
        OnNode(notify.name);
    } else if (notify.type == QLatin1String("click")) {
        if (notify.name == NodeTiaoSe || notify.name == NodeGaoJi)
            OnNotify({QStringLiteral("itemclick"), notify.name, notify.sender});
        else
            OnButton(notify.name);
    } else if (const AdjustSlider* row = FindAdjustSlider(notify.name)) {
        if (notify.type == QLatin1String("valuechanging")) OnSliderMoves(*row, notify.value);
        if (notify.type == QLatin1String("valuechanged")) OnSliderSettles(*row, notify.value);
    }
}

// A node's body is named after it: NodeGaoJi folds BodyGaoJi.
void CBasePanelAdjust::OnNode(const QString& name) {
    auto* node = Find<CCardNode>(name);
    auto* body = Find<QWidget>(QStringLiteral("Body") + name.mid(4));
    if (!node || !body) return;
    node->SetFolded(!node->IsFolded());
    body->setVisible(!node->IsFolded());
}

void CBasePanelAdjust::OnButton(const QString& name) {
    for (const AdjustScene& scene : AdjustScenes)
        if (name == scene.Button()) return OnScene(scene);
    CAdjustWnd* canvas = CanvasOf<CAdjustWnd>();
    if (!canvas) return Refresh();
    LeaveCompare();
    if (name == BtnMeiHuaRestart) canvas->Reset(&CAdjustLogic::ResetScenario);
    if (name == BtnJiChuRestart) canvas->Reset(&CAdjustLogic::ResetBasic);
    if (name == BtnGaoJiRestart) canvas->Reset(&CAdjustLogic::ResetAdvance);
    Refresh();
}

void CBasePanelAdjust::OnScene(const AdjustScene& scene) {
    CAdjustWnd* canvas = CanvasOf<CAdjustWnd>();
    if (canvas && !Host().IsBusy()) {
        LeaveCompare();
        // The button answers before the work begins; a cancel takes the highlight back.
        ShowSelection(scene.scenario);
        if (canvas->PanelValues()[0] != scene.scenario) canvas->RunScene(scene.scenario);
    }
    Refresh();
}

// The first move in one group folds the other and the scene into the picture, so the whole panel is shown anew.
void CBasePanelAdjust::OnSliderMoves(const AdjustSlider& row, int value) {
    CAdjustWnd* canvas = CanvasOf<CAdjustWnd>();
    if (!canvas) return Refresh();
    LeaveCompare();
    m_moved = true;
    canvas->PreviewValue(row.index, value);
    Refresh();
}

void CBasePanelAdjust::OnSliderSettles(const AdjustSlider& row, int value) {
    CAdjustWnd* canvas = CanvasOf<CAdjustWnd>();
    if (!canvas) return Refresh();
    LeaveCompare();
    // A press that moved nothing changes nothing: the other group stays as it is.
    const bool changed = m_moved || canvas->Value(row.index) != value;
    m_moved = false;
    if (changed) canvas->CommitValue(row.index, value);
    Refresh();
}

void CBasePanelAdjust::Refresh() {
    const CAdjustWnd* canvas = CanvasOf<CAdjustWnd>();
    ShowValues(canvas ? canvas->PanelValues() : AdjustPanelValues{});
}

void CBasePanelAdjust::ShowValues(const AdjustPanelValues& values) {
    ShowGroup(AdjustGroup::Basic, values);
    ShowGroup(AdjustGroup::Advance, values);
    ShowSelection(values[0]);
    EnableReset(m_sceneReset, values[0] != 0);
    EnableReset(m_basicReset, IsGroupSet(AdjustGroup::Basic, values));
    EnableReset(m_advanceReset, IsGroupSet(AdjustGroup::Advance, values));
}

// While the other group or a scene is in force this group has empty labels; else a slider at no change shows its 0.
void CBasePanelAdjust::ShowGroup(AdjustGroup group, const AdjustPanelValues& values) {
    const AdjustGroup other = group == AdjustGroup::Basic ? AdjustGroup::Advance : AdjustGroup::Basic;
    const bool shows = IsGroupSet(group, values) || (!IsGroupSet(other, values) && values[0] == 0);
    for (std::size_t i = 0; i < AdjustSliders.size(); ++i) {
        const AdjustSlider& row = AdjustSliders[i];
        if (row.group != group) continue;
        const int value = values[static_cast<std::size_t>(row.panelPlace)];
        if (CSliderCtrl* slider = m_sliders[i].slider; slider && slider->value() != value) slider->SetQuietly(value);
        const QString text = shows ? QString::number(value) : QString();
        ShowValue(m_sliders[i].valueLabel, text, value != AdjustSlider::Neutral);
    }
}

void CBasePanelAdjust::ShowSelection(int scenario) {
    m_selectedScenario = scenario;
    for (std::size_t i = 0; i < AdjustScenes.size(); ++i) {
        QAbstractButton* button = m_scenes[i];
        if (!button) continue;
        const bool selected = AdjustScenes[i].scenario == scenario;
        button->setChecked(selected);
        button->setProperty("textPaddingBottom", selected ? TextPaddingSelected : TextPadding);
    }
}

bool CBasePanelAdjust::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::MouseButtonDblClick) return CToolPanel::eventFilter(object, event);
    if (static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) return CToolPanel::eventFilter(object, event);
    const auto* label = qobject_cast<QLabel*>(object);
    auto* slider = label ? qobject_cast<CSliderCtrl*>(label->buddy()) : nullptr;
    if (!slider || !slider->isEnabled()) return CToolPanel::eventFilter(object, event);
    OnNotify({QStringLiteral("valuechanged"), slider->objectName(), slider, slider->Neutral()});
    return true;
}
