// SPDX-License-Identifier: GPL-3.0-or-later
#include "WarpQueue.h"

#include <algorithm>
#include <utility>

namespace {

std::exception_ptr ThrownBy(const std::function<void()>& act) {
    try {
        act();
    } catch (...) {
        return std::current_exception();
    }
    return nullptr;
}

}  // namespace

WarpQueue::WarpQueue(std::function<void(const WarpEntry&)> work, std::function<void()> rest)
    : m_work(std::move(work)), m_rest(std::move(rest)), m_thread([this] { Serve(); }) {}

WarpQueue::~WarpQueue() {
    {
        const std::lock_guard guard(m_lock);
        m_stop = true;
    }
    m_wake.notify_all();
    m_thread.join();
}

void WarpQueue::Add(const WarpEntry& entry) {
    const std::lock_guard guard(m_lock);
    m_entries.push_back(entry);
}

void WarpQueue::Release() {
    {
        const std::lock_guard guard(m_lock);
        if (m_released == 0 && !m_busy) m_finished = 0;
        m_released = m_entries.size();
    }
    m_wake.notify_all();
}

bool WarpQueue::Wait(const ProgressSpan& span) {
    std::unique_lock guard(m_lock);
    std::size_t seen = m_finished;
    double reported = 0.0;
    while (m_released > 0 || m_busy) {
        m_done.wait(guard, [&] { return m_finished != seen || (m_released == 0 && !m_busy); });
        seen = m_finished;
        const auto done = static_cast<double>(seen);
        // What is released meanwhile makes the way longer, but never the way back.
        reported = std::max(reported, done / (done + static_cast<double>(m_released) + (m_busy ? 1.0 : 0.0)));
        // The sink may show a window and must not hold up the thread.
        guard.unlock();
        span.Report(reported, 1.0);
        const bool goOn = span.CanContinue();
        guard.lock();
        if (!goOn) Drop();
    }
    const bool whole = !std::exchange(m_dropped, false);
    if (const std::exception_ptr error = std::exchange(m_error, nullptr)) std::rethrow_exception(error);
    guard.unlock();
    if (whole) span.Report(1.0, 1.0);  // the last entries may have ended while the sink was told of those before
    return whole;
}

void WarpQueue::Clear() {
    std::unique_lock guard(m_lock);
    Drop();
    m_done.wait(guard, [this] { return !m_busy; });
    m_dropped = false;
    m_error = nullptr;
}

std::size_t WarpQueue::Size() const {
    const std::lock_guard guard(m_lock);
    return m_entries.size() + (m_busy ? 1 : 0);
}

void WarpQueue::Drop() {
    m_dropped = m_dropped || !m_entries.empty();
    m_entries.clear();
    m_released = 0;
}

void WarpQueue::Run(const std::function<void()>& act, std::unique_lock<std::mutex>& guard) {
    guard.unlock();
    const std::exception_ptr error = ThrownBy(act);
    guard.lock();
    if (!error) return;
    m_error = error;
    Drop();
}

void WarpQueue::Serve() {
    std::unique_lock guard(m_lock);
    for (;;) {
        m_wake.wait(guard, [this] { return m_stop || m_released > 0; });
        if (m_stop) return;
        const WarpEntry entry = m_entries.front();
        m_entries.pop_front();
        --m_released;
        m_busy = true;
        Run([&] { m_work(entry); }, guard);
        ++m_finished;
        m_done.notify_all();
        if (m_released == 0) Run(m_rest, guard);
        m_busy = false;
        m_done.notify_all();
    }
}
