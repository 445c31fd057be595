// SPDX-License-Identifier: GPL-3.0-or-later
#include "SingleInstance.h"

#include <signal.h>
#include <unistd.h>

#include <memory>
#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <vector>

#include "FreshHome.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// Long enough for a loaded machine to answer in, and what the silent ones are waited for.
constexpr int Patience = 20000;
constexpr int Silence = 400;
// Shorter than the helper is busy or ending, and long enough for its answer.
constexpr int LongSilence = 2000;

// One process of the helper program.
class Instance {
  public:
    explicit Instance(const QString& mode, int silence = Patience) {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QCoreApplication::applicationDirPath() + u"/instance_helper"_s,
                        {mode, QString::number(silence)});
        m_process.waitForStarted();
    }
    ~Instance() {
        m_process.kill();
        m_process.waitForFinished();
    }
    // The next line that it says; empty when it says none in time.
    QByteArray Next() {
        while (!m_process.canReadLine())
            if (!m_process.waitForReadyRead(Patience)) return {};
        return m_process.readLine().trimmed();
    }
    void Kill() {
        m_process.kill();
        m_process.waitForFinished();
    }
    void Stop() { ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP); }
    bool Ended() { return m_process.state() == QProcess::NotRunning || m_process.waitForFinished(Patience); }
    bool Running() {
        m_process.waitForFinished(50);
        return m_process.state() == QProcess::Running;
    }
    pid_t Id() const { return static_cast<pid_t>(m_process.processId()); }

  private:
    QProcess m_process;
};

}  // namespace

class SingleInstanceProcesses : public FreshHome {};

TEST_F(SingleInstanceProcesses, FirstOneGoesOn) {
    Instance only(u"serve"_s);
    EXPECT_EQ(only.Next(), "first");
    EXPECT_TRUE(only.Running());
}

TEST_F(SingleInstanceProcesses, SecondOneRaisesTheFirstAndQuits) {
    Instance first(u"serve"_s);
    ASSERT_EQ(first.Next(), "first");
    Instance second(u"serve"_s);
    EXPECT_EQ(second.Next(), "raised");
    EXPECT_TRUE(second.Ended());
    EXPECT_EQ(first.Next(), "to front");
    EXPECT_TRUE(first.Running());
}

TEST_F(SingleInstanceProcesses, OneThatAnswersBeforeItHasAWindowIsRaisedWhenItHasOne) {
    Instance first(u"late"_s);
    ASSERT_EQ(first.Next(), "first");
    Instance second(u"serve"_s);
    EXPECT_EQ(second.Next(), "raised");
    EXPECT_EQ(first.Next(), "to front");
}

TEST_F(SingleInstanceProcesses, LockOfADeadProcessIsFree) {
    Instance first(u"serve"_s);
    ASSERT_EQ(first.Next(), "first");
    first.Kill();
    Instance second(u"serve"_s);
    EXPECT_EQ(second.Next(), "first");
}

TEST_F(SingleInstanceProcesses, BusyHolderIsNeverEndedAndComesToTheFrontWhenItIsFree) {
    Instance first(u"busy"_s);
    ASSERT_EQ(first.Next(), "first");
    ASSERT_EQ(first.Next(), "busy");
    Instance second(u"serve"_s, LongSilence);
    EXPECT_EQ(second.Next(), "raised") << "it answers though its main thread does not";
    Instance third(u"serve"_s, LongSilence);
    EXPECT_EQ(third.Next(), "raised");
    EXPECT_TRUE(first.Running());
    EXPECT_EQ(first.Next(), "free") << "nothing is raised before";
    EXPECT_EQ(first.Next(), "to front");
}

TEST_F(SingleInstanceProcesses, HolderThatIsEndingIsWaitedForAndLeavesItsPlace) {
    Instance first(u"ending"_s);
    ASSERT_EQ(first.Next(), "first");
    ASSERT_EQ(first.Next(), "ending");
    Instance second(u"serve"_s);
    EXPECT_EQ(second.Next(), "first");
    EXPECT_EQ(first.Next(), "free") << "it came to its end by itself";
}

TEST_F(SingleInstanceProcesses, HolderThatTakesTooLongToEndIsNotEnded) {
    Instance first(u"ending"_s);
    ASSERT_EQ(first.Next(), "first");
    ASSERT_EQ(first.Next(), "ending");
    Instance second(u"serve"_s, LongSilence);
    EXPECT_EQ(second.Next(), "unreachable");
    EXPECT_EQ(first.Next(), "free");
}

TEST_F(SingleInstanceProcesses, SilentHolderIsEndedAndReplaced) {
    Instance first(u"serve"_s);
    ASSERT_EQ(first.Next(), "first");
    first.Stop();
    QElapsedTimer timer;
    timer.start();
    Instance second(u"serve"_s, Silence);
    EXPECT_EQ(second.Next(), "replaced");
    EXPECT_GE(timer.elapsed(), Silence);
    EXPECT_TRUE(first.Ended());
    Instance third(u"serve"_s);
    EXPECT_EQ(third.Next(), "raised") << "the new holder answers";
}

TEST_F(SingleInstanceProcesses, OfSeveralThatWaitForASilentHolderOneTakesItsPlaceAndIsRaisedByTheOthers) {
    Instance silent(u"serve"_s);
    ASSERT_EQ(silent.Next(), "first");
    silent.Stop();
    std::vector<std::unique_ptr<Instance>> waiting;
    for (int i = 0; i < 4; ++i) waiting.push_back(std::make_unique<Instance>(u"serve"_s, 1500));
    // The one that ends the holder need not be the one that is quickest to take the lock.
    int wentOn = 0;
    int raised = 0;
    for (const auto& instance : waiting) {
        const QByteArray entry = instance->Next();
        wentOn += entry == "replaced" || entry == "first";
        raised += entry == "raised";
    }
    EXPECT_EQ(wentOn, 1);
    EXPECT_EQ(raised, 3);
}

TEST_F(SingleInstanceProcesses, HolderThatDiesWhileItIsWaitedForGivesItsPlace) {
    Instance first(u"serve"_s);
    ASSERT_EQ(first.Next(), "first");
    first.Stop();
    Instance second(u"serve"_s, Patience);
    EXPECT_TRUE(second.Running());
    first.Kill();
    EXPECT_EQ(second.Next(), "first");
}

TEST_F(SingleInstanceProcesses, AnotherDataFolderIsAnotherProgram) {
    Instance first(u"serve"_s);
    ASSERT_EQ(first.Next(), "first");
    QTemporaryDir other;
    const QByteArray home = qgetenv("QUINCE_HOME");
    qputenv("QUINCE_HOME", other.path().toUtf8());
    Instance second(u"serve"_s);
    qputenv("QUINCE_HOME", home);
    EXPECT_EQ(second.Next(), "first");
}

TEST_F(SingleInstanceProcesses, DeepDataFolderIsServedToo) {
    const QString deep = AppPath(QString(40, u'd') + u"/"_s + QString(200, u'e') + u"/"_s + QString(200, u'f'));
    ASSERT_TRUE(QDir().mkpath(deep));
    qputenv("QUINCE_HOME", deep.toUtf8());
    Instance first(u"serve"_s);
    ASSERT_EQ(first.Next(), "first");
    Instance second(u"serve"_s);
    EXPECT_EQ(second.Next(), "raised");
}

TEST_F(SingleInstanceProcesses, MissingDataFolderIsMade) {
    qputenv("QUINCE_HOME", AppPath(u"not/yet"_s).toUtf8());
    Instance first(u"serve"_s);
    EXPECT_EQ(first.Next(), "first");
}

TEST_F(SingleInstanceProcesses, LockThatCannotBeMadeFails) {
    Put(u"file"_s, "in the way");
    qputenv("QUINCE_HOME", AppPath(u"file"_s).toUtf8());
    Instance first(u"serve"_s);
    EXPECT_EQ(first.Next(), "failed");
    EXPECT_TRUE(first.Ended());
}

TEST_F(SingleInstanceProcesses, OnlyTheHolderIsEverEnded) {
    Instance holder(u"serve"_s);
    ASSERT_EQ(holder.Next(), "first");
    QTemporaryDir other;
    qputenv("QUINCE_HOME", other.path().toUtf8());
    Instance bystander(u"serve"_s);
    ASSERT_EQ(bystander.Next(), "first");
    // A lock that nobody holds, and one that another process holds.
    InstanceLock lock(other.filePath(u"free.lock"_s));
    EXPECT_EQ(lock.Holder(), 0);
    EXPECT_FALSE(lock.EndHolder(holder.Id(), std::chrono::milliseconds(100)));
    EXPECT_FALSE(lock.EndHolder(::getpid(), std::chrono::milliseconds(100)));
    EXPECT_FALSE(lock.EndHolder(0, std::chrono::milliseconds(100)));
    EXPECT_TRUE(holder.Running());
    EXPECT_TRUE(bystander.Running());
}
