// SPDX-License-Identifier: GPL-3.0-or-later
#include "XmlScan.h"

#include <algorithm>
#include <cctype>
#include <memory>

namespace {

class Scanner {
  public:
    explicit Scanner(std::string_view text) : m_text(text) {}

    XmlDocument Run() {
        XmlDocument document;
        XmlElement top;
        m_open.push_back(&top);
        while (m_error.empty() && m_at < m_text.size()) Step();
        if (m_error.empty() && m_open.size() > 1) Fail("<" + m_open.back()->tag + "> is never closed");
        if (m_error.empty() && top.children.size() != 1) Fail("there must be one outermost element");
        document.error = m_error;
        if (m_error.empty()) document.root = std::move(top.children.front());
        return document;
    }

  private:
    void Step() {
        if (m_text[m_at] != '<') {
            const std::size_t end = std::min(m_text.find('<', m_at), m_text.size());
            m_open.back()->text += m_text.substr(m_at, end - m_at);
            m_at = end;
        } else if (SkipFrom("<!--", "-->") || SkipFrom("<![CDATA[", "]]>") || SkipFrom("<?", "?>") ||
                   SkipFrom("<!", ">")) {
        } else if (m_text.substr(m_at).starts_with("</")) {
            Close();
        } else {
            Open();
        }
    }

    bool SkipFrom(std::string_view begin, std::string_view end) {
        if (!m_text.substr(m_at).starts_with(begin)) return false;
        const std::size_t found = m_text.find(end, m_at + begin.size());
        if (found == m_text.npos) Fail("nothing ends " + std::string(begin));
        m_at = found == m_text.npos ? m_text.size() : found + end.size();
        return true;
    }

    void Close() {
        m_at += 2;
        const std::string tag = Name();
        SkipBlanks();
        if (!Take('>')) return Fail("</" + tag + " lacks its >");
        if (m_open.size() < 2 || m_open.back()->tag != tag) return Fail("</" + tag + "> closes nothing");
        m_open.pop_back();
    }

    void Open() {
        ++m_at;
        XmlElement element;
        element.tag = Name();
        if (element.tag.empty()) return Fail("a bare <");
        for (SkipBlanks(); m_at < m_text.size() && m_text[m_at] != '>' && m_text[m_at] != '/'; SkipBlanks())
            if (!TakeAttribute(element)) return;
        const bool empty = Take('/');
        if (!Take('>')) return Fail("<" + element.tag + " lacks its >");
        // Children are only ever appended to the innermost open element, so outer pointers stay good.
        m_open.back()->children.push_back(std::move(element));
        if (!empty) m_open.push_back(&m_open.back()->children.back());
    }

    bool TakeAttribute(XmlElement& element) {
        const std::string name = Name();
        SkipBlanks();
        if (name.empty() || !Take('=')) return Fail("an attribute of <" + element.tag + "> lacks its value"), false;
        SkipBlanks();
        const char quote = m_at < m_text.size() ? m_text[m_at] : ' ';
        const std::size_t end = m_text.find(quote, m_at + 1);
        if ((quote != '"' && quote != '\'') || end == m_text.npos)
            return Fail("the value of " + name + " is not quoted"), false;
        if (!element.attributes.emplace(name, m_text.substr(m_at + 1, end - m_at - 1)).second)
            return Fail(name + " stands twice in <" + element.tag + ">"), false;
        m_at = end + 1;
        return true;
    }

    std::string Name() {
        const std::size_t begin = m_at;
        while (m_at < m_text.size() && (std::isalnum(static_cast<unsigned char>(m_text[m_at])) ||
                                        std::string_view("_-:.").find(m_text[m_at]) != std::string_view::npos))
            ++m_at;
        return std::string(m_text.substr(begin, m_at - begin));
    }

    void SkipBlanks() {
        while (m_at < m_text.size() && std::isspace(static_cast<unsigned char>(m_text[m_at]))) ++m_at;
    }

    bool Take(char c) {
        if (m_at >= m_text.size() || m_text[m_at] != c) return false;
        ++m_at;
        return true;
    }

    void Fail(const std::string& what) {
        if (!m_error.empty()) return;
        const auto line = 1 + std::count(m_text.begin(), m_text.begin() + static_cast<std::ptrdiff_t>(m_at), '\n');
        m_error = "line " + std::to_string(line) + ": " + what;
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    std::vector<XmlElement*> m_open;
    std::string m_error;
};

}  // namespace

std::string XmlElement::Attribute(const std::string& name) const {
    const auto found = attributes.find(name);
    return found == attributes.end() ? std::string() : found->second;
}

XmlDocument ScanXml(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    return Scanner(text).Run();
}
