// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColorPalette.h"

#include <algorithm>
#include <QtWidgets/QLabel>

#include "AppPaths.h"
#include "CColorSwatch.h"
#include "CPaletteField.h"
#include "CXMLWnd.h"

namespace {

QString Numbered(const char* name, std::size_t number) {
    return QLatin1String(name) + QString::number(number);
}

void Select(QAbstractButton* button, bool selected) {
    if (!button) return;
    const bool exclusive = button->autoExclusive();
    button->setAutoExclusive(false);  // else none could be without a choice
    button->setChecked(selected);
    button->setAutoExclusive(exclusive);
}

void ShowValueOf(QLabel* label, const QColor& color) {
    if (!label) return;
    label->setStyleSheet(
        QStringLiteral("background: %1; border: 1px solid #D5DAE0; border-radius: 4px;").arg(color.name()));
    label->setAccessibleName(QStringLiteral("%1, %2, %3").arg(color.red()).arg(color.green()).arg(color.blue()));
}

}  // namespace

ColorPalette::ColorPalette(PaletteFacts facts, std::function<void(const QColor&)> chosen)
    : m_facts(std::move(facts)), m_chosen(std::move(chosen)), m_color(m_facts.groups.front().front()) {}

QWidget* ColorPalette::MakeControl(const QString& className, QWidget* parent) {
    if (className == u"CColorSwatch") return new CColorSwatch(parent);
    if (className == u"CPaletteField") return new CPaletteField(parent);
    return nullptr;
}

void ColorPalette::Attach(const CXMLWnd& panel) {
    for (std::size_t i = 1; HasGroups() && i <= m_facts.groups.size() + 1; ++i)
        m_groupButtons.push_back(panel.Find<QAbstractButton>(Numbered(m_facts.group, i)));
    for (std::size_t i = 1; i <= m_facts.groups.front().size(); ++i)
        m_swatches.push_back(panel.Find<CColorSwatch>(Numbered(m_facts.swatch, i)));
    m_ground = panel.Find<QWidget>(QLatin1String(m_facts.swatches));
    m_field = panel.Find<CPaletteField>(QLatin1String(m_facts.field));
    m_fieldValue = panel.Find<QLabel>(QLatin1String(m_facts.fieldValue));
    if (m_field) {
        m_field->SetPicture(ResourcePath(QStringLiteral("Images/Background/bk_colorsepan.png")));
        QObject::connect(m_field, &CPaletteField::Hovered, m_field,
                         [this](const QColor& c) { ShowValueOf(m_fieldValue, c); });
        QObject::connect(m_field, &CPaletteField::Taken, m_field, [this](const QColor& c) { Choose(c); });
    }
    Show(m_color);
}

bool ColorPalette::OnClick(const Notify& notify) {
    for (std::size_t i = 0; i < m_groupButtons.size(); ++i)
        if (notify.sender == m_groupButtons[i]) return ShowGroup(i), true;
    for (CColorSwatch* swatch : m_swatches)
        if (notify.sender == swatch) return Choose(swatch->Color()), true;
    return false;
}

void ColorPalette::Choose(const QColor& color) {
    m_color = color;
    ShowChoice();
    m_chosen(color);
}

void ColorPalette::Show(const QColor& color) {
    m_color = color;
    const auto has = [&](const std::vector<QRgb>& group) {
        return std::find(group.begin(), group.end(), color.rgb()) != group.end();
    };
    const bool onShow = m_group < m_facts.groups.size() && has(m_facts.groups[m_group]);
    const auto group = std::find_if(m_facts.groups.begin(), m_facts.groups.end(), has);
    if (m_field && group == m_facts.groups.end()) m_field->MarkColor(color);
    ShowGroup(onShow ? m_group : static_cast<std::size_t>(group - m_facts.groups.begin()));
}

void ColorPalette::ShowGroup(std::size_t group) {
    m_group = group;
    const bool free = group == m_facts.groups.size();
    for (std::size_t i = 0; i < m_groupButtons.size(); ++i) Select(m_groupButtons[i], i == group);
    if (HasGroups()) {
        if (m_ground) m_ground->setVisible(!free);
        if (m_field) m_field->setVisible(free);
        if (m_fieldValue) m_fieldValue->setVisible(free);
    }
    if (!free) {
        for (std::size_t i = 0; i < m_swatches.size(); ++i)
            if (m_swatches[i]) m_swatches[i]->SetColor(QColor::fromRgb(m_facts.groups[group][i]));
        if (m_ground && *m_facts.ground)
            m_ground->setStyleSheet(QStringLiteral("#%1 { border-image: url(%2); }")
                                        .arg(m_ground->objectName(), ResourcePath(QStringLiteral("Images/Background/") +
                                                                                  Numbered(m_facts.ground, group + 1) +
                                                                                  QStringLiteral(".png"))));
    }
    ShowChoice();
}

void ColorPalette::ShowChoice() {
    for (CColorSwatch* swatch : m_swatches) Select(swatch, swatch && swatch->Color().rgb() == m_color.rgb());
    ShowValueOf(m_fieldValue, m_color);
}
