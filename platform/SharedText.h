// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mutex>
#include <QtCore/QString>

// A process-wide text that any thread may read and replace.
class SharedText {
  public:
    QString Get() const {
        const std::lock_guard<std::mutex> guard(m_lock);
        return m_text;
    }
    void Set(const QString& text) {
        const std::lock_guard<std::mutex> guard(m_lock);
        m_text = text;
    }

  private:
    mutable std::mutex m_lock;
    QString m_text;
};
