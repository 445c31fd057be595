// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <climits>

#include "CObjProgress.h"

// Remembers what it was told; asks to stop once `allowed` questions were answered with yes.
class WatchfulSink : public CObjProgress {
  public:
    explicit WatchfulSink(int allowed = INT_MAX) : m_allowed(allowed) {}
    void SetValue(float v) override {
        if (v < m_fValue) ranBackwards = true;
        m_fValue = v;
    }
    int CanContinue() override { return m_allowed-- > 0; }

    bool ranBackwards = false;

  private:
    int m_allowed;
};
