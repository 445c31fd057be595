// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <string>

#include "UpdateGate.h"

// The part of starting and ending that needs no window. Main thread, by the process that holds the instance lock.

// What start-up asks of the machine.
struct StartUpServices {
    std::function<int()> languageNumber;  // of the user's interface language
    // Called with the version and the data folder; empty where there is no crash reporter.
    std::function<void(const std::string& version, const std::string& folder)> installCrashReporter;
    UpdateServices update;
};

// The services of this machine, without a crash reporter.
StartUpServices SystemServices();

// What start-up came to.
struct StartUpResult {
    bool updating = false;  // the updater was started: end without a window
    QString picture;        // what to open first; may be empty or no valid path
};

// The steps in their order: folders made and Temp wiped, click counts read, command line, language, version, crash
// reporter, log, update gate, and, when the program goes on, language files and title. Settings that cannot be written
// are left to their defaults; nothing is reported.
StartUpResult RunStartUp(const QStringList& arguments, const StartUpServices& services);

// The end of a run that RunStartUp began: Temp wiped, click counts written.
void RunShutDown();

// "2052" for the five numbers of Chinese, "1033" for every other one.
QString LanguageFor(int languageNumber);

// The single steps.
void WriteLanguage(int languageNumber);  // the choice goes to [Language] ID at every start, over what stood there
void WriteVersion();                     // [Main] Version
void SettleLanguage();                   // takes [Language] ID as the language; English when it is empty or unknown
void SettleTitle();                      // the language's title, "QUINCE" without one, goes to [Title] ids_Name too
