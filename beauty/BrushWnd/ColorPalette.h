// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtGui/QColor>
#include <vector>

#include "Notify.h"

class CPaletteField;
class CColorSwatch;
class CXMLWnd;
class QAbstractButton;
class QLabel;
class QWidget;

// How a panel's palette is named and what it offers: groups of colours that one row of swatches shows in turn, and a
// field from which any colour is taken.
struct PaletteFacts {
    // Buttons of the groups, from 1, and after the last group the one of the free field; empty where there is one group
    // and the field is always there.
    const char* group;
    // Swatches, from 1; as many as a group has colours.
    const char* swatch;
    std::vector<std::vector<QRgb>> groups;
    // Ground picture of the groups, from 1, below Images/Background; empty for none.
    const char* ground;
    // The control that holds the swatches, the field, and the label that shows the colour which the mouse is over.
    const char* swatches;
    const char* field;
    const char* fieldValue;
};

// The colour choice of a panel. It keeps the colour that was last chosen; the panel gives it to its canvas.
class ColorPalette {
  public:
    // `chosen` is called for each colour that the user takes, the present one again included.
    ColorPalette(PaletteFacts facts, std::function<void(const QColor&)> chosen);

    // The palette's own kinds of controls, for the panel's CreateControl; null for any other.
    static QWidget* MakeControl(const QString& className, QWidget* parent);
    // Finds the controls; at the panel's "windowinit".
    void Attach(const CXMLWnd& panel);
    // True when a click was on one of its controls.
    bool OnClick(const Notify& notify);

    const QColor& Color() const { return m_color; }
    // Shows a colour that came from elsewhere: its swatch is chosen where it has one, else the free field.
    void Show(const QColor& color);

  private:
    bool HasGroups() const { return *m_facts.group != 0; }
    void ShowGroup(std::size_t group);
    void ShowChoice();
    void Choose(const QColor& color);

    const PaletteFacts m_facts;
    const std::function<void(const QColor&)> m_chosen;
    QColor m_color;
    // The group on show; one more than there are for the free field.
    std::size_t m_group = 0;
    std::vector<QAbstractButton*> m_groupButtons;
    std::vector<CColorSwatch*> m_swatches;
    QWidget* m_ground = nullptr;
    CPaletteField* m_field = nullptr;
    QLabel* m_fieldValue = nullptr;
};
