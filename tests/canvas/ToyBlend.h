// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

#include "BlendTool.h"
#include "CEffect.h"
#include "LookParams.h"
#include "TestHome.h"
#include "TestPictures.h"

// A sink that asks to stop once a percentage is reached, and keeps what it was told.
class StoppingProgress : public CObjProgress {
  public:
    explicit StoppingProgress(float stopAt = 1000.0f) : m_stopAt(stopAt) {}
    void SetValue(float v) override {
        CObjProgress::SetValue(v);
        values.push_back(v);
    }
    int CanContinue() override { return m_fValue < m_stopAt ? 1 : 0; }
    std::vector<float> values;

  private:
    float m_stopAt;
};

// Looks without a library: number n turns the bits of n in every colour byte. 13 fails, 14 finds no memory.
class ToyBlend : public BlendTool {
  public:
    static constexpr int Failing = 13, TooLarge = 14;

    explicit ToyBlend(CHistoryManager& history)
        : BlendTool(QStringLiteral("ids_texiao"), QStringLiteral("ToyRes.bin"), history) {}

    static Bitmap Of(Bitmap picture, int look) {
        std::uint8_t* byte = picture.MutablePixels();
        for (std::size_t i = 0; i < picture.ByteCount(); ++i)
            if (i % 4 != 3) byte[i] = static_cast<std::uint8_t>(byte[i] ^ look);
        return picture;
    }
    bool Run(int look, CObjProgress* progress = nullptr) {
        const AutoBeautifyParams before = params;
        params.preset = look;
        if (RunLook(progress)) return true;
        params = before;
        return false;
    }

    bool OwnsRecord(int type) const override { return type == AutoBeautifyParams::Type; }

    AutoBeautifyParams params;
    mutable int computed = 0;

  protected:
    QString LookId() const override { return params.preset == 0 ? QString() : QString::number(params.preset); }
    void ForgetLook() override { params = {}; }
    bool ComputeLook(Bitmap& picture, const ProgressSpan& span) const override {
        ++computed;
        if (params.preset == TooLarge) throw std::bad_alloc();
        if (params.preset == Failing) return false;
        span.Report(1, 2);
        if (!span.CanContinue()) return false;
        picture = Of(picture, params.preset);
        span.Report(2, 2);
        return true;
    }
    std::unique_ptr<CUndoRedoParams> MakeRecord() const override {
        auto record = std::make_unique<AutoBeautifyParams>(params);
        record->Alpha = Alpha();
        record->path = LookFile();
        return record;
    }
    int TakeRecord(const CUndoRedoParams& record) override {
        params = *RecordAs<AutoBeautifyParams>(record);
        return params.Alpha;
    }
};

// An opened picture with a history of its own, and the toy on it.
class ToyBlendTest : public testing::Test {
  protected:
    ToyBlendTest() : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")) {
        picture = TestPictures::Face(120, 90);
        EXPECT_TRUE(history.OpenImage(picture));
        NewVisit();
        toy->SetSource(picture);
    }
    void NewVisit() {
        toy = nullptr;
        toy = std::make_unique<ToyBlend>(history);
        toy->SetViewSize(400, 300);
    }
    void LeaveAndEnter() {
        toy->Apply();
        NewVisit();
        ASSERT_TRUE(toy->TakeViewState());
    }
    const CHistoryStep& CurrentStep() const { return *history.m_ring[static_cast<std::size_t>(history.m_current)]; }
    const CHistoryStep& HeadStep() const { return *history.m_ring[static_cast<std::size_t>(history.m_head)]; }
    Bitmap Look(int number) const { return ToyBlend::Of(picture, number); }

    // source * (1 - a) + effect * a, computed plainly.
    static Bitmap Mixed(const Bitmap& source, const Bitmap& effect, int percent) {
        Bitmap mixed = source;
        std::uint8_t* byte = mixed.MutablePixels();
        for (std::size_t i = 0; i < mixed.ByteCount(); ++i)
            byte[i] = static_cast<std::uint8_t>(
                std::lround(source.Pixels()[i] * (1 - percent * 0.01) + effect.Pixels()[i] * (percent * 0.01)));
        return mixed;
    }

    CHistoryManager history;
    Bitmap picture;
    std::unique_ptr<ToyBlend> toy;
};
