// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "HttpError.h"

namespace Tamar {

// How far a post has got. It tells only while one is active: at other times every question throws.
template <class Exception>
class CHttpPostStatT {
  public:
    bool IsActive() const { return m_active; }

    qint64 ActualTotalByte() const { return Told(m_total, "ActualTotalByte"); }
    qint64 ActualPostedByte() const { return Told(m_posted, "ActualPostedByte"); }
    qint64 TotalCount() const { return Told(m_count, "TotalCount"); }
    qint64 PostedCount() const { return Told(m_postedCount, "PostedCount"); }
    qint64 PostedFileCount() const { return Told(m_postedFiles, "PostedFileCount"); }
    qint64 CurrParamPostedByte() const { return Told(m_paramPosted, "CurrParamPostedByte"); }
    qint64 CurrParamRemainByte() const { return Told(m_paramTotal - m_paramPosted, "CurrParamRemainByte"); }
    bool CurrParamIsFile() const { return Told(m_paramIsFile, "CurrParamIsFile"); }
    bool CurrParamIsComplete() const { return Told(m_paramPosted == m_paramTotal, "CurrParamIsComplete"); }

    // The client's side.
    void Begin(qint64 totalBytes, qint64 params) {
        *this = {};
        m_active = true;
        m_total = totalBytes;
        m_count = params;
    }
    void BeginParam(qint64 bytes, bool isFile) {
        m_paramPosted = 0;
        m_paramTotal = bytes;
        m_paramIsFile = isFile;
    }
    void Advance(qint64 bytes) {
        m_posted = SafeSum(m_posted, bytes);
        m_paramPosted = SafeSum(m_paramPosted, bytes);
    }
    void EndParam() {
        ++m_postedCount;
        if (m_paramIsFile) ++m_postedFiles;
    }
    void End() { *this = {}; }

  private:
    template <class Value>
    Value Told(Value value, const char* method) const {
        if (m_active) return value;
        throw Exception(
            HttpErrorCode::NotAllowed,
            QStringLiteral("CHttpPostStatT::%1: The post context is not active.").arg(QLatin1String(method)));
    }

    bool m_active = false;
    qint64 m_total = 0, m_posted = 0;
    qint64 m_count = 0, m_postedCount = 0, m_postedFiles = 0;
    qint64 m_paramPosted = 0, m_paramTotal = 0;
    bool m_paramIsFile = false;
};

}  // namespace Tamar
