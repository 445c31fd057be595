// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <utility>
#include <vector>

namespace Tamar {

// One entry of a map: a header, a parameter's text, or the path of a file that goes out as a parameter.
template <class Text>
struct CHttpClientMapItemT {
    Text name;
    Text value;
    bool isFile = false;
};

// Names and values in the order of their adding; a name may stand several times, as in a form.
template <class Text>
class CHttpClientMapT {
  public:
    using Item = CHttpClientMapItemT<Text>;

    void Add(const Text& name, const Text& value, bool isFile = false) {
        AddPointerDirectly(std::make_unique<Item>(Item{name, value, isFile}));
    }
    // Takes an entry over without copying its texts.
    void AddPointerDirectly(std::unique_ptr<Item> item) { m_items.push_back(std::move(item)); }

    std::size_t Count() const { return m_items.size(); }
    const Item& At(std::size_t index) const { return *m_items[index]; }
    bool HasFile() const {
        for (const auto& item : m_items)
            if (item->isFile) return true;
        return false;
    }
    void Clear() { m_items.clear(); }

  private:
    std::vector<std::unique_ptr<Item>> m_items;
};

}  // namespace Tamar
