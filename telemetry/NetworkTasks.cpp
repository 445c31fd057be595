// SPDX-License-Identifier: GPL-3.0-or-later
#include "NetworkTasks.h"

#include <utility>

NetworkTasks::~NetworkTasks() {
    Stop();
}

void NetworkTasks::Add(Task task) {
    const std::lock_guard<std::mutex> guard(m_lock);
    if (m_stopped || m_waiting.size() >= MostWaiting) return;
    m_waiting.push_back(std::move(task));
    if (!m_thread.joinable()) m_thread = std::thread([this] { Run(); });
    m_changed.notify_all();
}

void NetworkTasks::Stop() {
    {
        const std::lock_guard<std::mutex> guard(m_lock);
        m_stopped = true;
        m_waiting.clear();
        m_changed.notify_all();
    }
    if (m_thread.joinable()) m_thread.join();
}

void NetworkTasks::WaitUntilIdle() {
    std::unique_lock<std::mutex> guard(m_lock);
    m_changed.wait(guard, [this] { return m_waiting.empty() && !m_working; });
}

void NetworkTasks::Run() {
    std::unique_lock<std::mutex> guard(m_lock);
    while (true) {
        m_changed.wait(guard, [this] { return m_stopped || !m_waiting.empty(); });
        if (m_stopped) return;
        const Task task = std::exchange(m_waiting.front(), {});
        m_waiting.pop_front();
        m_working = true;
        guard.unlock();
        task([this] { return !m_stopped; });
        guard.lock();
        m_working = false;
        m_changed.notify_all();
    }
}
