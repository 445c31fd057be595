// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

#include "CEffect.h"
#include "LookLogic.h"
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

struct ToyParams : ParamsOf<ToyParams, 105> {
    int preset = 0;
    int Alpha = 100;
    QString path;
};

inline constexpr ToolFacts ToyTool{7, SectionEffects, "", "", "", "", "ids_texiao", ""};

// Looks without a library: number n turns the bits of n in every colour byte. 13 fails, 14 finds no memory.
class ToyLook : public LookLogic {
  public:
    static constexpr int Failing = 13, TooLarge = 14;

    explicit ToyLook(CHistoryManager& history) : LookLogic(ToyTool, QStringLiteral("ToyRes.bin"), history) {}

    static Bitmap Of(Bitmap picture, int look) {
        std::uint8_t* byte = picture.MutablePixels();
        for (std::size_t i = 0; i < picture.ByteCount(); ++i)
            if (i % 4 != 3) byte[i] = static_cast<std::uint8_t>(byte[i] ^ look);
        return picture;
    }
    bool Run(int look, CObjProgress* progress = nullptr) { return ApplyLook(look, progress); }

    bool OwnsRecord(int type) const override { return type == ToyParams::Type; }

    mutable int computed = 0;

  protected:
    bool Exists(int look) const override { return look >= 0; }
    bool Compute(Bitmap& picture, int look, const ProgressSpan& span) const override {
        ++computed;
        if (look == TooLarge) throw std::bad_alloc();
        if (look == Failing) return false;
        span.Report(1, 2);
        if (!span.CanContinue()) return false;
        picture = Of(picture, look);
        span.Report(2, 2);
        return true;
    }
    std::unique_ptr<CUndoRedoParams> MakeRecord() const override {
        auto record = std::make_unique<ToyParams>();
        record->preset = Look();
        record->Alpha = Alpha();
        record->path = LookFile();
        return record;
    }
    Recorded ReadRecord(const CUndoRedoParams& record) const override {
        const auto* params = RecordAs<ToyParams>(record);
        return {params->preset, params->Alpha};
    }
};

// An opened picture with a history of its own, and the toy on it.
class ToyLookTest : public testing::Test {
  protected:
    ToyLookTest() : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")) {
        picture = TestPictures::Face(120, 90);
        EXPECT_TRUE(history.OpenImage(picture));
        NewVisit();
        toy->SetSource(picture);
    }
    void NewVisit() {
        toy = nullptr;
        toy = std::make_unique<ToyLook>(history);
        toy->SetViewSize(400, 300);
    }
    void LeaveAndEnter() {
        toy->Apply();
        NewVisit();
        ASSERT_TRUE(toy->TakeViewState());
    }
    const CHistoryStep& CurrentStep() const { return *history.m_ring[static_cast<std::size_t>(history.m_current)]; }
    const CHistoryStep& HeadStep() const { return *history.m_ring[static_cast<std::size_t>(history.m_head)]; }
    Bitmap With(int look) const { return ToyLook::Of(picture, look); }

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
    std::unique_ptr<ToyLook> toy;
};
