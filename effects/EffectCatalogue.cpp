// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectCatalogue.h"

#include <algorithm>
#include <array>
#include <QtCore/QFileInfo>
#include <span>
#include <string>

#include "AppPaths.h"
#include "CEffect.h"
#include "Language.h"
#include "Log.h"
#include "UserLooks.h"

namespace {

// What the program knows about one of the library's effects.
struct EffectRow {
    EffectId effect;
    const char* nameKey;
    std::uint32_t colour;
};

// The effects of each category in the order of its list, in which their overlays are numbered too.
constexpr EffectRow Film[] = {
    {EffectId::Effect_VSCO_K1, "ids_K1", 0xFF398CEA}, {EffectId::Effect_JiaoPianQuince, "ids_jiaopian", 0xFF3BA2F1},
    {EffectId::Effect_VSCO_G2, "ids_G2", 0xFF2AABF5}, {EffectId::Effect_VSCO_C1, "ids_C1", 0xFF2AC3F5},
    {EffectId::Effect_VSCO_A3, "ids_A3", 0xFF4BB0D1}, {EffectId::Effect_QingLiang, "ids_qingliang", 0xFF2797BB},
    {EffectId::Effect_VSCO_A2, "ids_A2", 0xFF107A9C}, {EffectId::Effect_VSCO_M5, "ids_M5", 0xFF096396},
};
constexpr EffectRow Pola[] = {
    {EffectId::Effect_VSCO_H2, "ids_H2", 0xFFF46B78}, {EffectId::Effect_VSCO_P7, "ids_P7", 0xFFF35063},
    {EffectId::Effect_VSCO_P1, "ids_P1", 0xFFFF3968}, {EffectId::Effect_VSCO_P5, "ids_P5", 0xFFD52557},
    {EffectId::Effect_VSCO_P6, "ids_P6", 0xFFE62E4C}, {EffectId::Effect_VSCO_P9, "ids_P9", 0xFFE6678B},
    {EffectId::Effect_VSCO_P4, "ids_P4", 0xFFEB4CA6},
};
constexpr EffectRow Vintage[] = {
    {EffectId::Effect_FuGuQuince, "ids_fugu", 0xFFF4C56B},
    {EffectId::Effect_GuTongSe, "ids_gutongse", 0xFFE9A94E},
    {EffectId::Effect_VSCO_P2, "ids_P2", 0xFFEB8F35},
    {EffectId::Effect_VSCO_1970, "ids_1970", 0xFFEB9C35},
    {EffectId::Effect_VSCO_S4, "ids_S4", 0xFFFFBA00},
    {EffectId::Effect_VSCO_SE2, "ids_SE2", 0xFFFFCF27},
    {EffectId::Effect_GeTeFengQuince, "ids_getefeng", 0xFFE0B300},
};
constexpr EffectRow Lomo[] = {
    {EffectId::Effect_LiuNian, "ids_liunian", 0xFFC57EEA},
    {EffectId::Effect_YunDuan, "ids_yunduan", 0xFF9E5DE0},
    {EffectId::Effect_JingdianLomoQuince, "ids_Lomo", 0xFF8669D9},
    {EffectId::Effect_YouGe, "ids_youge", 0xFF8342CC},
    {EffectId::Effect_EarlyBird, "ids_earlybird", 0xFF4116CE},
    {EffectId::Effect_FenHongJiaRenQuince, "ids_fenhongjiaren", 0xFF6919C3},
    {EffectId::Effect_Hudson, "ids_hudson", 0xFF8C01B4},
    {EffectId::Effect_YiZhouQuince, "ids_yizhou", 0xFF5D267C},
};
constexpr EffectRow Fade[] = {
    {EffectId::Effect_VSCO_T2, "ids_T2", 0xFFA8A1A9}, {EffectId::Effect_VSCO_M4, "ids_M4", 0xFFB6ABB0},
    {EffectId::Effect_VSCO_T1, "ids_T1", 0xFFCCC1C3}, {EffectId::Effect_VSCO_SE1, "ids_SE1", 0xFFCCC0B9},
    {EffectId::Effect_VSCO_T3, "ids_T3", 0xFFBEC3B8}, {EffectId::Effect_VSCO_H5, "ids_H5", 0xFFB8C3C3},
};
constexpr EffectRow Bw[] = {
    {EffectId::Effect_HeiBai, "ids_heibai", 0xFF383838}, {EffectId::Effect_VSCO_X6, "ids_X6", 0xFF514343},
    {EffectId::Effect_Silver, "ids_Sliver", 0xFF464E45}, {EffectId::Effect_VSCO_B4, "ids_B4", 0xFF444853},
    {EffectId::Effect_VSCO_X3, "ids_X3", 0xFF6C6C6C},    {EffectId::Effect_VSCO_B2, "ids_B2", 0xFF1F1818},
    {EffectId::Effect_VSCO_X4, "ids_X4", 0xFF535450},
};
constexpr EffectRow Leaker[] = {
    {EffectId::Effect_LEAK_1, "ids_Leak1", 0xFFFA9F4B},
    {EffectId::Effect_LEAK_6, "ids_Leak6", 0xFFFA684B},
    {EffectId::Effect_LEAK_7, "ids_Leak7", 0xFFE04A2D},
    {EffectId::Effect_LEAK_9, "ids_Leak9", 0xFFCF5349},
    {EffectId::Effect_LEAK_15, "ids_Leak15", 0xFFE46F2F},
    {EffectId::Effect_LEAK_LIGHT_LEAK, "ids_light-leak-2", 0xFFCD4634},
    {EffectId::Effect_LEAK_LIGHT_LEAK_17, "ids_LL17", 0xFFDB2300},
};

struct CategoryRows {
    EffectCategory category;
    const char* overlays;  // folder
    std::span<const EffectRow> effects;
};

// In the order of the panel; a category's number is its place here, from 1 on.
constexpr std::array<CategoryRows, CategoryCount> Categories{{
    {{1, "Film", IndexOf(EffectId::Effect_VSCO_K1), "8880301"}, "film", Film},
    {{2, "Pola", IndexOf(EffectId::Effect_VSCO_H2), "8880302"}, "pola", Pola},
    {{3, "Vintage", IndexOf(EffectId::Effect_FuGuQuince), "8880303"}, "vintage", Vintage},
    {{4, "Lomo", IndexOf(EffectId::Effect_JingdianLomoQuince), "8880304"}, "lomo", Lomo},
    {{5, "Fade", IndexOf(EffectId::Effect_VSCO_T2), "8880305"}, "fade", Fade},
    {{6, "BW", IndexOf(EffectId::Effect_VSCO_B4), "8880306"}, "bw", Bw},
    {{7, "Leaker", IndexOf(EffectId::Effect_LEAK_1), "8880307"}, "leaker", Leaker},
}};

// Where an effect stands: in which category, and at which place of its list.
struct Place {
    int category = 0;  // number
    int place = -1;
};

constexpr std::array<Place, EffectCount> PlacesOfEffects() {
    std::array<Place, EffectCount> places{};
    for (const CategoryRows& rows : Categories)
        for (int i = 0; i < static_cast<int>(rows.effects.size()); ++i)
            places[static_cast<std::size_t>(IndexOf(rows.effects[static_cast<std::size_t>(i)].effect))] = {
                rows.category.number, i};
    return places;
}
constexpr std::array<Place, EffectCount> Places = PlacesOfEffects();

constexpr bool EveryEffectStandsOnce() {
    std::size_t rows = 0;
    for (const CategoryRows& category : Categories) rows += category.effects.size();
    for (const Place& place : Places)
        if (place.category == 0) return false;
    return rows == EffectCount;
}
static_assert(EveryEffectStandsOnce());

const CategoryRows& RowsOf(int category) {
    return Categories[static_cast<std::size_t>(category - 1)];
}

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
    const Place place = Places[static_cast<std::size_t>(index)];
    const CategoryRows& rows = RowsOf(place.category);
    const EffectRow& row = rows.effects[static_cast<std::size_t>(place.place)];
    return {LanguageText(QLatin1String(row.nameKey)), FullStrength, row.colour,
            QStringLiteral("%1\\%2.png").arg(QLatin1String(rows.overlays)).arg(place.place + 1)};
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
    static const std::vector<EffectCategory> categories = [] {
        std::vector<EffectCategory> all;
        for (const CategoryRows& rows : Categories) all.push_back(rows.category);
        all.push_back({UserCategory, "User", FirstUserLook, ""});
        return all;
    }();
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
    for (const EffectRow& row : RowsOf(category).effects) effects.push_back(IndexOf(row.effect));
    return effects;
}

int CategoryOfEffect(int index) {
    if (UserLookOf(index)) return UserCategory;
    return index >= 0 && index < EffectCount ? Places[static_cast<std::size_t>(index)].category : 0;
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
    return EffectFunctions[static_cast<std::size_t>(index)](pixels, picture.Width(), picture.Height(), folder,
                                                            span.sink, span.start, span.end) != 0;
}
