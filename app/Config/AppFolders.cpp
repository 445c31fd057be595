// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppFolders.h"

#include <array>

#include "AppPaths.h"

namespace {

// Resources: the folder of the click counts.
constexpr std::array WorkFolders = {"Temp/UndoTemp", "Temp/TeXiao", "Resources"};
constexpr std::array ResourceFolders = {"Images/Example",         "Images/Button", "Images/Loading",
                                        "Images/TextureBrush",    "I18N",          "Sucai/Biankuang/JianDan",
                                        "Sucai/Biankuang/XuanCai"};

}  // namespace

bool PrepareFolders() {
    bool made = MakeTempPrivate();
    for (const char* name : WorkFolders) made = MakeDirs(AppPath(QLatin1String(name))) && made;
    // The path of a resource is that of the data folder only when no other place has it.
    for (const char* name : ResourceFolders) made = MakeDirs(ResourcePath(QLatin1String(name))) && made;
    return made;
}

bool WipeTemp() {
    return WipeDir(AppPath(QStringLiteral("Temp")));
}
