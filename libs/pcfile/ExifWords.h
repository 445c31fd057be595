// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>

// The dictionary of camera words: sections "Flash", "MeteringMode", "ExposureProgram" with the number of the Exif tag
// as key, and "Format" with the patterns of the other fields ("%s" stands for the value).
class ExifWords {
  public:
    // Reads an INI file in UTF-8; false (and no words) when it cannot be read.
    bool Load(const std::wstring& iniFile);

    // The word for `value`; the number itself when there is none.
    std::wstring Word(const char* section, long value) const;
    // Flash has many values that say little to people: a value without a word of its own gets that of key "Fired" or
    // "NotFired" by its lowest bit.
    std::wstring FlashWord(long value) const;
    // `value` set into the pattern `key` of section "Format", or into `pattern` when the dictionary has none.
    std::wstring Pattern(const char* key, const std::wstring& pattern, const std::wstring& value) const;

  private:
    const std::wstring* Find(const std::string& section, const std::string& key) const;

    std::map<std::string, std::wstring> m_words;  // "section/key"
};
