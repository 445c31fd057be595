// SPDX-License-Identifier: GPL-3.0-or-later
// Usage: quince_draw_sprites <Images folder> <program icon.svg> <folder of the effects' overlays>
#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

#include <cstdio>

#include "EffectOverlays.h"
#include "Palettes.h"
#include "Sprites.h"

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        std::fprintf(stderr, "usage: quince_draw_sprites <folder> <icon.svg> <overlays>\n");
        return 2;
    }
    const QString& folder = arguments.at(1);
    const bool done = DrawTexture(folder) && DrawLoading(folder) && DrawNavigator(folder) && DrawButtons(folder) &&
                      DrawPalettes(folder) && DrawProgramIcons(folder, arguments.at(2)) &&
                      DrawEffectOverlays(arguments.at(3));
    if (!done) std::fprintf(stderr, "cannot draw the sprites into %s\n", qPrintable(folder));
    return done ? 0 : 1;
}
