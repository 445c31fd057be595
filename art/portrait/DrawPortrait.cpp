// SPDX-License-Identifier: GPL-3.0-or-later
// Usage: quince_draw_portrait <folder>: writes default.jpg and default.json there.
#include <cstdio>
#include <filesystem>
#include <string>

#include "JpegFile.h"
#include "WholeFile.h"

namespace {

constexpr int Quality = 92;

bool WriteText(const std::filesystem::path& path, const std::string& text) {
    WholeFile file(path);
    return file.Open() && file.Write(text.data(), text.size()) && file.Commit();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: quince_draw_portrait <folder>\n");
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    const bool done = WriteText(folder / "default.json", PortraitTruth(PortraitWidth)) &&
                      WriteJpeg(folder / "default.jpg", PaintPortrait(PortraitWidth), Quality);
    if (!done) std::fprintf(stderr, "cannot write the portrait into %s\n", argv[1]);
    return done ? 0 : 1;
}
