// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <QtCore/QPointer>
#include <QtGui/QRgb>

#include "CXMLWnd.h"

class CColorButton;
class CColorField;
class QAbstractButton;
class QLabel;

// The small palette of colours under the panel's button for them. In pick mode it is higher and has a wider field, and
// the colour under the mouse is taken, from that field and from the canvas: live as the mouse moves, for good when it
// is released.
//
// It is a child of the main window, so that it can be placed on every desktop, and listens to the program's own events
// only: the desktop's mouse stays free. It closes on Esc, when the keyboard goes elsewhere, and at a press beside it.
// Main thread.
class CColorWnd : public CXMLWnd {
    Q_OBJECT

  public:
    // Logical pixels.
    static constexpr int Width = 131, Height = 85, PickHeight = 60, Gap = 3;
    // Its own surfaces, which are never picked.
    static constexpr QRgb Ground = 0xEFEFEF, Edge = 0xADADAD;

    // `option` opens it and stays checked meanwhile; `canvas` gives the canvas of the moment, or null.
    CColorWnd(QWidget* owner, QAbstractButton* option, std::function<QWidget*()> canvas);
    ~CColorWnd() override;

    // Takes the colours that the user chooses; `settled` is false while they follow the mouse.
    using Taker = std::function<void(QRgb color, bool settled)>;
    void SetTaker(Taker taker) { m_taker = std::move(taker); }

    // Opens under the option.
    void Open();
    void Close();

    // Kept by the program from one opening to the next.
    static bool PickMode() { return s_pickMode; }
    static QString Chosen() { return s_chosen; }

  protected:
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    void OnNotify(const Notify& notify) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void Place();
    void GiveBack();
    void ChoosePalette(CColorButton& button);
    void SetPickMode(bool pick);
    bool IsOver(const QWidget* widget, QPointF global) const;
    bool IsPickable(QPointF global) const;
    bool OnMouse(QEvent::Type type, QPointF global, bool left);
    std::optional<QRgb> Sample(QPointF global) const;
    void Follow(QPointF global);
    void Pick(QPointF global);
    void Tell(bool settled);
    void ShowMarker();
    void ShowPipette(bool show);
    bool StepFocus(int key);

    QPointer<QAbstractButton> m_option;
    std::function<QWidget*()> m_canvas;
    Taker m_taker;
    CColorField* m_field = nullptr;
    QLabel* m_marker = nullptr;
    QAbstractButton* m_toggle = nullptr;
    std::optional<QRgb> m_live;
    // A colour followed the mouse and was not settled.
    bool m_following = false;
    bool m_pipette = false;
    // A press in pick mode is on its way to its release.
    bool m_pressed = false;
    bool m_pressedOption = false;

    static inline bool s_pickMode = false;
    static inline QString s_chosen;
    // In the field; nothing before the first.
    static inline std::optional<QPoint> s_marker;
};
