// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "AdjustChain.h"
#include "AdjustSliders.h"
#include "CAdjustLogic.h"
#include "ImageParams.h"
#include "PC_File.h"
#include "TestHome.h"
#include "TestPictures.h"

// An opened picture with its own history folder, and the adjust tool on it, without any window.
class AdjustFixture : public testing::Test {
  protected:
    AdjustFixture() : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")) {}

    // Opens a picture as the session does, and enters the tool with a client of this size.
    void Open(const Bitmap& opened, int width = 800, int height = 600) {
        picture = opened;
        ASSERT_TRUE(history.OpenImage(picture));
        history.SetViewState(nullptr);
        NewLogic(width, height);
        logic->SetSource(picture);
        logic->FitToWindow();
    }

    // A tool change: leaves the tool and enters it again as a new visit.
    void LeaveAndEnter(int width = 800, int height = 600) {
        logic->Apply();
        NewLogic(width, height);
        ASSERT_TRUE(logic->TakeViewState());
    }

    void NewLogic(int width = 800, int height = 600) {
        logic = nullptr;
        logic = std::make_unique<CAdjustLogic>(history);
        logic->SetViewSize(width, height);
    }

    void SetAndCommit(int index, int value) {
        logic->SetValue(index, value);
        ASSERT_TRUE(logic->CommitStep());
    }

    // The full pass for one value on any picture, by a tool of its own.
    Bitmap Rendered(const Bitmap& source, int index, int value) {
        CHistoryManager other(TestHome::Path() + QStringLiteral("/Temp/Other/"));
        CAdjustLogic plain(other);
        plain.SetViewSize(64, 64);
        plain.SetSource(source);
        plain.SetValue(index, value);
        return plain.RenderResult();
    }
    Bitmap SceneOf(const Bitmap& source, int scenario) {
        Bitmap result = source;
        EXPECT_TRUE(RunAdjustScene(result, scenario));
        return result;
    }

    const CHistoryStep& CurrentStep() const { return *history.m_ring[static_cast<std::size_t>(history.m_current)]; }
    const CHistoryStep& HeadStep() const { return *history.m_ring[static_cast<std::size_t>(history.m_head)]; }

    CHistoryManager history;
    Bitmap picture;
    std::unique_ptr<CAdjustLogic> logic;
};

// A sink that keeps what it was told, and asks to stop once a percentage is reached.
class RecordingProgress : public CObjProgress {
  public:
    explicit RecordingProgress(float stopAt = 1000.0f) : m_stopAt(stopAt) {}
    void SetValue(float v) override {
        CObjProgress::SetValue(v);
        values.push_back(v);
    }
    int CanContinue() override { return m_fValue < m_stopAt ? 1 : 0; }
    std::vector<float> values;

  private:
    float m_stopAt;
};
