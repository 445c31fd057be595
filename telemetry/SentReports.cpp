// SPDX-License-Identifier: GPL-3.0-or-later
#include "SentReports.h"

#include <mutex>
#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include "AppPaths.h"
#include "WholeFile.h"

namespace {

// Nobody reads more, and opening pictures all day must not fill a disk.
constexpr qsizetype LongestReport = 64 * 1024;

std::mutex g_lock;
QString g_report;

QString ReportFile() {
    return AppPath(QStringLiteral("Resources/LastReport.txt"));
}

}  // namespace

void NoteSent(const QString& method, const QString& url, const QString& body) {
    const std::lock_guard<std::mutex> guard(g_lock);
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    g_report += time + u'\n' + method + u' ' + url + u'\n';
    if (!body.isEmpty()) g_report += body + u'\n';
    g_report += u'\n';
    g_report = g_report.right(LongestReport);
    const QByteArray bytes = g_report.toUtf8();
    if (!MakeDirs(QFileInfo(ReportFile()).path())) return;
    WholeFile file(QFile::encodeName(ReportFile()).toStdString());
    // A report that cannot be kept is no reason to disturb anybody.
    if (file.Open() && file.Write(bytes.constData(), static_cast<std::size_t>(bytes.size()))) file.Commit();
}

QString LastSent() {
    const std::lock_guard<std::mutex> guard(g_lock);
    QFile file(ReportFile());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(4 * LongestReport)).trimmed() : QString();
}

void BeginSentReport() {
    const std::lock_guard<std::mutex> guard(g_lock);
    g_report.clear();
}
