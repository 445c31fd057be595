// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Progress sink: what a long library call reports to, and asks whether it may go on.
//
// Library calls take (CObjProgress* sink, int start, int end): the part of 0 to 100 that the call may use, so that
// several calls in a row share one bar. A null sink is legal everywhere. A sink may be called from the thread that runs
// the work, one call at a time.
class CObjProgress {
  public:
    virtual ~CObjProgress() = default;

    // Back to 0.
    virtual void Reset() { m_fValue = 0.0f; }
    // The present value in percent.
    virtual float GetValue() { return m_fValue; }
    // Names what is being done; `key` is looked up in the language file by sinks that show a text.
    virtual void SetStepText(const wchar_t* key) { static_cast<void>(key); }
    // The value in percent, 0 to 100; callers never let it run backwards inside one range.
    virtual void SetValue(float v) { m_fValue = v; }
    // 0 asks the work to stop soon and leave its bitmap whole.
    virtual int CanContinue() { return 1; }
    // The work is over.
    virtual void Finish() {}

  protected:
    float m_fValue = 0.0f;
};
