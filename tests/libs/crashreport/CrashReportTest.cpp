// SPDX-License-Identifier: GPL-3.0-or-later
#include "CrashReport.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "TestHome.h"

namespace fs = std::filesystem;

class CrashReports : public testing::Test {
  protected:
    void SetUp() override {
        folder = fs::path(TestHome::Path().toStdString()) / "crashes";
        fs::remove_all(folder);
        fs::create_directories(folder);
    }

    // Runs the body in a child whose standard error is closed; the signal that ended it, 0 when none did.
    int EndOfChild(const std::function<void()>& body) const {
        const pid_t child = ::fork();
        if (child == 0) {
            const rlimit none = {0, 0};
            ::setrlimit(RLIMIT_CORE, &none);
            ::close(STDERR_FILENO);
            body();
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

    std::string Report() const {
        for (const auto& entry : fs::directory_iterator(folder)) {
            std::ifstream in(entry.path());
            return {std::istreambuf_iterator<char>(in), {}};
        }
        return {};
    }
    int Count() const { return static_cast<int>(std::distance(fs::directory_iterator(folder), {})); }

    fs::path folder;
};

TEST_F(CrashReports, EveryCaughtSignalLeavesAReportAndEndsTheProgramAsBefore) {
    for (const int signal : {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS}) {
        SetUp();
        EXPECT_EQ(EndOfChild([&] {
                      Install("1.2.3.4", folder.c_str());
                      ::raise(signal);
                  }),
                  signal);
        ASSERT_EQ(Count(), 1) << signal;
        EXPECT_NE(Report().find("version 1.2.3.4\n"), std::string::npos);
        EXPECT_NE(Report().find("SIG"), std::string::npos);
        EXPECT_NE(Report().find("test_crashreport"), std::string::npos) << "the frames name the program";
    }
}

TEST_F(CrashReports, SwitchedOffNothingIsWritten) {
    EXPECT_EQ(EndOfChild([&] {
                  Install("1", folder.c_str());
                  TrySwitch(0);
                  ::raise(SIGSEGV);
              }),
              SIGSEGV);
    EXPECT_EQ(Count(), 0);
    EXPECT_EQ(EndOfChild([&] {
                  Install("1", folder.c_str());
                  TrySwitch(0);
                  TrySwitch(1);
                  ::raise(SIGSEGV);
              }),
              SIGSEGV);
    EXPECT_EQ(Count(), 1);
}

TEST_F(CrashReports, SwitchBeforeInstallDoesNothing) {
    EXPECT_EQ(EndOfChild([&] {
                  TrySwitch(1);
                  ::raise(SIGABRT);
              }),
              SIGABRT);
    EXPECT_EQ(Count(), 0);
}

TEST_F(CrashReports, AMissingFolderOrNoneStillEndsBySignal) {
    EXPECT_EQ(EndOfChild([&] {
                  Install("1", (folder / "none").c_str());
                  ::raise(SIGSEGV);
              }),
              SIGSEGV);
    EXPECT_EQ(EndOfChild([&] {
                  Install("1");
                  ::raise(SIGSEGV);
              }),
              SIGSEGV);
    EXPECT_EQ(EndOfChild([&] {
                  Install(nullptr, nullptr);
                  ::raise(SIGSEGV);
              }),
              SIGSEGV);
    EXPECT_EQ(Count(), 0);
}

TEST_F(CrashReports, AVersionLongerThanItsRoomIsCut) {
    EXPECT_EQ(EndOfChild([&] {
                  std::string longVersion;
                  for (int i = 0; i < 5000; ++i) longVersion += '9';
                  Install(longVersion.c_str(), folder.c_str());
                  ::raise(SIGSEGV);
              }),
              SIGSEGV);
    const std::string report = Report();
    EXPECT_EQ(report.find('\n'), std::string("version ").size() + 255) << report;
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
namespace {

// Goes down until the stack ends; the way back, which is never taken, keeps it a real recursion.
__attribute__((noinline)) int Deeper(volatile char* above) {
    volatile char room[4096];
    room[0] = above ? above[0] : 0;
    return room[0] == 1 ? 0 : Deeper(room) + room[0];
}

}  // namespace

TEST_F(CrashReports, AnOverflownStackIsReported) {
    EXPECT_EQ(EndOfChild([&] {
                  Install("1", folder.c_str());
                  Deeper(nullptr);
              }),
              SIGSEGV);
    EXPECT_EQ(Count(), 1);
}
#endif
