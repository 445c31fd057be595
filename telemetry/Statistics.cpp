// SPDX-License-Identifier: GPL-3.0-or-later
#include "Statistics.h"

#include <cstdlib>
#include <ctime>
#include <mutex>
#include <QtCore/QDate>
#include <QtCore/QFile>
#include <QtCore/QLoggingCategory>
#include <QtCore/QSettings>
#include <utility>

#include "AppPaths.h"
#include "ClickCount.h"
#include "ClientId.h"
#include "HttpSend.h"
#include "IniFile.h"
#include "Network.h"
#include "SentReports.h"

namespace {

Q_LOGGING_CATEGORY(requests, "quince.requests", QtWarningMsg)

constexpr qint64 SecondsPerDay = 86400;
const QString Main = QStringLiteral("Main");
const QString RunOnce = QStringLiteral("RunOnce");

QString Text(const QString& key) {
    return GetProfileString(Main, key, QString(), ConfigIni());
}

void Write(const QString& section, const char* key, const QString& value) {
    WriteProfileString(section, QLatin1String(key), value, ConfigIni());
}

int Number(const QString& section, const char* key) {
    return GetProfileInt(section, QLatin1String(key), 0, ConfigIni());
}

// Unsigned, which carries the 32 bits beyond the year 2038.
qint64 Seconds(const QString& section, const char* key) {
    return static_cast<quint32>(Number(section, key));
}

}  // namespace

StatisticsServices SystemStatistics() {
    return {[] { return static_cast<qint64>(std::time(nullptr)); }, [] { return QDate::currentDate().day(); },
            IsNetworkAlive, GetClientId};
}

CStatistics::CStatistics(Addresses addresses, StatisticsServices services)
    : m_addresses(std::move(addresses)), m_services(std::move(services)) {
    s_current = this;
    m_firstRun = Number(RunOnce, "Run");
    m_on = m_addresses.HasStatistics() && StatisticsAllowed();
    if (m_on) {
        BeginSentReport();
        if (!m_addresses.analytics.isEmpty()) m_client = m_services.clientId();
        ParseInstallerName();
        Write(Main, "count", QString::number(Number(Main, "count") + 1));
        Write(Main, "RunTime", QString::number(m_services.now()));
    }
    // The look for updates asks for it too.
    if (m_firstRun == 0 && (m_on || !m_addresses.update.isEmpty())) Write(RunOnce, "Run", QStringLiteral("1"));
}

CStatistics::~CStatistics() {
    s_current = nullptr;
    m_tasks.Stop();
    if (m_on) Write(Main, "time", QString::number(std::abs(m_services.now() - m_sessionStart)));
}

CStatistics::Context CStatistics::NewContext() const {
    return {m_addresses, m_services, m_client, m_firstRun, m_screen};
}

void CStatistics::StartStatistics(QSize screen) {
    m_screen = screen;
    if (!m_on || !m_services.networkAlive()) return;
    const qint64 now = m_services.now();
    const qint64 days = (now - Seconds(RunOnce, "PreCheckActive")) / SecondsPerDay;
    if (std::abs(days) > 0 && !m_addresses.analytics.isEmpty())
        m_tasks.Add([context = NewContext()](const CanContinue& go) { DailyCheck(context, go); });
    m_sessionStart = now;
    if (m_firstRun == 0) Write(Main, "Installdate", QString::number(now));
    m_tasks.Add([context = NewContext()](const CanContinue& go) { RunTask(context, go); });
}

// Not asked whether there is a network: without one the request just fails.
void CStatistics::SendOpen(const OpenFacts& picture) {
    if (!m_on || m_addresses.analytics.isEmpty()) return;
    m_tasks.Add([url = OpenRequest(m_addresses.analytics, picture)](const CanContinue& go) { HttpGetText(url, go); });
}

void CStatistics::DailyCheck(const Context& context, const CanContinue& canContinue) {
    const QString& host = context.addresses.analytics;
    const QString partner = Text(QStringLiteral("partner"));
    const QString fullName = Text(QStringLiteral("fullname"));
    const bool first = context.firstRun == 0;
    // The first run after an update is none after an installation.
    const bool updated = first && Number(Main, "update") != 0;
    if (first && !updated && Number(RunOnce, "InstallRun") == 0)
        HttpGetText(InstallRequest(host, partner, context.client, fullName), canContinue);
    if (!updated) HttpGetText(ActiveRequest(host, partner, context.client, fullName), canContinue);
    if (!canContinue()) return;
    Write(RunOnce, "PreCheckActive", QString::number(context.services.now()));
    Write(Main, "client", context.client);
}

// Reading it sets it, so the answer is 0 but where the time of this start could not be kept.
qint64 CStatistics::DaysSinceLastVisit(const Context& context) {
    const qint64 now = context.services.now();
    const qint64 days = (now - Seconds(Main, "RunTime")) / SecondsPerDay;
    Write(Main, "RunTime", QString::number(now));
    return days;
}

void CStatistics::RunTask(const Context& context, const CanContinue& canContinue) {
    const QString& host = context.addresses.analytics;
    if (!host.isEmpty()) {
        const QString partner = Text(QStringLiteral("partner"));
        const QString time = Text(QStringLiteral("time"));
        HttpGetText(RunRequest(host, partner, context.client, context.screen, DaysSinceLastVisit(context), time),
                    canContinue);
        if (!canContinue()) return;
        if (Number(Main, "update") == 1) {
            HttpGetText(UpdateRequest(host, partner, context.client), canContinue);
            if (canContinue()) Write(Main, "update", QStringLiteral("0"));
        }
    }
    if (canContinue()) ClickReport(context, canContinue);
}

// The clicks are gone once the report is made, whether or not it arrives.
void CStatistics::ClickReport(const Context& context, const CanContinue& canContinue) {
    if (context.addresses.data.isEmpty()) return;
    QSettings registry(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Vantu"),
                       QStringLiteral("Quince"));
    const QString key = QStringLiteral("action");
    const int today = context.services.dayOfMonth();
    if (registry.value(key).toInt() == today) return;
    QFile file(CClickCount::FilePath());
    if (!file.open(QIODevice::ReadOnly)) return;
    file.close();
    registry.setValue(key, today);
    registry.sync();
    HttpJob job;
    job.method = "POST";
    job.url = ClickRequest(context.addresses.data).toStdString();
    job.agent = "QUINCE_PC";
    job.headers = {"Content-Type: application/x-www-form-urlencoded"};
    job.canContinue = canContinue;
    file.remove();
    const QByteArray body = ClickBody(ClickCounts().Take());
    job.body = body.toStdString();
    NoteSent(QStringLiteral("POST"), QString::fromStdString(job.url), QString::fromLocal8Bit(body));
    HttpSend(job);
}

QString HttpGetText(const QString& url, const std::function<bool()>& canContinue) {
    static std::mutex oneAtATime;
    const std::lock_guard<std::mutex> guard(oneAtATime);
    if (canContinue && !canContinue()) return {};
    HttpJob job;
    job.url = url.toStdString();
    job.agent = "SuiSui";
    job.canContinue = canContinue;
    NoteSent(QStringLiteral("GET"), url);
    const HttpAnswer answer = HttpSend(job);
    qCDebug(requests, "%s", job.url.c_str());
    return answer.error == 0 ? QString::fromStdString(answer.body) : QString();
}

void ParseInstallerName() {
    constexpr qsizetype suffix = 4;
    const QString path = Text(QStringLiteral("InstallerName"));
    if (path.isEmpty()) return;
    const QString name = path.section(u'\\', -1);
    Write(Main, "fullname", name.chopped(std::min(suffix, name.size())));
    DeleteProfileKey(Main, QStringLiteral("InstallerName"), ConfigIni());
    const qsizetype mark = name.indexOf(u'_');
    const qsizetype between = name.size() - suffix - mark - 1;
    if (mark < 0 || between < 1) return;
    QString partner = name.mid(mark + 1, between);
    if (partner.startsWith(u'q')) {
        partner.remove(0, 1);
        const qsizetype number = partner.indexOf(QLatin1String("_n"));
        if (number >= 0) Write(Main, "n", partner.mid(number + 2));
        if (number >= 0) partner.truncate(number);
    }
    Write(Main, "partner", partner);
}
