// SPDX-License-Identifier: GPL-3.0-or-later
#include "UpdateGate.h"

#include <cstdlib>
#include <ctime>

#include "AppPaths.h"
#include "IniFile.h"
#include "Log.h"

namespace {

constexpr qint64 SecondsPerDay = 86400;
constexpr qint64 SecondsPerHour = 3600;
// The numbers that these lines of the log have always carried.
constexpr int LogLine = 142;
constexpr int CheckLogLine = 100;

std::tm LocalTime(qint64 seconds) {
    const auto time = static_cast<std::time_t>(seconds);
    std::tm local = {};
    ::localtime_r(&time, &local);
    return local;
}

void LogSpan(qint64 now, qint64 before) {
    const std::tm current = LocalTime(now);
    const std::tm previous = LocalTime(before);
    Log("[QUINCE][VNSS][Line:%d]span:%d, %d, tmCur:%d,%d, tmPre:%d,%d", LogLine,
        static_cast<int>((now - before) / SecondsPerDay),
        static_cast<int>((now - before) % SecondsPerDay / SecondsPerHour), current.tm_hour, current.tm_mday,
        previous.tm_hour, previous.tm_mday);
}

}  // namespace

bool RunUpdateGate(const UpdateServices& services) {
    const QString section = QStringLiteral("RunOnce");
    const QString key = QStringLiteral("NewVersionCheckActive");
    if (GetProfileInt(QStringLiteral("Main"), QStringLiteral("newversion"), 0, ConfigIni()) != 1) return false;
    // Unsigned, which carries the 32 bits beyond the year 2038.
    const qint64 before = static_cast<quint32>(GetProfileInt(section, key, 0, ConfigIni()));
    const qint64 now = services.now();
    if (std::abs((now - before) / SecondsPerDay) < 1) return false;
    if (!services.networkAlive()) return false;
    LogSpan(now, before);
    WriteProfileString(section, key, QString::number(now), ConfigIni());
    if (!services.startProgram(AppPath(QStringLiteral("Update.exe")), {QStringLiteral("auto")})) return false;
    Log("============[QUINCE]Updating=================");
    return true;
}

void RunUpdateCheck(const UpdateServices& services, const QString& address, bool firstRun) {
    if (firstRun || address.isEmpty() || !services.networkAlive()) return;
    services.startProgram(AppPath(QStringLiteral("Update.exe")), {QStringLiteral("check")});
    Log("============[QUINCE][FrameWnd][Line:%d]InitWindow=================", CheckLogLine);
}
