// SPDX-License-Identifier: GPL-3.0-or-later
#include "StartUp.h"

#include <ctime>

#include "AppFolders.h"
#include "AppPaths.h"
#include "ClickCount.h"
#include "CommandLine.h"
#include "IniFile.h"
#include "Language.h"
#include "Log.h"
#include "Network.h"
#include "Shell.h"
#include "SystemLanguage.h"
#include "Version.h"

namespace {

const char Chinese[] = "2052";
const char English[] = "1033";
constexpr qsizetype VersionBuffer = 256;

// Writes a value that is not there yet: a write waits for the disk, and a start writes the same as the start before.
void Settle(const QString& section, const QString& key, const QString& value) {
    if (GetProfileString(section, key, QString(), ConfigIni()) == value) return;
    WriteProfileString(section, key, value, ConfigIni());
}

void InstallCrashReporter(const StartUpServices& services) {
    if (!services.installCrashReporter) return;
    const QByteArray version = GetVersionText().toLocal8Bit().left(VersionBuffer - 1);
    services.installCrashReporter(version.toStdString(), GetAppDir().toStdString());
}

}  // namespace

StartUpServices SystemServices() {
    StartUpServices services;
    services.languageNumber = SystemLanguageNumber;
    services.update.now = [] { return static_cast<qint64>(std::time(nullptr)); };
    services.update.networkAlive = IsNetworkAlive;
    services.update.startProgram = StartProgram;
    return services;
}

StartUpResult RunStartUp(const QStringList& arguments, const StartUpServices& services) {
    PrepareFolders();
    WipeTemp();
    ClickCounts().Load();
    StartUpResult result;
    result.picture = PictureFromCommandLine(arguments);
    WriteLanguage(services.languageNumber());
    WriteVersion();
    InstallCrashReporter(services);
    Log("============[QUINCE]AppInit=================");
    result.updating = RunUpdateGate(services.update);
    if (result.updating) return result;
    SettleLanguage();
    SettleTitle();
    return result;
}

void RunShutDown() {
    WipeTemp();
    ClickCounts().Save();
}

QString LanguageFor(int languageNumber) {
    switch (languageNumber) {
        case 1028:
        case 2052:
        case 3076:
        case 4100:
        case 5124:
            return QLatin1String(Chinese);
        default:
            return QLatin1String(English);
    }
}

void WriteLanguage(int languageNumber) {
    Settle(QStringLiteral("Language"), QStringLiteral("ID"), LanguageFor(languageNumber));
}

void WriteVersion() {
    Settle(QStringLiteral("Main"), QStringLiteral("Version"), GetVersionText());
}

void SettleLanguage() {
    const QString id = GetProfileString(QStringLiteral("Language"), QStringLiteral("ID"), QString(), ConfigIni());
    // It becomes a folder's name, so only the known ones are taken.
    SetLanguage(id == QLatin1String(Chinese) ? QLatin1String(Chinese) : QLatin1String(English));
}

void SettleTitle() {
    const QString section = QStringLiteral("Title");
    const QString key = QStringLiteral("ids_Name");
    QString title = GetProfileString(section, key, QStringLiteral("QUINCE"), LanguageIni());
    if (title.isEmpty()) title = QStringLiteral("QUINCE");
    Settle(section, key, title);
    SetAppTitle(title);
}
