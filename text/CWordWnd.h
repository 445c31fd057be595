// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "CPictureWnd.h"
#include "CWordLogic.h"
#include "WordNews.h"
#include "WordOverlay.h"

// The canvas of the text tool: draws the texts over the picture and takes mouse and keys for them.
//
// A press selects a text and moves it, its buttons delete it and turn and size it; beside all texts it pans. Arrow keys
// move the selected text by one picture pixel, with Shift by ten, and with Ctrl turn it by one degree, with both by 15;
// Delete removes it, Ctrl+D doubles it, Page Down and Page Up go to another one, Esc deselects.
class CWordWnd : public CPictureWnd {
    Q_OBJECT

  public:
    static constexpr const ToolFacts& Facts = TextTool;

    // The history must outlive the canvas.
    CWordWnd(ToolHost& host, QWidget* parent, CHistoryManager& history = CHistoryManager::Instance());

    // For the panel, on the main thread; each paints before it returns.

    // Adds a text in this style, selects it and records it. False without a picture or a text.
    bool AddText(const QString& text, const WordStyle& style);
    // Of the selected text; nothing without one. What they change is recorded when it is settled.
    void SetText(const QString& text);
    void SetFontName(const QString& name);
    void SetFontSize(int size);
    void SetBold(bool bold);
    void SetItalic(bool italic);
    void SetUnderline(bool underline);
    void SetShadow(bool shadow);
    void SetVertical(bool vertical);
    // 0xRRGGBB.
    void SetColor(QRgb colour);
    // 0 to 1.
    void SetAlpha(double alpha);
    // A slider was let go, a choice was made, typing is over: records what changed since the last step.
    void SettleChange();

    int GetDefaultFontSize() const { return m_logic.DefaultFontSize(); }
    std::optional<WordStyle> SelectedStyle() const { return m_logic.SelectedStyle(); }
    const CWordLogic& Logic() const { return m_logic; }

    void OnUndo() override;

  protected:
    void OnPictureTaken() override;
    Bitmap NavigatorPicture() override;
    void PaintOverlay(QPainter& painter, const QRect& place) override;
    bool LeftButtonPans() const override { return false; }
    QCursor ToolCursor() const override;

    bool BeginStroke(const StrokePoint& at) override;
    void MoveStroke(const StrokePoint& at) override;
    void EndStroke(StrokeEnd how) override;
    void Hover(const StrokePoint& at) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    bool TakesInput() const;
    void Change(const std::function<void(StringParams&)>& change);
    // An act of the logic object that records its step.
    bool Act(const std::function<bool()>& act);
    void PressArrow(QPoint by, Qt::KeyboardModifiers modifiers);
    bool PressKey(const QKeyEvent& event);
    void PanTo(QPoint at);
    void TellSelected();
    // All that the selected text, its frame and the guides cover.
    QRect SelectionArea() const;
    void RedrawSelection(const QRect& before);
    const WordOverlay& Overlay() const;

    CWordLogic m_logic;
    mutable std::unique_ptr<WordOverlay> m_overlay;
    // The picture below the texts as the overview needs it, and which picture that was.
    Bitmap m_reduced;
    Bitmap m_reducedOf;
    // The part of the client that is being painted.
    QRect m_painted;
    QPoint m_last;
    // What is under the mouse.
    WordHit m_over = WordHit::Nothing;
    bool m_panning = false;
};
