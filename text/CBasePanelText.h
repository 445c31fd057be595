// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "CToolPanel.h"
#include "WordStyle.h"

class CColorButton;
class CColorWnd;
class CFontCombo;
class CNumberEdit;
class CSliderCtrl;
class CWordEdit;
class CWordWnd;
class QAbstractButton;
class QComboBox;
class QLabel;

// The left panel of the text tool: the text, and the style that the next text gets and that the selected one shows.
class CBasePanelText : public CToolPanel {
    Q_OBJECT

  public:
    CBasePanelText(ToolHost& host, QWidget* parent);

    void OnFrameMessage(const FrameMessage& message) override;

    // The style that the next text gets but for its size, which is the picture's default.
    const WordStyle& Style() const { return m_style; }
    CColorWnd* ColorWnd() const { return m_colorWnd; }

  protected:
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    void OnNotify(const Notify& notify) override;
    void Refresh() override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    struct Option {
        const char* control;
        bool WordStyle::*field;
        void (CWordWnd::*set)(bool);
    };
    static const std::array<Option, 5> Options;

    CWordWnd* Wnd() const;
    void FindControls();
    void Reset();
    void OnText(const Notify& notify);
    void OnAdd();
    void OnOption(const Option& option);
    void OnColor();
    void OnSizeItem(int index);
    void OnSizeTyped();
    void OnFont(int index);
    void OnAlpha(int percent, bool settled);
    void TakeColor(QRgb color, bool settled);
    void Settle();

    void ShowStyle(const WordStyle& style);
    void ShowSize();
    void ShowDefaultSize();
    void ShowText(const QString& text);
    void WriteInSelected();

    CWordEdit* m_text = nullptr;
    QAbstractButton* m_add = nullptr;
    CColorButton* m_color = nullptr;
    QComboBox* m_sizes = nullptr;
    CNumberEdit* m_size = nullptr;
    CFontCombo* m_fonts = nullptr;
    CSliderCtrl* m_alpha = nullptr;
    QLabel* m_alphaText = nullptr;
    CColorWnd* m_colorWnd = nullptr;

    WordStyle m_style;
    QString m_prompt;
    // The panel itself writes into the text field.
    bool m_programmatic = false;
    // The field held the prompt when it got the keyboard.
    bool m_empty = false;
    // The user wrote something.
    bool m_edited = false;
    // The tool is entered anew.
    bool m_fresh = true;
};
