// SPDX-License-Identifier: GPL-3.0-or-later
#include "Statistics.h"

#include <gmock/gmock.h>

#include <chrono>
#include <QtCore/QSettings>
#include <thread>

#include "ClickCount.h"
#include "FreshHome.h"
#include "IniFile.h"
#include "LoopbackServer.h"
#include "SentReports.h"
#include "Version.h"

using namespace Qt::Literals::StringLiterals;
using Manner = LoopbackServer::Manner;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace {

constexpr qint64 Now = 1'700'000'000;
constexpr qint64 Day = 86400;
const QString Client = u"3ABCDEF"_s;

QSettings Registry() {
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, u"Vantu"_s, u"Quince"_s);
}

}  // namespace

// The program's statistics with a server of the test's own, a clock and a day of its own.
class Statistics : public FreshHome {
  protected:
    static void SetUpTestSuite() {
        static QTemporaryDir settings;
        qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    }
    void SetUp() override {
        FreshHome::SetUp();
        QSettings registry(QSettings::NativeFormat, QSettings::UserScope, u"Vantu"_s, u"Quince"_s);
        registry.clear();
        registry.sync();
        ClickCounts().Clear();
        m_addresses.analytics = m_analytics.Address();
        m_addresses.data = m_data.Address();
        m_services.now = [this] { return m_now; };
        m_services.dayOfMonth = [this] { return m_day; };
        m_services.networkAlive = [this] {
            ++m_networkAsked;
            return m_network;
        };
        m_services.clientId = [this] {
            ++m_clientAsked;
            return Client;
        };
    }
    void TearDown() override {
        ClickCounts().Clear();
        FreshHome::TearDown();
    }

    std::unique_ptr<CStatistics> Start() {
        auto statistics = std::make_unique<CStatistics>(m_addresses, m_services);
        statistics->StartStatistics({1920, 1080});
        return statistics;
    }
    // A run from its beginning to its end, with all its requests.
    void Run() { Start()->Tasks().WaitUntilIdle(); }

    static QString Value(const char* section, const char* key) {
        return GetProfileString(QLatin1String(section), QLatin1String(key), u"none"_s, ConfigIni());
    }
    static void Set(const char* section, const char* key, const QString& value) {
        ASSERT_TRUE(WriteProfileString(QLatin1String(section), QLatin1String(key), value, ConfigIni()));
    }
    static std::string Line(const char* path, const std::string& rest) {
        return std::string("GET ") + path + "?software=QUINCE_PC&version=" + GetVersionText().toStdString() + rest;
    }
    static std::string Active() { return Line("/active.json", "&partner=&client=3ABCDEF&startup=&fullname="); }
    static std::string RunLine(const std::string& time = {}) {
        return Line("/run.json", "&partner=&client=3ABCDEF&os=&resolution=1920*1080&last_visit=0&time=" + time);
    }
    static std::string Update() { return Line("/update.json", "&partner=&client=3ABCDEF"); }

    LoopbackServer m_analytics;
    LoopbackServer m_data;
    Addresses m_addresses;
    StatisticsServices m_services;
    qint64 m_now = Now;
    int m_day = 14;
    bool m_network = true;
    int m_networkAsked = 0;
    int m_clientAsked = 0;
};

// ---- without an address ----

TEST_F(Statistics, WithoutAnAddressNothingIsAskedStartedOrWritten) {
    m_addresses = {};
    Put(u"Resources/Action.dat"_s, "8\0"_ba);
    {
        auto statistics = Start();
        statistics->SendOpen({});
        EXPECT_FALSE(statistics->Tasks().HasThread());
    }
    EXPECT_EQ(m_clientAsked, 0);
    EXPECT_EQ(m_networkAsked, 0);
    EXPECT_FALSE(Has(u"Config.ini"_s));
    EXPECT_FALSE(Has(u"Resources/LastReport.txt"_s));
    EXPECT_TRUE(Has(u"Resources/Action.dat"_s)) << "clicks stay";
    EXPECT_FALSE(Registry().contains(u"action"_s));
}

TEST_F(Statistics, TurnedOffIsAsWithoutAnAddress) {
    AllowStatistics(false);
    Put(u"Resources/Action.dat"_s, "");
    const QByteArray before = Get(u"Config.ini"_s);
    {
        auto statistics = Start();
        statistics->SendOpen({});
        EXPECT_FALSE(statistics->Tasks().HasThread());
    }
    EXPECT_EQ(m_clientAsked, 0);
    EXPECT_EQ(Get(u"Config.ini"_s), before);
    EXPECT_THAT(m_analytics.Lines(), IsEmpty());
    EXPECT_THAT(m_data.Lines(), IsEmpty());
}

TEST_F(Statistics, AnAddressForUpdatesAloneKeepsOnlyThatItRan) {
    m_addresses = {};
    m_addresses.update = u"https://u.example/"_s;
    EXPECT_TRUE(CStatistics(m_addresses, m_services).IsFirstRun());
    EXPECT_EQ(Value("RunOnce", "Run"), u"1");
    EXPECT_EQ(Value("Main", "count"), u"none");
    EXPECT_FALSE(CStatistics(m_addresses, m_services).IsFirstRun());
}

TEST_F(Statistics, WithoutADataAddressTheDayIsNotKeptAndClicksStay) {
    m_addresses.data.clear();
    Put(u"Resources/Action.dat"_s, "");
    ClickCounts().Add(u"8880501"_s);
    Run();
    EXPECT_FALSE(Registry().contains(u"action"_s));
    EXPECT_TRUE(Has(u"Resources/Action.dat"_s));
    EXPECT_THAT(ClickCounts().Counts(), SizeIs(1));
    EXPECT_THAT(m_data.Lines(), IsEmpty());
}

TEST_F(Statistics, WithoutAnAnalyticsAddressOnlyClicksAreSentAndNoIdIsDerived) {
    m_addresses.analytics.clear();
    Put(u"Resources/Action.dat"_s, "");
    Run();
    EXPECT_EQ(m_clientAsked, 0);
    EXPECT_EQ(Value("Main", "client"), u"none");
    EXPECT_THAT(m_data.Lines(), ElementsAre("POST /action.php"));
}

// ---- construction and exit ----

TEST_F(Statistics, StartsAreCountedAndTimed) {
    {
        const CStatistics first(m_addresses, m_services);
        EXPECT_TRUE(first.IsFirstRun());
        EXPECT_EQ(CStatistics::Current(), &first);
    }
    EXPECT_EQ(CStatistics::Current(), nullptr);
    const CStatistics second(m_addresses, m_services);
    EXPECT_FALSE(second.IsFirstRun());
    EXPECT_EQ(Value("Main", "count"), u"2");
    EXPECT_EQ(Value("Main", "RunTime"), QString::number(Now));
    EXPECT_EQ(Value("RunOnce", "Run"), u"1");
}

TEST_F(Statistics, SettingsBeginWithAByteOrderMark) {
    CStatistics(m_addresses, m_services);
    EXPECT_TRUE(Get(u"Config.ini"_s).startsWith("\xFF\xFE"));
}

TEST_F(Statistics, TheSessionsLengthIsKeptAtExit) {
    auto statistics = Start();
    statistics->Tasks().WaitUntilIdle();
    m_now += 61;
    statistics.reset();
    EXPECT_EQ(Value("Main", "time"), u"61");
}

TEST_F(Statistics, WithoutANetworkTheLengthIsTheTimeItselfAndNothingIsSent) {
    m_network = false;
    Put(u"Resources/Action.dat"_s, "");
    Start().reset();
    EXPECT_EQ(Value("Main", "time"), QString::number(Now));
    EXPECT_EQ(Value("Main", "Installdate"), u"none");
    EXPECT_EQ(Value("RunOnce", "PreCheckActive"), u"none");
    EXPECT_THAT(m_analytics.Lines(), IsEmpty());
    EXPECT_THAT(m_data.Lines(), IsEmpty());
    EXPECT_TRUE(Has(u"Resources/Action.dat"_s));
}

// ---- daily check and run task ----

TEST_F(Statistics, AFirstStartInstallsThenIsActiveThenRuns) {
    Run();
    const auto lines = m_analytics.Lines();
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_THAT(lines[0], StartsWith(Line("/install.json", "&partner=&client=3ABCDEF&os=&browser=&homepage=&v=")));
    EXPECT_EQ(lines[1], Active());
    EXPECT_EQ(lines[2], RunLine());
    EXPECT_EQ(Value("Main", "Installdate"), QString::number(Now));
    EXPECT_EQ(Value("RunOnce", "PreCheckActive"), QString::number(Now));
    EXPECT_EQ(Value("Main", "client"), Client);
    for (const auto& request : m_analytics.Requests()) EXPECT_EQ(request.headers.at("user-agent"), "SuiSui");
}

TEST_F(Statistics, RequestsCarryNothingThatWasNotAskedFor) {
    Run();
    for (const auto& request : m_analytics.Requests()) {
        std::vector<std::string> names;
        for (const auto& [name, value] : request.headers) names.push_back(name);
        EXPECT_THAT(names, ElementsAre("host", "user-agent"));
        EXPECT_TRUE(request.body.empty());
    }
}

TEST_F(Statistics, ASecondStartOnTheSameDayOnlyRuns) {
    Run();
    Run();
    const auto lines = m_analytics.Lines();
    ASSERT_THAT(lines, SizeIs(4));
    EXPECT_EQ(lines[3], RunLine("0"));
}

TEST_F(Statistics, ADayLaterItIsActiveAgainAndDoesNotInstall) {
    Run();
    m_now += Day;
    Run();
    const auto lines = m_analytics.Lines();
    ASSERT_THAT(lines, SizeIs(5));
    EXPECT_EQ(lines[3], Active());
    EXPECT_EQ(Value("RunOnce", "PreCheckActive"), QString::number(Now + Day));
}

TEST_F(Statistics, ACheckOfTheFutureByADayCountsToo) {
    Set("RunOnce", "Run", u"1"_s);
    Set("RunOnce", "PreCheckActive", QString::number(Now + Day));
    Run();
    EXPECT_THAT(m_analytics.Lines(), ElementsAre(Active(), RunLine()));
}

TEST_F(Statistics, ACheckOfLessThanADayAgoDoesNot) {
    Set("RunOnce", "Run", u"1"_s);
    for (const qint64 before : {Now - Day + 1, Now + Day - 1}) {
        Set("RunOnce", "PreCheckActive", QString::number(before));
        Run();
        EXPECT_EQ(Value("RunOnce", "PreCheckActive"), QString::number(before));
    }
    EXPECT_THAT(m_analytics.Lines(), SizeIs(2));
}

TEST_F(Statistics, AFirstStartAfterAnUpdateIsNoInstallation) {
    Set("Main", "update", u"1"_s);
    Run();
    EXPECT_THAT(m_analytics.Lines(), ElementsAre(RunLine(), Update()));
    EXPECT_EQ(Value("RunOnce", "PreCheckActive"), QString::number(Now));
    EXPECT_EQ(Value("Main", "client"), Client);
    EXPECT_EQ(Value("Main", "update"), u"0");
}

TEST_F(Statistics, AnInstallerThatReportedItselfLeavesOnlyActive) {
    Set("RunOnce", "InstallRun", u"1"_s);
    Run();
    EXPECT_THAT(m_analytics.Lines(), ElementsAre(Active(), RunLine()));
}

TEST_F(Statistics, FailedRequestsAreNotTriedAgain) {
    m_analytics.Reply(Manner::CloseAtOnce);
    Run();
    EXPECT_EQ(Value("RunOnce", "PreCheckActive"), QString::number(Now));
    m_analytics.Reply(Manner::Answer);
    Run();
    EXPECT_THAT(m_analytics.Lines(), ElementsAre(RunLine("0")));
}

TEST_F(Statistics, ARedirectionIsNotFollowed) {
    m_analytics.Reply(Manner::Redirect, m_data.Address().toStdString() + "/elsewhere");
    Run();
    EXPECT_THAT(m_analytics.Lines(), SizeIs(3));
    EXPECT_THAT(m_data.Lines(), IsEmpty());
}

// ---- opened pictures ----

TEST_F(Statistics, TwoPicturesInARowAreTwoRequests) {
    Set("RunOnce", "PreCheckActive", QString::number(Now));
    auto statistics = Start();
    OpenFacts facts;
    facts.width = 900;
    facts.height = 1200;
    facts.format = u"png"_s;
    facts.size = 12;
    statistics->SendOpen(facts);
    facts.name = 1;
    statistics->SendOpen(facts);
    statistics->Tasks().WaitUntilIdle();
    const std::string open = "&width=900&height=1200&format=png&size=12&resize=3&position=0&name=";
    EXPECT_THAT(m_analytics.Lines(),
                ElementsAre(RunLine(), Line("/open.json", open + "0"), Line("/open.json", open + "1")));
}

// ---- clicks ----

TEST_F(Statistics, ClicksOfTheDayGoOutOnceAndAreGone) {
    ClickCounts().Add(u"8880501"_s, 2);
    ClickCounts().Add(u"88802"_s);
    Put(u"Resources/Action.dat"_s, "");
    Run();
    ASSERT_THAT(m_data.Requests(), SizeIs(1));
    const LoopbackServer::Request report = m_data.Requests().front();
    EXPECT_EQ(report.line, "POST /action.php HTTP/1.1");
    EXPECT_EQ(report.headers.at("content-type"), "application/x-www-form-urlencoded");
    EXPECT_EQ(report.headers.at("user-agent"), "QUINCE_PC");
    EXPECT_EQ(report.body,
              "software=QUINCE_PC&version=" + GetVersionText().toStdString() + "&content=88802!1|8880501!2|");
    EXPECT_FALSE(Has(u"Resources/Action.dat"_s));
    EXPECT_THAT(ClickCounts().Counts(), IsEmpty());
    EXPECT_EQ(Registry().value(u"action"_s).toInt(), 14);
}

TEST_F(Statistics, TheSameDayNumberReportsNothing) {
    Put(u"Resources/Action.dat"_s, "");
    Run();
    Put(u"Resources/Action.dat"_s, "");
    Run();
    EXPECT_THAT(m_data.Lines(), SizeIs(1));
    EXPECT_TRUE(Has(u"Resources/Action.dat"_s));
    m_day = 15;
    Run();
    EXPECT_THAT(m_data.Lines(), SizeIs(2));
}

TEST_F(Statistics, AFreshInstallationHasNoClicksToReportAndKeepsNoDay) {
    Run();
    EXPECT_THAT(m_data.Lines(), IsEmpty());
    EXPECT_FALSE(Registry().contains(u"action"_s));
}

TEST_F(Statistics, TheClicksOfAFailedReportAreGone) {
    m_data.Reply(Manner::CloseAtOnce);
    ClickCounts().Add(u"8880501"_s);
    Put(u"Resources/Action.dat"_s, "");
    Run();
    EXPECT_THAT(ClickCounts().Counts(), IsEmpty());
    EXPECT_FALSE(Has(u"Resources/Action.dat"_s));
}

// ---- exit while a server hangs ----

TEST_F(Statistics, AnEndWhileAServerHangsGivesUpAndKeepsTheCheckForTheNextStart) {
    m_analytics.Reply(Manner::Hang);
    auto statistics = Start();
    ASSERT_TRUE(m_analytics.WaitForRequests(1));
    statistics->SendOpen({});
    statistics.reset();
    EXPECT_THAT(m_analytics.Lines(), SizeIs(1)) << "what waited was dropped";
    EXPECT_EQ(Value("RunOnce", "PreCheckActive"), u"none");
    EXPECT_EQ(Value("Main", "time"), u"0");
}

TEST_F(Statistics, ClicksMayBeCountedWhileAReportIsMade) {
    Put(u"Resources/Action.dat"_s, "");
    std::atomic<bool> stop{false};
    std::thread clicker([&] {
        while (!stop) CountClick(u"8880501"_s);
    });
    Run();
    stop = true;
    clicker.join();
    EXPECT_THAT(m_data.Lines(), SizeIs(1));
}

// ---- the user's view ----

TEST_F(Statistics, TheLastReportHoldsWhatWasSentWordForWord) {
    ClickCounts().Add(u"88802"_s);
    Put(u"Resources/Action.dat"_s, "");
    Run();
    const QString report = LastSent();
    EXPECT_TRUE(report.contains(u"GET "_s + m_addresses.analytics + u"/run.json?software=QUINCE_PC"_s));
    EXPECT_TRUE(report.contains(u"POST "_s + m_addresses.data + u"/action.php\nsoftware=QUINCE_PC"_s));
    EXPECT_TRUE(report.endsWith(u"&content=88802!1|"_s));
    m_day = 14;
    Run();
    EXPECT_FALSE(LastSent().contains(u"/install.json"_s)) << "a report is that of one run";
}

// ---- the installer's name ----

class InstallerName : public FreshHome {
  protected:
    static void Parse(const QString& name) {
        ASSERT_TRUE(WriteProfileString(u"Main"_s, u"InstallerName"_s, name, ConfigIni()));
        ParseInstallerName();
    }
    static QString Value(const char* key) {
        return GetProfileString(u"Main"_s, QLatin1String(key), u"none"_s, ConfigIni());
    }
};

TEST_F(InstallerName, IsTakenApartOnceAndRemoved) {
    Parse(u"C:\\Downloads\\quince_qweb_n12.exe"_s);
    EXPECT_EQ(Value("fullname"), u"quince_qweb_n12");
    EXPECT_EQ(Value("partner"), u"web");
    EXPECT_EQ(Value("n"), u"12");
    EXPECT_EQ(Value("InstallerName"), u"none");
}

TEST_F(InstallerName, WithoutANumberTheWholeIsThePartner) {
    Parse(u"quince_qweb.exe"_s);
    EXPECT_EQ(Value("partner"), u"web");
    EXPECT_EQ(Value("n"), u"none");
}

TEST_F(InstallerName, AnotherMarkMakesAllBehindItThePartner) {
    Parse(u"quince_web_n5.exe"_s);
    EXPECT_EQ(Value("partner"), u"web_n5");
    EXPECT_EQ(Value("n"), u"none");
}

TEST_F(InstallerName, WithoutAMarkOrAnythingBehindItThereIsNoPartner) {
    for (const QString& name : {u"quince.exe"_s, u"quince_.exe"_s}) {
        Parse(name);
        EXPECT_EQ(Value("partner"), u"none") << name.toStdString();
        EXPECT_EQ(Value("fullname"), name.chopped(4));
    }
}

TEST_F(InstallerName, MissingOrTooShortHarmsNothing) {
    ParseInstallerName();
    EXPECT_FALSE(Has(u"Config.ini"_s));
    Parse(u"a_b"_s);
    EXPECT_EQ(Value("fullname"), QString());
    EXPECT_EQ(Value("partner"), u"none");
}
