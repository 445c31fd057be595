// SPDX-License-Identifier: GPL-3.0-or-later
#include "Log.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>

#include "AppPaths.h"

namespace {

constexpr qsizetype MaxCharacters = 1024;
// Room for that many characters of up to three bytes each, and more text behind them that shows where they end.
constexpr std::size_t MaxBytes = 4 * MaxCharacters;

QByteArray Cut(const char* text) {
    QString characters = QString::fromUtf8(text).left(MaxCharacters);
    // Half of a character outside the basic plane would not survive the way back.
    if (!characters.isEmpty() && characters.back().isHighSurrogate()) characters.chop(1);
    return characters.toUtf8();
}

QByteArray TimeMark() {
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    ::localtime_r(&now, &local);
    std::array<char, 80> text = {};
    std::snprintf(text.data(), text.size(), "[%04d:%02d:%02d-%02d:%02d:%02d]", local.tm_year + 1900, local.tm_mon + 1,
                  local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    return text.data();
}

}  // namespace

void Log(const char* format, ...) {
    std::array<char, MaxBytes> text = {};
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    if (length < 0) return;
    const QByteArray line = TimeMark() + Cut(text.data()) + "\r\n";
    const QByteArray name = QFile::encodeName(AppPath(QStringLiteral("dbg.log")));
    const int file = ::open(name.constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (file < 0) return;
    // A full disk loses the line; there is nobody to tell.
    [[maybe_unused]] const ssize_t written = ::write(file, line.constData(), static_cast<std::size_t>(line.size()));
    ::close(file);
}
