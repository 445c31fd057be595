// SPDX-License-Identifier: GPL-3.0-or-later
// quince-share [PICTURE]: the sharing companion. It is installed under two names, Twitter and FaceBook, and is the one
// or the other by the name that it is started under.
#include <QtCore/QFileInfo>
#include <QtWidgets/QApplication>

#include "AppPaths.h"
#include "Companions.h"
#include "CShareWnd.h"
#include "InstanceAnswers.h"
#include "InstanceLock.h"
#include "Messages.h"
#include "QtTexts.h"
#include "StartUp.h"
#include "Style.h"

namespace {

int Show(QApplication& application, Companion companion, const QString& picture) {
    SettleLanguage();
    const QtTexts texts;
    Style::Apply(application);
    CShareWnd window(picture, QLatin1String(RowOf(companion).windowTitle));
    window.show();
    InstanceAnswers answers(CompanionSocketName(companion).toUtf8(), [&window] {
        PostToMain(&window, [&window] {
            if (window.isMinimized()) window.showNormal();
            window.raise();
            window.activateWindow();
        });
    });
    answers.Say(InstanceState::Shown);
    return application.exec();
}

}  // namespace

int main(int argc, char** argv) {
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    const QString name = QFileInfo(application.arguments().value(0)).completeBaseName();
    const Companion companion = CompanionNamed(name);
    // The window's class.
    application.setApplicationName(QLatin1String(RowOf(companion).windowClass));
    MakeDirs(GetAppDir());
    InstanceLock lock(CompanionLockFile(companion));
    if (lock.Take() == InstanceLock::State::Held) {
        RaiseCompanion(companion);
        return 0;
    }
    return Show(application, companion, application.arguments().value(1));
}
