// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunTask.h"

#include <atomic>
#include <chrono>
#include <exception>
#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QObject>
#include <thread>
#include <utility>

#include "CShowProgress.h"
#include "Messages.h"

namespace {

// The sink of the running task; null when none runs.
std::atomic<CShowProgress*> g_running{nullptr};

ProgressWindowFactory& Factory() {
    static ProgressWindowFactory factory;
    return factory;
}

// One run of a task, on the main thread's stack.
class Task {
  public:
    Task(CShowProgress& progress, const std::function<void(CObjProgress&)>& work) : m_progress(progress), m_work(work) {
        g_running = &progress;
    }
    ~Task() { g_running = nullptr; }

    void Run() {
        ProgressWindow& window = m_progress.Window();
        m_progress.Reset();
        m_worker = std::thread([this] { OnWorker(); });
        window.RunModal();
        m_modalLoopLeft = true;
        while (!m_joined)
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
        window.Hide();
        if (m_failure) std::rethrow_exception(m_failure);
    }

  private:
    void OnWorker() {
        // The second flag is for a window that never came up.
        while (!m_progress.Window().IsReady() && !m_modalLoopLeft)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        m_progress.SetStepText(L"ids_progress_1");
        try {
            m_work(m_progress);
        } catch (...) {
            m_failure = std::current_exception();
        }
        PostToMain(&m_guard, [this] { OnOver(); });
    }

    // The worker has nothing left to do but to end, so the join does not wait.
    void OnOver() {
        m_worker.join();
        m_joined = true;
        if (m_progress.Window().IsReady()) m_progress.Window().CloseModal();
    }

    CShowProgress& m_progress;
    const std::function<void(CObjProgress&)>& m_work;
    QObject m_guard;
    std::thread m_worker;
    std::exception_ptr m_failure;
    std::atomic<bool> m_modalLoopLeft{false};
    bool m_joined = false;
};

// For a caller that is on a worker itself.
bool RunHere(const std::function<void(CObjProgress&)>& work) {
    CShowProgress* running = g_running;
    CObjProgress nobody;
    work(running ? *running : nobody);
    return !running || !running->Window().IsCancelled();
}

}  // namespace

void SetProgressWindowFactory(ProgressWindowFactory factory) {
    AssertMainThread();
    Factory() = std::move(factory);
}

bool IsTaskRunning() {
    return g_running != nullptr;
}

bool RunTask(CShowProgress& progress, const std::function<void(CObjProgress&)>& work) {
    if (!OnMainThread()) return RunHere(work);
    if (IsTaskRunning()) return false;
    Task(progress, work).Run();
    return !progress.Window().IsCancelled();
}

bool RunTask(const std::function<void(CObjProgress&)>& work) {
    if (!OnMainThread()) return RunHere(work);
    if (IsTaskRunning()) return false;
    const std::unique_ptr<ProgressWindow> window = Factory() ? Factory()() : std::make_unique<HeadlessProgressWindow>();
    CShowProgress progress(*window);
    return RunTask(progress, work);
}
