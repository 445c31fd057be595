// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <QtCore/QString>

// The window that a task's progress is shown in, as the tasks see it. A widget implements it for the program,
// HeadlessProgressWindow for tests and batch runs.
//
// The virtual operations are called on the main thread only. The flags are atomics: the window sets them, the worker
// reads them.
class ProgressWindow {
  public:
    // The percentage before the first one: no number is shown.
    static constexpr int NoPercent = -1;

    virtual ~ProgressWindow() = default;

    // Shows the window as for a new task: no percentage, first picture of the spinner, no text, timer running.
    virtual void Reset() = 0;
    // A whole percentage, 0 to 100.
    virtual void SetPercent(int percent) = 0;
    virtual void SetText(const QString& text) = 0;
    // Stops the timer, hides the window and lets go of its drawing.
    virtual void Hide() = 0;

    // Runs the modal loop: calls SetReady(true) once the window exists, returns after CloseModal or when the window is
    // closed early, and calls SetReady(false) before it returns.
    virtual void RunModal() = 0;
    // Ends the modal loop.
    virtual void CloseModal() = 0;

    // The window exists and its modal loop runs.
    bool IsReady() const { return m_bReady; }
    // The user, or the program through CShowProgress::Cancel, asked to stop.
    bool IsCancelled() const { return m_bCancelled; }
    // False once the work should stop.
    bool CanContinue() const { return m_bContinue; }

    // What Esc does: the work is asked to stop, nothing kills it. Any thread.
    void RequestCancel() {
        m_bCancelled = true;
        m_bContinue = false;
    }
    // Clears the flags for a new task; Finish asks the work to stop without a cancel.
    void ResetFlags() {
        m_bCancelled = false;
        m_bContinue = true;
    }
    void StopContinuing() { m_bContinue = false; }

  protected:
    void SetReady(bool ready) { m_bReady = ready; }

  private:
    std::atomic<bool> m_bReady{false};
    std::atomic<bool> m_bCancelled{false};
    std::atomic<bool> m_bContinue{true};
};

// A progress window without a window: the modal loop is a plain event loop, and what would be shown is kept.
class HeadlessProgressWindow : public ProgressWindow {
  public:
    HeadlessProgressWindow();
    ~HeadlessProgressWindow() override;

    void Reset() override;
    void SetPercent(int percent) override;
    void SetText(const QString& text) override;
    void Hide() override;
    void RunModal() override;
    void CloseModal() override;

    int Percent() const { return m_nPercent; }
    const QString& Text() const { return m_strText; }
    bool IsShown() const { return m_shown; }

  private:
    struct Loop;
    std::unique_ptr<Loop> m_loop;
    int m_nPercent = NoPercent;
    QString m_strText;
    bool m_shown = false;
};
