// SPDX-License-Identifier: GPL-3.0-or-later
#include "UserLooks.h"

#include <algorithm>

#include "Bitmap.h"
#include "CubeFile.h"
#include "Look.h"

namespace {

bool IsCube(const std::filesystem::path& file) {
    std::string ending = file.extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(), [](unsigned char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : static_cast<char>(c);
    });
    return ending == ".cube";
}

// Text that may be UTF-8; what is not becomes the replacement character.
std::wstring Wide(const std::string& text) {
    std::wstring wide;
    for (std::size_t i = 0; i < text.size();) {
        const unsigned char lead = static_cast<unsigned char>(text[i]);
        const int more = lead < 0x80                   ? 0
                         : lead >= 0xC2 && lead < 0xE0 ? 1
                         : lead >= 0xE0 && lead < 0xF0 ? 2
                         : lead >= 0xF0 && lead < 0xF5 ? 3
                                                       : -1;
        unsigned code = more <= 0 ? lead : lead & (0x3Fu >> more);
        bool good = more >= 0 && i + std::size_t(std::max(more, 0)) < text.size();
        for (int k = 1; good && k <= more; ++k) {
            const unsigned char next = static_cast<unsigned char>(text[i + k]);
            good = (next & 0xC0) == 0x80;
            code = code << 6 | (next & 0x3F);
        }
        static constexpr unsigned least[] = {0, 0x80, 0x800, 0x10000};
        good = good && code >= least[more] && code < 0x110000 && (code < 0xD800 || code > 0xDFFF);
        if (!good) code = 0xFFFD;
        if (code < 0x20 || code == 0x7F) code = ' ';
        if (sizeof(wchar_t) == 2 && code > 0xFFFF) {
            wide += static_cast<wchar_t>(0xD7C0 + (code >> 10));
            wide += static_cast<wchar_t>(0xDC00 + (code & 0x3FF));
        } else {
            wide += static_cast<wchar_t>(code);
        }
        i += good ? std::size_t(more) + 1 : 1;
    }
    return wide;
}

std::shared_ptr<const Lattice> LatticeOf(const CubeTable& table) {
    // 33 is by far the most common size of such files, and its points are kept; of all others 65 lie near enough.
    const bool usual = table.dimensions == 3 && (table.size == 33 || table.size == 17);
    return std::make_shared<Lattice>(usual ? Lattice::Size::Coarse : Lattice::Size::Fine, [&](const Triple& colour) {
        return Lattice::Sample{table.At(colour), 0.0};
    });
}

}  // namespace

std::vector<UserLook> LoadUserLooks(const std::filesystem::path& folder,
                                    const std::function<void(const std::wstring& line)>& log) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    std::filesystem::directory_iterator entries(folder, error);
    for (const std::filesystem::directory_iterator end; !error && entries != end; entries.increment(error))
        if (IsCube(entries->path())) files.push_back(entries->path());
    std::sort(files.begin(), files.end());

    std::vector<UserLook> looks;
    for (const std::filesystem::path& file : files) {
        const CubeResult result = ReadCube(file);
        if (!result.error.empty()) {
            if (log) log(L"Look left out: " + Wide(file.filename().string()) + L": " + Wide(result.error));
            continue;
        }
        const std::string& title = result.table.title;
        looks.push_back({Wide(title.empty() ? file.stem().string() : title), file, LatticeOf(result.table)});
    }
    return looks;
}

int ApplyUserLook(const UserLook& look, unsigned char* pixels, int width, int height, CObjProgress* progress, int start,
                  int end) {
    if (!look.lattice || !pixels || !Bitmap::Allowed(width, height)) return 0;
    return ApplyLattice(*look.lattice, pixels, width, height, {progress, start, end});
}
