// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <QtCore/QString>

#include "CHistoryManager.h"
#include "CHistoryStep.h"
#include "ImageParams.h"
#include "TestPictures.h"

// Steps and a history for tests: two by two pixels of one colour each, so that a picture is named by a number.
// The record of a tool that there is only here.
struct SampleParams : ParamsOf<SampleParams, 102> {
    int Brightness = 0;
};

namespace HistorySteps {

inline Bitmap Colour(std::uint32_t number) {
    return TestPictures::Plain(2, 2, 0xFF000000u | number);
}

// The number of the step's pixels as its file has them; -1 when they can't be read.
inline std::int64_t ColourOf(const Bitmap& bitmap) {
    return bitmap ? std::int64_t{TestPictures::PixelAt(bitmap, 0, 0) & 0xFFFFFFu} : -1;
}

std::unique_ptr<CHistoryStep> Snapshot(const Bitmap& picture);
// A step on `base` without a file of its own, with one parameter record.
std::unique_ptr<CHistoryStep> Parameters(const Bitmap& base, int brightness = 1);

// Makes every snapshot number that no step names unwritable while it lives: a folder stands in the file's place.
class UnwritableFiles {
  public:
    explicit UnwritableFiles(const CHistoryManager& history);
    ~UnwritableFiles();
    UnwritableFiles(const UnwritableFiles&) = delete;
    UnwritableFiles& operator=(const UnwritableFiles&) = delete;

  private:
    std::vector<QString> m_blocked;
};

// Path of the reachable step of that number (from 1).
QString PathOf(const CHistoryManager& history, int stepNo);
const CHistoryStep& StepAt(const CHistoryManager& history, int stepNo);

}  // namespace HistorySteps
