// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QObject>

#include "CObjProgress.h"
#include "ProgressWindow.h"

// The progress sink with a window. Its operations may be called by the work on its thread; what the window must do is
// posted to the main thread in the order of the calls and dropped when the sink is gone. Made and destroyed on the main
// thread; the window must outlive it.
class CShowProgress : public CObjProgress {
  public:
    explicit CShowProgress(ProgressWindow& dlg) : m_dlg(dlg) {}

    // Shows the window for a new task: nothing cancelled, no percentage, no text, value 0.
    void Reset() override;
    // Shows the text of `key` from the language file's section "Language".
    void SetStepText(const wchar_t* key) override;
    // Keeps the value; the window hears of it only when the whole percent changes.
    void SetValue(float v) override;
    // 0 after Cancel, Finish, or Esc in the window.
    int CanContinue() override;
    // Hides the window; the work is to stop.
    void Finish() override;
    // Asks the work to stop and shows "esc".
    virtual void Cancel();

    ProgressWindow& Window() const { return m_dlg; }

  private:
    // Runs `call` on the window: at once on the main thread, else later there.
    void Tell(std::function<void(ProgressWindow&)> call);

    ProgressWindow& m_dlg;
    QObject m_guard;
};
