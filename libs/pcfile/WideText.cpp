// SPDX-License-Identifier: GPL-3.0-or-later
#include "WideText.h"

#include <cstdint>
#include <optional>

namespace {

// Decodes strictly: no overlong forms, no surrogates.
std::optional<std::wstring> FromUtf8(const std::string& bytes) {
    std::wstring text;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto lead = static_cast<std::uint8_t>(bytes[i]);
        const int more = lead < 0x80                   ? 0
                         : lead >= 0xF0 && lead < 0xF5 ? 3
                         : lead >= 0xE0 && lead < 0xF0 ? 2
                         : lead >= 0xC2 && lead < 0xE0 ? 1
                                                       : -1;
        if (more < 0 || i + more >= bytes.size()) return std::nullopt;
        std::uint32_t code = more == 0 ? lead : lead & (0x3F >> more);
        for (int k = 1; k <= more; ++k) {
            const auto next = static_cast<std::uint8_t>(bytes[i + k]);
            if ((next & 0xC0) != 0x80) return std::nullopt;
            code = code << 6 | (next & 0x3F);
        }
        static const std::uint32_t least[] = {0, 0x80, 0x800, 0x10000};
        if (code < least[more] || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return std::nullopt;
        text += static_cast<wchar_t>(code);
        i += 1 + more;
    }
    return text;
}

}  // namespace

std::wstring WideText(const std::string& bytes) {
    if (auto text = FromUtf8(bytes)) return *text;
    std::wstring text;
    for (const char c : bytes) text += static_cast<wchar_t>(static_cast<std::uint8_t>(c));
    return text;
}

std::string Utf8Text(const std::wstring& text) {
    std::string bytes;
    for (const wchar_t wide : text) {
        const auto code = static_cast<std::uint32_t>(wide);
        if (code < 0x80) {
            bytes += static_cast<char>(code);
        } else if (code < 0x800) {
            bytes += {static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
        } else if (code < 0x10000) {
            bytes += {static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3F)),
                      static_cast<char>(0x80 | (code & 0x3F))};
        } else if (code < 0x110000) {
            bytes += {static_cast<char>(0xF0 | code >> 18), static_cast<char>(0x80 | (code >> 12 & 0x3F)),
                      static_cast<char>(0x80 | (code >> 6 & 0x3F)), static_cast<char>(0x80 | (code & 0x3F))};
        }
    }
    return bytes;
}
