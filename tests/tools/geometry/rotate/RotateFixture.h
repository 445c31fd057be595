// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "CRotateLogic.h"
#include "PC_Dsp.h"
#include "TestHome.h"
#include "TestPictures.h"

// An opened picture with its own history folder, and the rotate tool on it, without any window.
class RotateFixture : public testing::Test {
  protected:
    RotateFixture() : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")) {}

    // Opens a picture as the session does, and enters the tool with a client of this size.
    void Open(const Bitmap& opened, int width = 800, int height = 600) {
        picture = opened;
        ASSERT_TRUE(history.OpenImage(picture));
        history.SetCurrentBitmap(picture);
        history.SetViewState(nullptr);
        NewLogic(width, height);
        logic->SetSource(picture);
    }
    void NewLogic(int width = 800, int height = 600) {
        logic = nullptr;
        logic = std::make_unique<CRotateLogic>(history);
        logic->SetViewSize(width, height);
    }
    // A tool change: leaves the tool and enters it again as a new visit.
    void LeaveAndEnter() {
        logic->Apply();
        NewLogic();
        ASSERT_TRUE(logic->TakeViewState());
    }

    static Bitmap Turned(const Bitmap& source, int angle) { return PC_Dsp::MultiRotate(source, angle, 0, 0, 0, 0); }
    static Bitmap Reoriented(Bitmap source, RotateFlipType type) {
        EXPECT_NE(PC_Dsp::SingleRotate(source, type), 0);
        return source;
    }
    // Of all channels of two bitmaps as they are seen, colours by their alpha; 256 when their sizes differ.
    static double MeanDifference(const Bitmap& a, const Bitmap& b) {
        if (a.Width() != b.Width() || a.Height() != b.Height()) return 256.0;
        const auto seen = [](const Bitmap& bitmap, std::size_t i) {
            const int alpha = bitmap.Pixels()[i | 3];
            return i % 4 == 3 ? alpha : bitmap.Pixels()[i] * alpha / 255;
        };
        double sum = 0;
        for (std::size_t i = 0; i < a.ByteCount(); ++i) sum += std::abs(seen(a, i) - seen(b, i));
        return sum / static_cast<double>(a.ByteCount());
    }
    Bitmap Result() { return logic->RenderResult(); }
    QSize ViewSize() const {
        const Bitmap view = logic->View().bitmap;
        return {view.Width(), view.Height()};
    }

    CHistoryManager history;
    Bitmap picture;
    std::unique_ptr<CRotateLogic> logic;
};
