// SPDX-License-Identifier: GPL-3.0-or-later
#include "UpdateGate.h"

#include <QtCore/QDateTime>

#include "FreshHome.h"
#include "IniFile.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 Now = 1'700'000'000;
constexpr qint64 Day = 86400;

}  // namespace

// A gate with a clock, a network and a starter of the test's own.
class UpdateGate : public FreshHome {
  protected:
    UpdateServices Services() {
        return {[this] { return m_now; }, [this] { return m_network; },
                [this](const QString& path, const QStringList& arguments) {
                    m_started = path + u' ' + arguments.join(u' ');
                    m_writtenBefore = Before();
                    return m_starts;
                }};
    }
    bool Run() { return RunUpdateGate(Services()); }
    void Check(bool firstRun, const QString& address = u"https://example.org/update"_s) {
        RunUpdateCheck(Services(), address, firstRun);
    }
    static void Arm(const QString& value) { WriteProfileString(u"Main"_s, u"newversion"_s, value, ConfigIni()); }
    static void SetBefore(qint64 seconds) {
        WriteProfileString(u"RunOnce"_s, u"NewVersionCheckActive"_s, QString::number(seconds), ConfigIni());
    }
    static QString Before() {
        return GetProfileString(u"RunOnce"_s, u"NewVersionCheckActive"_s, u"none"_s, ConfigIni());
    }
    static QString Logged() { return QString::fromUtf8(Get(u"dbg.log"_s)); }

    qint64 m_now = Now;
    bool m_network = true;
    bool m_starts = true;
    QString m_started;
    QString m_writtenBefore;
};

TEST_F(UpdateGate, NewVersionNeverActivatedStartsTheUpdater) {
    Arm(u"1"_s);
    EXPECT_TRUE(Run());
    EXPECT_EQ(m_started, AppPath(u"Update.exe"_s) + u" auto"_s);
    EXPECT_TRUE(Logged().endsWith(u"]============[QUINCE]Updating=================\r\n"_s));
}

TEST_F(UpdateGate, LastActivationOfZeroIsLongAgo) {
    Arm(u"1"_s);
    SetBefore(0);
    EXPECT_TRUE(Run());
}

TEST_F(UpdateGate, TimeIsWrittenBeforeTheUpdaterStarts) {
    Arm(u"1"_s);
    EXPECT_TRUE(Run());
    EXPECT_EQ(m_writtenBefore, QString::number(Now));
    m_started.clear();
    EXPECT_FALSE(Run()) << "once a day";
    EXPECT_EQ(m_started, QString());
}

TEST_F(UpdateGate, AnythingButOneSkipsTheGate) {
    for (const QString& value : {u"0"_s, u"2"_s, u"-1"_s, QString(), u"yes"_s}) {
        Arm(value);
        EXPECT_FALSE(Run()) << value.toStdString();
    }
    EXPECT_EQ(m_started, QString());
    EXPECT_EQ(Before(), u"none"_s);
}

TEST_F(UpdateGate, MissingSettingsSkipTheGate) {
    EXPECT_FALSE(Run());
    EXPECT_EQ(Logged(), QString());
}

TEST_F(UpdateGate, LessThanADaySkipsTheGate) {
    Arm(u"1"_s);
    for (const qint64 before : {Now, Now - Day + 1, Now + Day - 1}) {
        SetBefore(before);
        EXPECT_FALSE(Run()) << before;
    }
    SetBefore(Now - Day);
    EXPECT_TRUE(Run());
}

TEST_F(UpdateGate, ClockSetBackByMoreThanADayStartsTheUpdater) {
    Arm(u"1"_s);
    SetBefore(Now + Day);
    EXPECT_TRUE(Run());
}

TEST_F(UpdateGate, TimesBeyondThirtyOneBitsAreStillTimes) {
    Arm(u"1"_s);
    m_now = 2'200'000'000;
    SetBefore(m_now - 100);
    EXPECT_FALSE(Run());
    SetBefore(m_now - 2 * Day);
    EXPECT_TRUE(Run());
}

TEST_F(UpdateGate, WithoutNetworkNothingIsStartedLoggedOrWritten) {
    Arm(u"1"_s);
    m_network = false;
    EXPECT_FALSE(Run());
    EXPECT_EQ(m_started, QString());
    EXPECT_EQ(Logged(), QString());
    EXPECT_EQ(Before(), u"none"_s);
}

TEST_F(UpdateGate, UpdaterThatDoesNotStartMeansANormalStartWithoutALineAboutUpdating) {
    Arm(u"1"_s);
    m_starts = false;
    EXPECT_FALSE(Run());
    EXPECT_FALSE(Logged().contains(u"Updating"_s));
}

TEST_F(UpdateGate, SpanAndBothLocalTimesAreLogged) {
    Arm(u"1"_s);
    const qint64 before = Now - 3 * Day - 5 * 3600 - 59;
    SetBefore(before);
    ASSERT_TRUE(Run());
    const QDateTime current = QDateTime::fromSecsSinceEpoch(Now);
    const QDateTime previous = QDateTime::fromSecsSinceEpoch(before);
    const QString line = u"[QUINCE][VNSS][Line:142]span:3, 5, tmCur:%1,%2, tmPre:%3,%4\r\n"_s.arg(current.time().hour())
                             .arg(current.date().day())
                             .arg(previous.time().hour())
                             .arg(previous.date().day());
    EXPECT_TRUE(Logged().contains(line)) << Logged().toStdString();
}

TEST_F(UpdateGate, ARepeatRunWithANetworkLooksForANewVersion) {
    Check(false);
    EXPECT_EQ(m_started, AppPath(u"Update.exe"_s) + u" check"_s);
    EXPECT_TRUE(Logged().endsWith(u"]============[QUINCE][FrameWnd][Line:100]InitWindow=================\r\n"_s));
}

TEST_F(UpdateGate, AFirstRunAndARunWithoutANetworkLookForNothing) {
    Check(true);
    m_network = false;
    Check(false);
    EXPECT_TRUE(m_started.isEmpty());
    EXPECT_FALSE(Logged().contains(u"InitWindow"_s));
}

TEST_F(UpdateGate, WithoutAnAddressNothingIsLookedForAndTheNetworkIsNotAskedFor) {
    UpdateServices services = Services();
    services.networkAlive = [] {
        ADD_FAILURE();
        return true;
    };
    RunUpdateCheck(services, QString(), false);
    EXPECT_TRUE(m_started.isEmpty());
}

TEST_F(UpdateGate, ACheckThatCannotStartIsIgnored) {
    m_starts = false;
    Check(false);
    EXPECT_FALSE(m_started.isEmpty());
}
