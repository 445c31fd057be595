// SPDX-License-Identifier: GPL-3.0-or-later
#include "BeautyLooks.h"

#include <array>
#include <QtCore/QFileInfo>

#include "AppPaths.h"
#include "Language.h"
#include "PC_Dsp.h"

namespace {

struct Row {
    const char* nameKey;
    int type;  // of PC_Dsp::AutoBeauty
    std::uint32_t colour;
};

constexpr std::array<Row, BeautyLooks::Count> Rows{{
    {"ids_hongrun", 6, 0xFFE0607E},
    {"ids_ziran", 1, 0xFFC69A72},
    {"ids_menghuan", 4, 0xFFA884CF},
    {"ids_nuannuan", 2, 0xFFE39A45},
    {"ids_baixi", 3, 0xFFE3B7AE},
    {"ids_qingxin", 5, 0xFF6FBF93},
    {"ids_lengyan", 7, 0xFF6690CB},
    {"ids_qingxi", 8, 0xFF3FA3C4},
}};

const Row& RowOf(int preset) {
    return Rows[static_cast<std::size_t>(preset - 1)];
}

}  // namespace

bool BeautyLooks::Exists(int preset) {
    return preset >= 1 && preset <= Count;
}

QString BeautyLooks::Name(int preset) {
    return Exists(preset) ? LanguageText(QLatin1String(RowOf(preset).nameKey)) : QString();
}

std::uint32_t BeautyLooks::Colour(int preset) {
    return Exists(preset) ? RowOf(preset).colour : 0;
}

std::wstring BeautyLooks::Folder() {
    return QFileInfo(ResourcePath(QStringLiteral("Beauty"))).path().toStdWString();
}

bool BeautyLooks::Run(Bitmap& picture, int preset, const std::wstring& folder, const ProgressSpan& span) {
    if (!picture || !Exists(preset)) return false;
    // The library takes the folder as a pointer to text that it may write; it reads it only.
    void* path = const_cast<wchar_t*>(folder.c_str());
    return PC_Dsp::AutoBeauty(RowOf(preset).type, picture.MutablePixels(), picture.Width(), picture.Height(), 0, 0, 0,
                              0, path, span.sink, span.start, span.end) != 0;
}
