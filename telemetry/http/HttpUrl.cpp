// SPDX-License-Identifier: GPL-3.0-or-later
#include "HttpUrl.h"

#include <algorithm>
#include <QtCore/QList>
#include <string>
#include <string_view>

namespace Tamar {
namespace {

constexpr std::string_view Unreserved = "-._~";
constexpr std::string_view Others = ":/?@!$&'()*+,;=";

bool IsAlphanumeric(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool IsHex(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

bool IsLegal(char c) {
    return IsAlphanumeric(c) || Unreserved.find(c) != std::string_view::npos ||
           Others.find(c) != std::string_view::npos;
}

bool IsEscape(std::string_view text, std::size_t at) {
    return text[at] == '%' && at + 2 < text.size() && IsHex(text[at + 1]) && IsHex(text[at + 2]);
}

// The scheme's length with "://" when the text begins with it in any case, else 0.
std::size_t SchemeLength(std::string_view text, std::string_view scheme) {
    if (text.size() < scheme.size() + 3 || text.substr(scheme.size(), 3) != "://") return 0;
    const bool same = std::equal(scheme.begin(), scheme.end(), text.begin(),
                                 [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b + ('a' - 'A') : b); });
    return same ? scheme.size() + 3 : 0;
}

bool IsHostName(std::string_view host) {
    constexpr std::size_t longest = 253;
    return !host.empty() && host.size() <= longest && host.front() != '.' && host.front() != '-' &&
           std::all_of(host.begin(), host.end(), [](char c) { return IsAlphanumeric(c) || c == '-' || c == '.'; }) &&
           host.find("..") == std::string_view::npos;
}

bool IsAddress6(std::string_view host) {
    return host.size() > 4 && host.size() <= 47 && host.front() == '[' && host.back() == ']' &&
           std::all_of(host.begin() + 1, host.end() - 1, [](char c) { return IsHex(c) || c == ':' || c == '.'; });
}

// 1 to 65535; 0 when it is none.
int PortOf(std::string_view digits) {
    int port = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') return 0;
        port = port * 10 + (c - '0');
        if (port > 65535) return 0;
    }
    return port;
}

struct Parts {
    bool valid = false;
    bool secure = false;
    std::string_view host;
    int port = 0;
    std::string_view path;
};

Parts Split(std::string_view url) {
    Parts parts;
    const std::size_t secure = SchemeLength(url, "https");
    const std::size_t start = secure ? secure : SchemeLength(url, "http");
    parts.secure = secure != 0;
    if (start == 0) return parts;
    const std::string_view rest = url.substr(start);
    const std::size_t end = std::min(rest.find_first_of("/?"), rest.size());
    std::string_view authority = rest.substr(0, end);
    parts.path = rest.substr(end);
    // A colon inside the brackets of an address is none of a port.
    const std::size_t bracket = authority.rfind(']');
    const std::size_t colon = authority.rfind(':');
    const bool hasPort = colon != std::string_view::npos && (bracket == std::string_view::npos || colon > bracket);
    parts.host = hasPort ? authority.substr(0, colon) : authority;
    parts.port = hasPort ? PortOf(authority.substr(colon + 1)) : parts.secure ? 443 : 80;
    for (std::size_t i = 0; i < parts.path.size(); ++i)
        if (!IsLegal(parts.path[i]) && !IsEscape(parts.path, i)) return parts;
    parts.valid = parts.port != 0 && (IsHostName(parts.host) || IsAddress6(parts.host));
    return parts;
}

std::string BytesOf(const QString& text) {
    return text.toStdString();
}
std::string BytesOf(const std::string& text) {
    return text;
}
void Assign(QString& text, std::string_view bytes) {
    text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}
void Assign(std::string& text, std::string_view bytes) {
    text = bytes;
}

}  // namespace

template <class Text>
CHttpUrlAnalyzerT<Text> CHttpUrlAnalyzerT<Text>::Analyze(const Text& url) {
    const std::string bytes = BytesOf(url);
    const Parts parts = Split(bytes);
    CHttpUrlAnalyzerT result;
    result.m_valid = parts.valid;
    result.m_secure = parts.secure;
    result.m_port = parts.port;
    Assign(result.m_host, parts.host);
    std::string path(parts.path);
    if (path.empty() || path.front() == '?') path.insert(0, 1, '/');
    Assign(result.m_path, path);
    return result;
}

template class CHttpUrlAnalyzerT<QString>;
template class CHttpUrlAnalyzerT<std::string>;

QString WithLegalCharacters(const QString& url) {
    // By way of whole characters, which is where a half one is replaced.
    const QList<uint> characters = url.toUcs4();
    const std::string bytes =
        QString::fromUcs4(reinterpret_cast<const char32_t*>(characters.constData()), characters.size()).toStdString();
    std::string legal;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (IsLegal(bytes[i]) || IsEscape(bytes, i)) {
            legal += bytes[i];
            continue;
        }
        constexpr char digits[] = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(bytes[i]);
        legal += '%';
        legal += digits[byte >> 4];
        legal += digits[byte & 15];
    }
    return QString::fromStdString(legal);
}

}  // namespace Tamar
