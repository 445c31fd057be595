// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

// Just enough XML for the checks on skins and icons: elements, attributes, text, nesting.
struct XmlElement {
    std::string tag;
    std::map<std::string, std::string> attributes;
    std::string text;  // of this element itself, entities left as they are
    std::vector<XmlElement> children;

    std::string Attribute(const std::string& name) const;
};

struct XmlDocument {
    XmlElement root;
    std::string error;  // what is not well formed, with its line; empty when all is well
};

XmlDocument ScanXml(std::string_view text);

// Calls `visit` for `element` and all below it, parents first.
template <class F>
void VisitElements(const XmlElement& element, const F& visit) {
    visit(element);
    for (const XmlElement& child : element.children) VisitElements(child, visit);
}
