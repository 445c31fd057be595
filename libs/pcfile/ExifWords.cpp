// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExifWords.h"

// The file is UTF-8 and so are the keys, so the header needs none of its converters.
#define SI_NO_CONVERSION
#include <SimpleIni.h>

#include "FileBytes.h"
#include "WideText.h"

bool ExifWords::Load(const std::wstring& iniFile) {
    m_words.clear();
    const std::filesystem::path path = FilePath(iniFile.c_str());
    FileBytes file;
    if (!file.Open(path, 0) || !file.ReadAll()) return false;
    CSimpleIniCaseA ini(true);
    if (ini.LoadData(reinterpret_cast<const char*>(file.Data()), file.Size()) < 0) return false;
    CSimpleIniCaseA::TNamesDepend sections;
    ini.GetAllSections(sections);
    for (const auto& section : sections) {
        CSimpleIniCaseA::TNamesDepend keys;
        ini.GetAllKeys(section.pItem, keys);
        for (const auto& key : keys)
            m_words[std::string(section.pItem) + '/' + key.pItem] =
                WideText(ini.GetValue(section.pItem, key.pItem, ""));
    }
    return true;
}

const std::wstring* ExifWords::Find(const std::string& section, const std::string& key) const {
    const auto found = m_words.find(section + '/' + key);
    return found == m_words.end() ? nullptr : &found->second;
}

std::wstring ExifWords::Word(const char* section, long value) const {
    const std::wstring* word = Find(section, std::to_string(value));
    return word ? *word : std::to_wstring(value);
}

std::wstring ExifWords::FlashWord(long value) const {
    if (const std::wstring* word = Find("Flash", std::to_string(value))) return *word;
    const std::wstring* word = Find("Flash", value & 1 ? "Fired" : "NotFired");
    return word ? *word : std::to_wstring(value);
}

std::wstring ExifWords::Pattern(const char* key, const std::wstring& pattern, const std::wstring& value) const {
    if (value.empty()) return value;
    const std::wstring* own = Find("Format", key);
    std::wstring text = own ? *own : pattern;
    const std::size_t at = text.find(L"%s");
    return at == std::wstring::npos ? value : text.replace(at, 2, value);
}
