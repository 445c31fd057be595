// SPDX-License-Identifier: GPL-3.0-or-later
#include "HistorySteps.h"

#include <algorithm>
#include <QtCore/QDir>
#include <QtCore/QFile>

namespace HistorySteps {

std::unique_ptr<CHistoryStep> Snapshot(const Bitmap& picture) {
    auto image = std::make_unique<ImageParams>();
    image->image = picture;
    image->save = true;
    auto step = std::make_unique<CHistoryStep>();
    step->AddParams(std::move(image));
    return step;
}

std::unique_ptr<CHistoryStep> Parameters(const Bitmap& base, int brightness) {
    std::unique_ptr<CHistoryStep> step = Snapshot(base);
    step->Image()->save = false;
    auto basic = std::make_unique<SampleParams>();
    basic->order = 1;
    basic->Brightness = brightness;
    step->AddParams(std::move(basic));
    return step;
}

UnwritableFiles::UnwritableFiles(const CHistoryManager& history) {
    for (int number = 0; number < CHistoryManager::FileCount; ++number) {
        const QString path = history.m_fileFormat.arg(history.m_tempDir, QString::number(number));
        const bool named = std::any_of(history.m_ring.begin(), history.m_ring.end(),
                                       [&](const auto& step) { return step && step->GetImagePath() == path; });
        if (named) continue;
        QFile::remove(path);
        QDir().mkpath(path);
        m_blocked.push_back(path);
    }
}

UnwritableFiles::~UnwritableFiles() {
    for (const QString& path : m_blocked) QDir().rmdir(path);
}

const CHistoryStep& StepAt(const CHistoryManager& history, int stepNo) {
    return *history.m_ring[(history.m_tail + stepNo - 1) % CHistoryManager::RingSize];
}

QString PathOf(const CHistoryManager& history, int stepNo) {
    return StepAt(history, stepNo).GetImagePath();
}

}  // namespace HistorySteps
