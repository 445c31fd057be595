// SPDX-License-Identifier: GPL-3.0-or-later
// quince_tour retouch PICTURE FOLDER          a retouch in the real windows; the result and a shot of the window
// quince_tour memory PICTURE                  the most memory that opening and one step took, in MB
// quince_tour memory PICTURE brush             the same for ten strokes over the lips and a moved slider
// quince_tour memory PICTURE warp              the same for a stroke of slimming
// quince_tour memory PICTURE WIDTH HEIGHT     the same for opening and giving the picture this size
// quince_tour screens PICTURE FOLDER LANGUAGE SUFFIX   the pictures of the documentation
#include <cstdio>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include "Language.h"
#include "Memory.h"
#include "Retouch.h"
#include "Screens.h"

int main(int argc, char** argv) {
    // A home of the tour's own; resources come from the folder of the program.
    const QTemporaryDir home;
    if (!home.isValid()) return 1;
    qputenv("QUINCE_HOME", home.path().toUtf8());
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    QStringList arguments = application.arguments();
    if (arguments.size() > 2) arguments[2] = QFileInfo(arguments[2]).absoluteFilePath();
    if (arguments.size() == 4 && arguments[1] == u"retouch") return TourRetouch(arguments[2], arguments[3]) ? 0 : 1;
    if (arguments.size() >= 3 && arguments.size() <= 5 && arguments[1] == u"memory") {
        double megabytes = 0;
        if (arguments.size() == 3) megabytes = TourMemory(arguments[2]);
        if (arguments.size() == 4)
            megabytes = arguments[3] == u"warp" ? TourWarpMemory(arguments[2]) : TourBrushMemory(arguments[2]);
        if (arguments.size() == 5)
            megabytes = TourResizeMemory(arguments[2], {arguments[3].toInt(), arguments[4].toInt()});
        std::printf("%.1f\n", megabytes);
        return megabytes > 0 ? 0 : 1;
    }
    if (arguments.size() == 6 && arguments[1] == u"screens") {
        SetLanguage(arguments[4]);
        TourScreens(arguments[2], arguments[3], arguments[5]);
        return 0;
    }
    std::fprintf(stderr,
                 "usage: quince_tour retouch PICTURE FOLDER | memory PICTURE [brush | warp | WIDTH HEIGHT] | screens "
                 "PICTURE FOLDER "
                 "LANGUAGE SUFFIX\n");
    return 2;
}
