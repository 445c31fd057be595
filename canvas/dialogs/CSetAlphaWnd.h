// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "CXMLWnd.h"

class QLabel;
class CSliderCtrl;

// Strength window: the small slider over the main window by which a look is faded between none and full. A panel whose
// looks can be faded has one, shows it while a look is in force, and takes its values.
//
// It is a child of the main window and so moves with it; a desktop may not let a program place windows of its own.
// When the main window changes its size the strength window keeps its place at the lower left. Main thread.
class CSetAlphaWnd : public CXMLWnd {
    Q_OBJECT

  public:
    // Logical pixels. The place is that of the upper left corner: from the owner's left edge, and up from its bottom.
    static constexpr int Width = 211, Height = 109;
    static constexpr int FromLeft = 260, FromBottom = 150;

    // Made hidden, at this place in the owner.
    CSetAlphaWnd(QWidget* owner, int x, int y);

    // Takes the values that the user sets; `moving` while the slider is held.
    using Taker = std::function<void(int percent, bool moving)>;
    void SetTaker(Taker taker) { m_taker = std::move(taker); }

    // Sets slider and label; tells nobody.
    void SetValue(int percent);
    int Value() const;

    // Moves it to its place over the owner.
    void Place(const QWidget* owner);
    // Places it, and shows it over everything in the owner.
    void Appear();

  protected:
    void OnNotify(const Notify& notify) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

  private:
    void ShowText(int percent);

    QWidget* m_shadow;
    CSliderCtrl* m_slider = nullptr;
    QLabel* m_text = nullptr;
    Taker m_taker;
};
