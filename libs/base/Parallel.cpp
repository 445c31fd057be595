// SPDX-License-Identifier: GPL-3.0-or-later
#include "Parallel.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace {

// One loop: bands are handed out one by one, so that a slow band does not hold up the rest.
struct Loop {
    const std::function<void(int, int)>* body = nullptr;
    int count = 0;
    int bandRows = 0;
    int bands = 0;
    std::atomic<int> next{0};
    std::atomic<int> done{0};
    std::mutex lock;
    std::condition_variable finished;
    std::exception_ptr error;

    void RunBands() {
        for (;;) {
            const int band = next.fetch_add(1);
            if (band >= bands) return;
            const int first = band * bandRows;
            try {
                (*body)(first, std::min(count, first + bandRows));
            } catch (...) {
                const std::lock_guard guard(lock);
                if (!error) error = std::current_exception();
            }
            if (done.fetch_add(1) + 1 == bands) {
                const std::lock_guard guard(lock);
                finished.notify_all();
            }
        }
    }
};

thread_local bool t_insideLoop = false;

class Pool {
  public:
    static Pool& Instance() {
        // Never destroyed: its threads may outlive every static object, and end with the process.
        static Pool* pool = new Pool;
        return *pool;
    }

    // Asks for help with a loop, which its caller works through in any case: where neither thread nor memory for the
    // asking is to be had, with fewer helpers or none. Never throws, since what was asked may already be under way.
    void Offer(const std::shared_ptr<Loop>& loop, int helpers) noexcept {
        const std::lock_guard guard(m_lock);
        try {
            while (m_threads < helpers) {
                std::thread([this] { Serve(); }).detach();
                ++m_threads;
            }
            for (int i = 0; i < helpers; ++i) m_queue.push_back(loop);
        } catch (const std::exception&) {
        }
        m_wake.notify_all();
    }

    std::atomic<int> workers{0};

  private:
    void Serve() {
        t_insideLoop = true;
        for (;;) {
            std::shared_ptr<Loop> loop;
            {
                std::unique_lock guard(m_lock);
                m_wake.wait(guard, [this] { return !m_queue.empty(); });
                loop = std::move(m_queue.front());
                m_queue.pop_front();
            }
            loop->RunBands();
        }
    }

    std::mutex m_lock;
    std::condition_variable m_wake;
    std::deque<std::shared_ptr<Loop>> m_queue;
    int m_threads = 0;
};

}  // namespace

int WorkerCount() {
    const int set = Pool::Instance().workers.load();
    return set > 0 ? set : std::max(1u, std::thread::hardware_concurrency());
}

void SetWorkerCount(int n) {
    Pool::Instance().workers = std::max(0, n);
}

void ForEachBand(int count, int grain, const std::function<void(int, int)>& body) {
    if (count < 1) return;
    const int workers = t_insideLoop ? 1 : WorkerCount();
    const int smallest = std::max(1, grain);
    // Some bands more than threads, so that they end at about the same time.
    const int bandRows = std::max(smallest, (count + workers * 4 - 1) / (workers * 4));
    if (workers == 1 || bandRows >= count) {
        body(0, count);
        return;
    }
    const auto loop = std::make_shared<Loop>();
    loop->body = &body;
    loop->count = count;
    loop->bandRows = bandRows;
    loop->bands = (count + bandRows - 1) / bandRows;
    Pool::Instance().Offer(loop, std::min(workers, loop->bands) - 1);

    t_insideLoop = true;
    loop->RunBands();
    t_insideLoop = false;

    std::unique_lock guard(loop->lock);
    loop->finished.wait(guard, [&] { return loop->done.load() == loop->bands; });
    if (loop->error) std::rethrow_exception(loop->error);
}
