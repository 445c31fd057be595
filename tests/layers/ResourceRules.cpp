// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResourceRules.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string_view>

#include "XmlScan.h"

namespace fs = std::filesystem;

namespace {

using Names = std::set<std::string>;

Names FilesUnder(const fs::path& root) {
    Names names;
    std::error_code error;
    for (fs::recursive_directory_iterator it(root, error), end; it != end; it.increment(error))
        if (it->is_regular_file()) names.insert(it->path().lexically_relative(root).generic_string());
    return names;
}

void ReportMissing(const Names& have, const Names& want, const std::string& where, std::vector<std::string>& findings) {
    for (const std::string& name : want)
        if (!have.contains(name)) findings.push_back(where + " lacks " + name);
}

// Names that the form's author gave: those of widgets and of layouts.
Names ControlsOf(const XmlElement& root) {
    Names controls;
    VisitElements(root, [&](const XmlElement& element) {
        if (element.tag != "widget" && element.tag != "layout") return;
        if (!element.Attribute("name").empty())
            controls.insert(element.Attribute("class") + " " + element.Attribute("name"));
    });
    return controls;
}

std::string PropertyText(const XmlElement& widget, const std::string& property) {
    for (const XmlElement& child : widget.children)
        if (child.tag == "property" && child.Attribute("name") == property)
            for (const XmlElement& value : child.children)
                if (value.tag == "string") return value.text;
    return {};
}

// Whether a user can act on a control of this class, judged by the end of the name: CPushButton, QPushButton, ...
bool TakesInput(std::string_view className) {
    static constexpr std::array<std::string_view, 10> endings{"Button",  "CheckBox", "ComboBox", "LineEdit", "Slider",
                                                              "SpinBox", "TextEdit", "Option",   "Edit",     "Combo"};
    return std::any_of(endings.begin(), endings.end(), [&](std::string_view e) { return className.ends_with(e); });
}

std::string FromUtf16(const std::string& bytes) {
    std::string text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) text += bytes[i + 1] || (bytes[i] & 0x80) ? '?' : bytes[i];
    return text;
}

std::string Trimmed(const std::string& text) {
    const auto begin = text.find_first_not_of(" \t\r");
    return begin == text.npos ? std::string() : text.substr(begin, text.find_last_not_of(" \t\r") - begin + 1);
}

Names KeysOf(const std::map<std::string, std::string>& ini) {
    Names keys;
    for (const auto& [key, text] : ini) keys.insert(key);
    return keys;
}

}  // namespace

std::vector<std::string> CompareFiles(const fs::path& first, const fs::path& second) {
    std::vector<std::string> findings;
    const Names a = FilesUnder(first), b = FilesUnder(second);
    ReportMissing(a, b, first.filename().string(), findings);
    ReportMissing(b, a, second.filename().string(), findings);
    return findings;
}

std::vector<std::string> CompareSkins(const std::string& name, const std::string& first, const std::string& second) {
    const XmlDocument a = ScanXml(first), b = ScanXml(second);
    std::vector<std::string> findings;
    if (!a.error.empty()) findings.push_back(name + " (first language) " + a.error);
    if (!b.error.empty()) findings.push_back(name + " (second language) " + b.error);
    if (!findings.empty()) return findings;
    const Names controlsA = ControlsOf(a.root), controlsB = ControlsOf(b.root);
    ReportMissing(controlsA, controlsB, name + " (first language)", findings);
    ReportMissing(controlsB, controlsA, name + " (second language)", findings);
    return findings;
}

std::vector<std::string> CheckControlHelp(const std::string& name, const std::string& skin) {
    const XmlDocument document = ScanXml(skin);
    std::vector<std::string> findings;
    VisitElements(document.root, [&](const XmlElement& element) {
        if (element.tag != "widget" || !TakesInput(element.Attribute("class"))) return;
        if (PropertyText(element, "toolTip").empty())
            findings.push_back(name + ": " + element.Attribute("name") + " has no toolTip");
    });
    return findings;
}

std::map<std::string, std::string> ReadIni(const std::string& bytes, std::set<std::string>* duplicates) {
    std::string text = bytes.starts_with("\xFF\xFE") ? FromUtf16(bytes) : bytes;
    if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);
    std::map<std::string, std::string> entries;
    std::string section;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        line = Trimmed(line);
        if (line.empty() || line[0] == ';' || line[0] == '#') continue;
        if (line[0] == '[' && line.ends_with(']')) {
            section = line.substr(1, line.size() - 2);
        } else if (const auto equals = line.find('='); equals != line.npos) {
            const std::string key = section + "/" + Trimmed(line.substr(0, equals));
            if (!entries.emplace(key, Trimmed(line.substr(equals + 1))).second && duplicates) duplicates->insert(key);
        }
    }
    return entries;
}

std::vector<std::string> CompareInis(const std::string& name, const std::string& first, const std::string& second) {
    std::vector<std::string> findings;
    const auto check = [&](const std::string& bytes, const std::string& where) {
        Names twice;
        const auto entries = ReadIni(bytes, &twice);
        for (const std::string& key : twice) findings.push_back(where + " has " + key + " twice");
        for (const auto& [key, text] : entries)
            if (text.empty()) findings.push_back(where + " has no text for " + key);
        return KeysOf(entries);
    };
    const std::string whereA = name + " (first language)", whereB = name + " (second language)";
    const Names a = check(first, whereA), b = check(second, whereB);
    ReportMissing(a, b, whereA, findings);
    ReportMissing(b, a, whereB, findings);
    return findings;
}
