// SPDX-License-Identifier: GPL-3.0-or-later
#include "KillLoop.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include "Parallel.h"

namespace KillLoop {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int PatienceMs = 60000;
constexpr int WholeWrites = 2;

[[noreturn]] void WriteWithoutEnd(const std::function<bool(int)>& write, int ready) {
    // The pool's threads did not come along.
    SetWorkerCount(1);
    for (int round = 0;; ++round) {
        if (!write(round)) ::_exit(1);
        if (round < WholeWrites && ::write(ready, "w", 1) != 1) ::_exit(1);
    }
}

// The writing process, killed at the latest when this goes.
class Writer {
  public:
    explicit Writer(const std::function<bool(int)>& write) {
        int ends[2];
        if (::pipe(ends) != 0) return;
        m_ready = ends[0];
        m_process = ::fork();
        if (m_process == 0) WriteWithoutEnd(write, ends[1]);
        ::close(ends[1]);
    }
    ~Writer() {
        Kill();
        ::close(m_ready);
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    bool WaitForWrite() const {
        pollfd ready{m_ready, POLLIN, 0};
        char byte = 0;
        return m_process > 0 && ::poll(&ready, 1, PatienceMs) == 1 && ::read(m_ready, &byte, 1) == 1;
    }
    // False when it had ended by itself.
    bool Kill() {
        if (m_process <= 0) return false;
        ::kill(m_process, SIGKILL);
        int status = 0;
        ::waitpid(m_process, &status, 0);
        m_process = -1;
        return WIFSIGNALED(status);
    }

  private:
    pid_t m_process = -1;
    int m_ready = -1;
};

}  // namespace

void Run(const Plan& plan, const std::function<bool(int round)>& write, const std::function<void(int kill)>& judge) {
    std::mt19937 random(plan.seed);
    for (int kill = 0; kill < plan.kills; ++kill) {
        Writer writer(write);
        ASSERT_TRUE(writer.WaitForWrite()) << "kill " << kill;
        const auto begin = Clock::now();
        ASSERT_TRUE(writer.WaitForWrite()) << "kill " << kill;
        const std::chrono::duration<double> oneWrite = Clock::now() - begin;
        std::this_thread::sleep_for(oneWrite * std::uniform_real_distribution(0.0, 2.0)(random));
        ASSERT_TRUE(writer.Kill()) << "kill " << kill << ": a write failed";
        judge(kill);
        if (testing::Test::HasFatalFailure()) return;
    }
}

}  // namespace KillLoop
