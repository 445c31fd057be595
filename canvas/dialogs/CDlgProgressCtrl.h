// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

#include "ProgressWindow.h"

class CBaseWnd;

// Progress window of a task: a small dark window over the program's window with a spinner, a percentage and a text. It
// exists from Reset on, but shows only when the task outlasts VisibleAfter, so that quick tasks do not flash.
//
// While its modal loop runs, all input to the program is swallowed, also before the window shows: no click of that time
// reaches anything later, but for a canvas that asked to keep what the mouse does over it (CBaseWnd::KeepInput).
//
// Work that tells its percentages can be stopped, work that tells none cannot. So with the first percentage come the
// bar and the word that Esc cancels, and from then on Esc (or closing the window) asks the work to stop. One that is
// pressed earlier is kept until then; in work that cannot be stopped it has no effect. Main thread only.
class CDlgProgressCtrl : public QWidget, public ProgressWindow {
    Q_OBJECT

  public:
    // Logical pixels and milliseconds.
    static constexpr int Width = 300, Height = 100;
    static constexpr int FrameSide = 27, StripWidth = 297;
    static constexpr int TickTime = 100, VisibleAfter = 150;

    // Stands over the middle of `owner`'s window; null: of the screen.
    explicit CDlgProgressCtrl(QWidget* owner);
    ~CDlgProgressCtrl() override;

    void Reset() override;
    void SetPercent(int percent) override;
    void SetText(const QString& text) override;
    void Hide() override;
    void RunModal() override;
    void CloseModal() override;

    int Percent() const { return m_nPercent; }
    const QString& Text() const { return m_strText; }
    // The work can be stopped by Esc, and the window shows so beside its bar.
    bool TakesEsc() const { return m_bShowBar; }
    // Offset of the spinner's frame in its strip.
    int Spinner() const { return m_nSpinner; }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void Appear();
    void Tick();
    void Cancel();
    void Offer(QObject* object, const QMouseEvent& event);
    void PaintSpinner(QPainter& painter) const;
    void PaintBar(QPainter& painter) const;
    void PaintLine(QPainter& painter) const;

    int m_nPercent = NoPercent;
    QString m_strText;
    bool m_bShowBar = false;
    bool m_escKept = false;
    int m_nSpinner = 0;
    QPixmap m_background;
    QPixmap m_spinner;
    QTimer m_timer;
    QTimer m_appear;
    QEventLoop* m_loop = nullptr;
    // The canvas on which the button went down in this time.
    QPointer<CBaseWnd> m_pressed;
};
