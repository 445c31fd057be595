// SPDX-License-Identifier: GPL-3.0-or-later
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <random>
#include <thread>

#include "PC_File.h"
#include "SavePlan.h"
#include "TestPictures.h"

// A save is killed at any moment: what lies under the target's name is a whole file, the old one or the new one.
//
// The saves run in another process, this program itself started on the test that is disabled by name below.
namespace {

constexpr char TargetVariable[] = "QUINCE_KILLED_SAVE_TARGET";
constexpr char FormatVariable[] = "QUINCE_KILLED_SAVE_FORMAT";
constexpr char ReadyVariable[] = "QUINCE_KILLED_SAVE_READY";
constexpr int Quality = 90;
constexpr int Kills = 120;
constexpr int LongestWaitMilliseconds = 60;

std::array<Bitmap, 2> Versions() {
    return {TestPictures::Noise(900, 700, 1), TestPictures::Noise(900, 700, 2)};
}

bool Save(const QString& path, const Bitmap& picture, int format) {
    PC_File file;
    return file.OnSaveQuick(path.toStdWString().c_str(), picture, format, Quality) != 0;
}

// Null for a file that is damaged or cut.
Bitmap Load(const QString& path) {
    PC_File file;
    return file.OnLoadImage(path.toStdWString().c_str(), nullptr, 0, 100, nullptr);
}

// What a whole file of each version reads as, in each type. Pixels, not bytes: the colour profile in a file holds the
// second at which its process made it.
std::array<std::array<Bitmap, 2>, SaveTypes.size()> WholeFiles(const QString& path) {
    const auto versions = Versions();
    std::array<std::array<Bitmap, 2>, SaveTypes.size()> files;
    for (std::size_t type = 0; type < files.size(); ++type) {
        for (std::size_t i = 0; i < versions.size(); ++i) {
            EXPECT_TRUE(Save(path, versions[i], SaveTypes[type].format));
            files[type][i] = Load(path);
            EXPECT_FALSE(files[type][i].IsNull());
        }
    }
    return files;
}

// The other process, which saves without an end until it is killed.
class Saver {
  public:
    Saver(const QString& target, int format, const QString& temporary) {
        int ends[2];
        if (::pipe(ends) != 0) return;
        qputenv(TargetVariable, target.toUtf8());
        qputenv(FormatVariable, QByteArray::number(format));
        qputenv(ReadyVariable, QByteArray::number(ends[1]));
        // What it leaves behind when it is killed goes with this test's own folder.
        const QByteArray formerly = qgetenv("TMPDIR");
        qputenv("TMPDIR", temporary.toUtf8());
        const char* arguments[] = {"saver", "--gtest_also_run_disabled_tests",
                                   "--gtest_filter=KilledSave.DISABLED_SavesUntilItIsKilled", nullptr};
        if (::posix_spawn(&m_process, "/proc/self/exe", nullptr, nullptr, const_cast<char**>(arguments), environ) != 0)
            m_process = -1;
        if (formerly.isNull())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", formerly);
        ::close(ends[1]);
        m_ready = ends[0];
    }
    ~Saver() {
        Kill();
        ::close(m_ready);
    }
    // True when the first save is over and the next one has begun.
    bool WaitUntilSaving() const {
        pollfd ready{m_ready, POLLIN, 0};
        char byte = 0;
        return m_process > 0 && ::poll(&ready, 1, 30000) == 1 && ::read(m_ready, &byte, 1) == 1;
    }
    void Kill() {
        if (m_process <= 0) return;
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
        m_process = -1;
    }

  private:
    pid_t m_process = -1;
    int m_ready = -1;
};

}  // namespace

TEST(KilledSave, DISABLED_SavesUntilItIsKilled) {
    ASSERT_TRUE(qEnvironmentVariableIsSet(TargetVariable)) << "it is started by the test below";
    const QString target = qEnvironmentVariable(TargetVariable);
    const int format = qEnvironmentVariableIntValue(FormatVariable);
    const int ready = qEnvironmentVariableIntValue(ReadyVariable);
    const auto versions = Versions();
    for (int i = 0;; ++i) {
        if (!Save(target, versions[i % 2], format)) ::_exit(1);
        if (i == 0 && ::write(ready, "s", 1) != 1) ::_exit(1);
    }
}

TEST(KilledSave, LeavesTheOldOrTheNewFileWhole) {
    QTemporaryDir home;
    ASSERT_TRUE(home.isValid() && QDir(home.path()).mkdir(QStringLiteral("saver")) &&
                QDir(home.path()).mkdir(QStringLiteral("target")));
    const auto whole = WholeFiles(home.filePath(QStringLiteral("reference")));
    std::mt19937 random(20);
    std::array<int, 2> seen{};
    int interrupted = 0;
    for (int kill = 0; kill < Kills; ++kill) {
        const std::size_t type = static_cast<std::size_t>(kill) % SaveTypes.size();
        const int format = SaveTypes[type].format;
        const QDir folder(home.filePath(QStringLiteral("target")));
        const QString target = folder.filePath(QStringLiteral("picture"));
        {
            Saver saver(target, format, home.filePath(QStringLiteral("saver")));
            ASSERT_TRUE(saver.WaitUntilSaving());
            std::this_thread::sleep_for(std::chrono::microseconds(random() % (LongestWaitMilliseconds * 1000)));
            saver.Kill();
        }
        const Bitmap found = Load(target);
        std::array<bool, 2> same{};
        for (std::size_t i = 0; i < same.size(); ++i) {
            same[i] = found == whole[type][i];
            seen[i] += same[i];
        }
        ASSERT_NE(same[0], same[1]) << "kill " << kill << ", format " << format << (found ? "" : ": cannot be read");
        // A temporary file tells that the kill came in the middle of a save.
        const QStringList left = folder.entryList(QDir::Files | QDir::Hidden);
        interrupted += left.size() > 1;
        for (const QString& name : left) QFile::remove(folder.filePath(name));
    }
    EXPECT_GT(interrupted, 0) << "some kills must come in the middle of a save";
    EXPECT_GT(seen[0], 0);
    EXPECT_GT(seen[1], 0);
    RecordProperty("interrupted", interrupted);
}
