// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <QtCore/QString>
#include <string>
#include <vector>

#include "Bitmap.h"
#include "EffectList.h"
#include "ProgressSpan.h"

// The effects that there are: fifty of the program's own in seven categories, and behind them the user's own looks, in
// a category of their own. An effect is known by its index: 0 to 49, the user's looks from 50 on within one run, and -1
// for the picture without an effect.
//
// Any thread, but ReadUserLooks, which is for the start, before any effect runs.

inline constexpr int NoEffect = -1;
inline constexpr int EffectCount = EffectListCount;
inline constexpr int FirstUserLook = EffectCount;
inline constexpr int CategoryCount = 7;
inline constexpr int UserCategory = CategoryCount + 1;

// What is known about an effect.
struct CEffectInfo {
    QString Name;              // in the interface's language; a user's look: its title
    int Alpha = 0;             // strength in percent that it begins with
    std::uint32_t Colour = 0;  // 0xAARRGGBB of the name strip
    QString Thumbnail;         // overlay of the row, below the folder I18N/Images/EffectBk; empty for none

    bool operator==(const CEffectInfo&) const = default;
};

// For -1 the original picture; an empty record for an index that no effect has.
CEffectInfo GetEffectInfo(int index);
QString GetEffectName(int index);
QString GetEffectThumbnail(int index);
int GetEffectAlpha(int index);

// A category: the stem of its control names and of its cover file, the effect on its cover, its click code (empty: not
// counted).
struct EffectCategory {
    int number;  // 1 to 7, 8 for the user's looks
    const char* stem;
    int coverIndex;
    const char* clickCode;

    QString Button() const { return Named("Btn"); }
    QString List() const { return Named("ListView"); }
    QString ListClass() const { return Named("EffectListView"); }
    QString CoverFile() const { return QLatin1String(stem) + QStringLiteral(".jpg"); }

  private:
    QString Named(const char* prefix) const { return QLatin1String(prefix) + QLatin1String(stem); }
};

// All eight in the order of the panel.
const std::vector<EffectCategory>& EffectCategories();
// The category of that number; null for none.
const EffectCategory* FindCategory(int number);
// The effect indexes of a category in the order of its list; none for a number that no category has.
std::vector<int> EffectsOfCategory(int category);
// The category that holds an effect; 0 for none.
int CategoryOfEffect(int index);

// Reads the folder AppDir/Looks: every valid .cube file in it is a look of the user's own, named by its title. A
// damaged one is skipped with a line in the log. Replaces those read before.
void ReadUserLooks();
int UserLookCount();

// There is an effect of that index; -1 is none.
bool HasEffect(int index);
// The program's folder with the effects' recipes, which every effect is given.
std::wstring EffectResourceDir();
// Runs an effect on the bitmap's own pixels at full strength. False for a null
// bitmap and an index without effect, and when the effect failed or the sink stopped it; the pixels are then undefined.
bool RunEffect(Bitmap& picture, int index, const std::wstring& resourceDir, const ProgressSpan& span = {});
