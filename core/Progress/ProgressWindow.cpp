// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgressWindow.h"

#include <QtCore/QEventLoop>

struct HeadlessProgressWindow::Loop {
    QEventLoop events;
};

HeadlessProgressWindow::HeadlessProgressWindow() = default;
HeadlessProgressWindow::~HeadlessProgressWindow() = default;

void HeadlessProgressWindow::Reset() {
    m_nPercent = NoPercent;
    m_strText.clear();
    m_shown = true;
}

void HeadlessProgressWindow::SetPercent(int percent) {
    m_nPercent = percent;
}

void HeadlessProgressWindow::SetText(const QString& text) {
    m_strText = text;
}

void HeadlessProgressWindow::Hide() {
    m_shown = false;
}

void HeadlessProgressWindow::RunModal() {
    m_loop = std::make_unique<Loop>();
    SetReady(true);
    m_loop->events.exec();
    SetReady(false);
    m_loop.reset();
}

void HeadlessProgressWindow::CloseModal() {
    if (m_loop) m_loop->events.quit();
}
