// SPDX-License-Identifier: GPL-3.0-or-later
#include "ThumbnailThread.h"

#include <new>
#include <utility>

void ThumbnailThread::Start(std::vector<Step> steps) {
    Stop();
    m_cancel = false;
    m_done = false;
    m_thread = std::thread([this, mine = std::move(steps)] { Run(mine); });
}

void ThumbnailThread::Stop() {
    m_cancel = true;
    if (m_thread.joinable()) m_thread.join();
}

void ThumbnailThread::Run(const std::vector<Step>& steps) {
    for (const Step& step : steps) {
        if (m_cancel) break;
        try {
            step();
        } catch (const std::bad_alloc&) {
            continue;
        }
    }
    m_done = true;
}
