// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "HttpError.h"

namespace Tamar {

// Added to the flags of a request whose scheme is https.
constexpr unsigned SecureFlag = 0x800000;

// Splits a URL: scheme, host, port, path with query. Text is QString or std::string. An instance is a value.
template <class Text>
class CHttpUrlAnalyzerT {
  public:
    // The parts of `url`; IsValid() is false for what is no http or https URL of a plain host: without a scheme, with
    // a user's name, with characters that no URL holds, or with a port that is none. Nothing is thrown.
    static CHttpUrlAnalyzerT Analyze(const Text& url);

    bool IsValid() const { return m_valid; }
    bool IsSecure() const { return m_secure; }
    const Text& Host() const { return m_host; }  // an IPv6 address keeps its brackets
    int Port() const { return m_port; }          // 80 or 443 when the URL names none
    const Text& Path() const { return m_path; }  // with the query; "/" when empty
    // The flags of a request to it.
    unsigned Flags(unsigned flags) const { return m_secure ? flags | SecureFlag : flags; }

  private:
    bool m_valid = false;
    bool m_secure = false;
    Text m_host;
    int m_port = 0;
    Text m_path;
};

using CHttpUrlAnalyzer = CHttpUrlAnalyzerT<QString>;

// `url` with every character that no URL may hold as the percent signs of its UTF-8 bytes; what a URL may hold stays as
// it is, and so does a percent sign before two hexadecimal digits. Half of a surrogate pair becomes U+FFFD.
QString WithLegalCharacters(const QString& url);

}  // namespace Tamar
