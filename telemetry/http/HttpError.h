// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <exception>
#include <limits>
#include <QtCore/QString>
#include <string>
#include <utility>

namespace Tamar {

// Exceptions with a text, in bytes (A) and wide (W).
class errmsg_exceptionA : public std::exception {
  public:
    explicit errmsg_exceptionA(std::string text) : m_text(std::move(text)) {}
    const char* what() const noexcept override { return m_text.c_str(); }
    const std::string& errmsg() const { return m_text; }

  private:
    std::string m_text;
};

class errmsg_exceptionW : public errmsg_exceptionA {
  public:
    explicit errmsg_exceptionW(const QString& text) : errmsg_exceptionA(text.toStdString()), m_text(text) {}
    const QString& errmsg() const { return m_text; }

  private:
    QString m_text;
};

// What went wrong with a client. Platform errors carry the network library's number besides.
enum class HttpErrorCode { NotAllowed, BadArgument, BadUrl, Failed, OutOfMemory };

template <class Base, class Text>
class httpclientexceptionT : public Base {
  public:
    httpclientexceptionT(HttpErrorCode code, const Text& text, int lastError = 0)
        : Base(text), m_code(code), m_lastError(lastError) {}
    HttpErrorCode ErrorCode() const { return m_code; }
    int LastError() const { return m_lastError; }

  private:
    HttpErrorCode m_code;
    int m_lastError;
};
using httpclientexceptionA = httpclientexceptionT<errmsg_exceptionA, std::string>;
using httpclientexceptionW = httpclientexceptionT<errmsg_exceptionW, QString>;

// Raised by arithmetic on lengths that would leave the range.
class SafeIntException : public std::exception {
  public:
    const char* what() const noexcept override { return "A length is out of range"; }
};

// The sum of two lengths, neither below 0.
inline qint64 SafeSum(qint64 a, qint64 b) {
    if (a < 0 || b < 0 || a > std::numeric_limits<qint64>::max() - b) throw SafeIntException();
    return a + b;
}

}  // namespace Tamar
