// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectCatalogue.h"

#include <algorithm>
#include <array>
#include <QtCore/QFileInfo>
#include <string>

#include "AppPaths.h"
#include "CEffect.h"
#include "Language.h"
#include "Log.h"
#include "UserLooks.h"

namespace {

using EffectFunction = int (*)(unsigned char*, int, int, void*, CObjProgress*, int, int);

struct EffectRow {
    const char* nameKey;
    std::uint32_t colour;
    const char* thumbnail;
};

// By effect index.
constexpr std::array<EffectRow, EffectCount> Rows{{
    {"ids_K1", 0xFF398CEA, "film\\1.png"},
    {"ids_jiaopian", 0xFF3BA2F1, "film\\2.png"},
    {"ids_G2", 0xFF2AABF5, "film\\3.png"},
    {"ids_C1", 0xFF2AC3F5, "film\\4.png"},
    {"ids_A3", 0xFF4BB0D1, "film\\5.png"},
    {"ids_qingliang", 0xFF2797BB, "film\\6.png"},
    {"ids_A2", 0xFF107A9C, "film\\7.png"},
    {"ids_M5", 0xFF096396, "film\\8.png"},
    {"ids_H2", 0xFFF46B78, "pola\\1.png"},
    {"ids_P7", 0xFFF35063, "pola\\2.png"},
    {"ids_P1", 0xFFFF3968, "pola\\3.png"},
    {"ids_P5", 0xFFD52557, "pola\\4.png"},
    {"ids_P6", 0xFFE62E4C, "pola\\5.png"},
    {"ids_P9", 0xFFE6678B, "pola\\6.png"},
    {"ids_P4", 0xFFEB4CA6, "pola\\7.png"},
    {"ids_liunian", 0xFFC57EEA, "lomo\\1.png"},
    {"ids_yunduan", 0xFF9E5DE0, "lomo\\2.png"},
    {"ids_Lomo", 0xFF8669D9, "lomo\\3.png"},
    {"ids_youge", 0xFF8342CC, "lomo\\4.png"},
    {"ids_earlybird", 0xFF4116CE, "lomo\\5.png"},
    {"ids_fenhongjiaren", 0xFF6919C3, "lomo\\6.png"},
    {"ids_hudson", 0xFF8C01B4, "lomo\\7.png"},
    {"ids_yizhou", 0xFF5D267C, "lomo\\8.png"},
    {"ids_fugu", 0xFFF4C56B, "vintage\\1.png"},
    {"ids_gutongse", 0xFFE9A94E, "vintage\\2.png"},
    {"ids_P2", 0xFFEB8F35, "vintage\\3.png"},
    {"ids_1970", 0xFFEB9C35, "vintage\\4.png"},
    {"ids_S4", 0xFFFFBA00, "vintage\\5.png"},
    {"ids_SE2", 0xFFFFCF27, "vintage\\6.png"},
    {"ids_getefeng", 0xFFE0B300, "vintage\\7.png"},
    {"ids_T2", 0xFFA8A1A9, "fade\\1.png"},
    {"ids_M4", 0xFFB6ABB0, "fade\\2.png"},
    {"ids_T1", 0xFFCCC1C3, "fade\\3.png"},
    {"ids_SE1", 0xFFCCC0B9, "fade\\4.png"},
    {"ids_T3", 0xFFBEC3B8, "fade\\5.png"},
    {"ids_H5", 0xFFB8C3C3, "fade\\6.png"},
    {"ids_heibai", 0xFF383838, "bw\\1.png"},
    {"ids_X6", 0xFF514343, "bw\\2.png"},
    {"ids_Sliver", 0xFF464E45, "bw\\3.png"},
    {"ids_B4", 0xFF444853, "bw\\4.png"},
    {"ids_X3", 0xFF6C6C6C, "bw\\5.png"},
    {"ids_B2", 0xFF1F1818, "bw\\6.png"},
    {"ids_X4", 0xFF535450, "bw\\7.png"},
    {"ids_Leak1", 0xFFFA9F4B, "leaker\\1.png"},
    {"ids_Leak6", 0xFFFA684B, "leaker\\2.png"},
    {"ids_Leak7", 0xFFE04A2D, "leaker\\3.png"},
    {"ids_Leak9", 0xFFCF5349, "leaker\\4.png"},
    {"ids_Leak15", 0xFFE46F2F, "leaker\\5.png"},
    {"ids_light-leak-2", 0xFFCD4634, "leaker\\6.png"},
    {"ids_LL17", 0xFFDB2300, "leaker\\7.png"},
}};

// By effect index.
constexpr std::array<EffectFunction, EffectCount> Functions{
    &CEffect::Effect_VSCO_K1,
    &CEffect::Effect_JiaoPianQuince,
    &CEffect::Effect_VSCO_G2,
    &CEffect::Effect_VSCO_C1,
    &CEffect::Effect_VSCO_A3,
    &CEffect::Effect_QingLiang,
    &CEffect::Effect_VSCO_A2,
    &CEffect::Effect_VSCO_M5,
    &CEffect::Effect_VSCO_H2,
    &CEffect::Effect_VSCO_P7,
    &CEffect::Effect_VSCO_P1,
    &CEffect::Effect_VSCO_P5,
    &CEffect::Effect_VSCO_P6,
    &CEffect::Effect_VSCO_P9,
    &CEffect::Effect_VSCO_P4,
    &CEffect::Effect_LiuNian,
    &CEffect::Effect_YunDuan,
    &CEffect::Effect_JingdianLomoQuince,
    &CEffect::Effect_YouGe,
    &CEffect::Effect_EarlyBird,
    &CEffect::Effect_FenHongJiaRenQuince,
    &CEffect::Effect_Hudson,
    &CEffect::Effect_YiZhouQuince,
    &CEffect::Effect_FuGuQuince,
    &CEffect::Effect_GuTongSe,
    &CEffect::Effect_VSCO_P2,
    &CEffect::Effect_VSCO_1970,
    &CEffect::Effect_VSCO_S4,
    &CEffect::Effect_VSCO_SE2,
    &CEffect::Effect_GeTeFengQuince,
    &CEffect::Effect_VSCO_T2,
    &CEffect::Effect_VSCO_M4,
    &CEffect::Effect_VSCO_T1,
    &CEffect::Effect_VSCO_SE1,
    &CEffect::Effect_VSCO_T3,
    &CEffect::Effect_VSCO_H5,
    &CEffect::Effect_HeiBai,
    &CEffect::Effect_VSCO_X6,
    &CEffect::Effect_Silver,
    &CEffect::Effect_VSCO_B4,
    &CEffect::Effect_VSCO_X3,
    &CEffect::Effect_VSCO_B2,
    &CEffect::Effect_VSCO_X4,
    &CEffect::Effect_LEAK_1,
    &CEffect::Effect_LEAK_6,
    &CEffect::Effect_LEAK_7,
    &CEffect::Effect_LEAK_9,
    &CEffect::Effect_LEAK_15,
    &CEffect::Effect_LEAK_LIGHT_LEAK,
    &CEffect::Effect_LEAK_LIGHT_LEAK_17,
};

constexpr int NoMore = -9;
constexpr std::size_t MostInCategory = 20;

// By category number less one; each row ends with NoMore.
constexpr std::array<std::array<int, MostInCategory>, CategoryCount> CategoryEffects{{
    {0, 1, 2, 3, 4, 5, 6, 7, NoMore},
    {8, 9, 10, 11, 12, 13, 14, NoMore},
    {23, 24, 25, 26, 27, 28, 29, NoMore},
    {15, 16, 17, 18, 19, 20, 21, 22, NoMore},
    {30, 31, 32, 33, 34, 35, NoMore},
    {36, 37, 38, 39, 40, 41, 42, NoMore},
    {43, 44, 45, 46, 47, 48, 49, NoMore},
}};

constexpr int FullStrength = 100;
// A quiet slate, unlike every colour of the table.
constexpr std::uint32_t UserLookColour = 0xFF4B5A6B;

std::vector<UserLook>& Looks() {
    static std::vector<UserLook> looks;
    return looks;
}

const UserLook* UserLookOf(int index) {
    const int number = index - FirstUserLook;
    return number >= 0 && number < UserLookCount() ? &Looks()[static_cast<std::size_t>(number)] : nullptr;
}

}  // namespace

CEffectInfo GetEffectInfo(int index) {
    if (index == NoEffect) return {QStringLiteral("原图"), FullStrength, 0, {}};
    if (const UserLook* look = UserLookOf(index))
        return {QString::fromStdWString(look->title), FullStrength, UserLookColour, {}};
    if (index < 0 || index >= EffectCount) return {};
    const EffectRow& row = Rows[static_cast<std::size_t>(index)];
    return {LanguageText(QLatin1String(row.nameKey)), FullStrength, row.colour, QLatin1String(row.thumbnail)};
}

QString GetEffectName(int index) {
    return GetEffectInfo(index).Name;
}

QString GetEffectThumbnail(int index) {
    return GetEffectInfo(index).Thumbnail;
}

int GetEffectAlpha(int index) {
    return GetEffectInfo(index).Alpha;
}

const std::vector<EffectCategory>& EffectCategories() {
    static const std::vector<EffectCategory> categories{
        {1, "Film", 0, "8880301"},     {2, "Pola", 8, "8880302"},
        {3, "Vintage", 23, "8880303"}, {4, "Lomo", 17, "8880304"},
        {5, "Fade", 30, "8880305"},    {6, "BW", 39, "8880306"},
        {7, "Leaker", 43, "8880307"},  {UserCategory, "User", FirstUserLook, ""},
    };
    return categories;
}

const EffectCategory* FindCategory(int number) {
    const auto& all = EffectCategories();
    const auto found =
        std::find_if(all.begin(), all.end(), [=](const EffectCategory& c) { return c.number == number; });
    return found == all.end() ? nullptr : &*found;
}

std::vector<int> EffectsOfCategory(int category) {
    std::vector<int> effects;
    if (category == UserCategory)
        for (int i = 0; i < UserLookCount(); ++i) effects.push_back(FirstUserLook + i);
    if (category < 1 || category > CategoryCount) return effects;
    for (const int index : CategoryEffects[static_cast<std::size_t>(category - 1)]) {
        if (index == NoMore) break;
        effects.push_back(index);
    }
    return effects;
}

int CategoryOfEffect(int index) {
    if (UserLookOf(index)) return UserCategory;
    for (int category = 1; category <= CategoryCount; ++category) {
        const std::vector<int> effects = EffectsOfCategory(category);
        if (std::find(effects.begin(), effects.end(), index) != effects.end()) return category;
    }
    return 0;
}

void ReadUserLooks() {
    Looks() = LoadUserLooks(AppPath(QStringLiteral("Looks")).toStdWString(), [](const std::wstring& line) {
        Log("[QUINCE]%s", qPrintable(QString::fromStdWString(line)));
    });
}

int UserLookCount() {
    return static_cast<int>(Looks().size());
}

std::wstring EffectResourceDir() {
    return QFileInfo(ResourcePath(QStringLiteral("Effects"))).path().toStdWString();
}

bool HasEffect(int index) {
    return (index >= 0 && index < EffectCount) || UserLookOf(index);
}

bool RunEffect(Bitmap& picture, int index, const std::wstring& resourceDir, const ProgressSpan& span) {
    if (!picture || !HasEffect(index)) return false;
    unsigned char* pixels = picture.MutablePixels();
    if (const UserLook* look = UserLookOf(index))
        return ApplyUserLook(*look, pixels, picture.Width(), picture.Height(), span.sink, span.start, span.end) != 0;
    // The library takes the folder as a pointer to text that it may write; it reads it only.
    void* folder = const_cast<wchar_t*>(resourceDir.c_str());
    return Functions[static_cast<std::size_t>(index)](pixels, picture.Width(), picture.Height(), folder, span.sink,
                                                      span.start, span.end) != 0;
}
