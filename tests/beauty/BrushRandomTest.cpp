// SPDX-License-Identifier: GPL-3.0-or-later
// Random strokes, erasing, sliders, colours, moves in the history and visits, against a plain model of picture, mask
// and steps, pixel for pixel.
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "BrushPlace.h"
#include "CChunCaiLogic.h"
#include "CMoPiLogic.h"
#include "PC_Dsp.h"
#include "PlainBrush.h"
#include "TestHome.h"
#include "TestPictures.h"

namespace {

constexpr QSize Size(90, 70);

struct Values {
    double strength = 0.5;
    int brightness = 0;
    int red = 255, green = 0, blue = 0;
    int smoothing = 10;
};

struct ModelStep {
    Bitmap image;
    bool origin = false;
    bool record = false;
    std::vector<std::uint8_t> mask{};
    int strength = 0, brightness = 0;
    // Which picture it holds; 0 for the opened one.
    int id = 0;
};

// What both flavours do with the history; a flavour says what a step holds.
class Model {
  public:
    explicit Model(const Bitmap& opened) : steps{{opened, true}} {}
    virtual ~Model() = default;

    virtual Bitmap Effect(const Bitmap& base) const = 0;
    virtual bool HasWork() const = 0;
    virtual ModelStep Built(bool final) const = 0;
    virtual void Stored(bool final) = 0;
    virtual void Load(std::size_t index) = 0;
    virtual bool OneStepPerVisit() const = 0;

    void Enter() {
        plain.Take(plain.working ? plain.working : steps[current].image, {});
        plain.processed = Effect(plain.base);
        stepOpen = false;
    }
    void Commit(bool final) {
        if (!HasWork()) return;
        ModelStep step = Built(final);
        if (!stepOpen) {
            steps.resize(++current);
            steps.push_back({});
        }
        steps[current] = step;
        stepOpen = OneStepPerVisit();
        recorded = true;
        Stored(final);
    }
    void Go(std::size_t index) {
        current = index;
        stepOpen = false;
        Load(index);
        recorded = true;
    }
    void Undo() {
        Commit(false);
        if (current > 0) Go(current - 1);
    }
    void Redo() {
        if (HasWork() && !recorded) return;
        if (current + 1 < steps.size()) Go(current + 1);
    }
    void Jump(std::size_t row) {
        Commit(false);
        if (row < steps.size() && row != current) Go(row);
    }
    void Revert() {
        Commit(true);
        if (steps[current].origin) return;
        steps.resize(current + 1);
        steps.push_back({steps[0].image, true});
        Go(current + 1);
    }
    virtual void Leave() { Commit(true); }

    PlainBrush plain;
    std::vector<ModelStep> steps;
    std::size_t current = 0;
    bool stepOpen = false;
    bool recorded = false;
    Values values;
};

class MaskModel : public Model {
  public:
    explicit MaskModel(const Bitmap& opened) : Model(opened) { Enter(); }
    Bitmap Effect(const Bitmap& base) const override {
        Bitmap picture = base;
        PC_Dsp::Color_Channel_Composite(picture, values.red, values.green, values.blue, nullptr, 0, 100);
        PC_Dsp::LightNew(picture.MutablePixels(), picture.Width(), picture.Height(), values.brightness, 3, nullptr, 0,
                         100);
        return picture;
    }
    bool OneStepPerVisit() const override { return true; }
    bool HasWork() const override { return dirty || pending; }
    ModelStep Built(bool final) const override {
        if (final) return {plain.working};
        return {plain.base, false, true, plain.mask, static_cast<int>(values.strength * 100), values.brightness};
    }
    void Stored(bool final) override {
        dirty = false;
        pending = !final;
    }
    void Load(std::size_t index) override {
        const ModelStep step = steps[index];
        if (step.record) {
            values.strength = step.strength * 0.01;
            values.brightness = step.brightness;
        }
        plain.Take(step.image, {});
        plain.processed = Effect(plain.base);
        dirty = false;
        pending = stepOpen = step.record;
        if (!step.record) return;
        plain.mask = step.mask;
        plain.painted = true;
        plain.working = plain.Composed(values.strength);
    }
    // A step ahead that still holds a mask becomes a snapshot.
    void Leave() override {
        if (!HasWork() && current + 1 < steps.size() && steps.back().record) {
            MaskModel ahead = *this;
            ahead.Go(steps.size() - 1);
            steps.back() = {ahead.plain.working};
        }
        Commit(true);
        dirty = pending = false;
    }
    void Compose() {
        plain.processed = Effect(plain.base);
        if (!plain.painted) return;
        plain.working = plain.Composed(values.strength);
        recorded = false;
    }

    bool dirty = false, pending = false;
};

class DirectModel : public Model {
  public:
    explicit DirectModel(const Bitmap& opened) : Model(opened) { Enter(); }
    Bitmap Effect(const Bitmap& base) const override {
        Bitmap picture = base;
        const auto sigma = static_cast<float>(values.smoothing * 0.1);
        PC_Dsp::CannyDericheBlur(picture, sigma, sigma, nullptr, nullptr, 0, 100);
        return picture;
    }
    bool OneStepPerVisit() const override { return false; }
    bool HasWork() const override { return dirty; }
    ModelStep Built(bool) const override { return {plain.working}; }
    void Stored(bool) override {
        dirty = false;
        steps[current].id = ++lastId;
        visit.insert(lastId);
    }
    // The copies stay for the steps of the visit, and for the picture that it began with wherever that stands again.
    void Load(std::size_t index) override {
        dirty = false;
        if (visit.contains(steps[index].id)) {
            plain.working = steps[index].image;
            return;
        }
        plain.Take(steps[index].image, {});
        plain.processed = Effect(plain.base);
        visit = {steps[index].id};
    }
    void Visit() {
        Leave();
        Enter();
        visit = {steps[current].id};
    }

    bool dirty = false;
    std::set<int> visit{0};
    int lastId = 0;
};

template <class Logic, class TheModel>
class Session {
  public:
    explicit Session(unsigned seed, const char* folder)
        : m_random(seed),
          picture(TestPictures::Noise(Size.width(), Size.height(), seed)),
          history(TestHome::Path() + QLatin1String(folder)),
          logic(history),
          model(picture) {
        history.OpenImage(picture);
        history.SetCurrentBitmap(picture);
        logic.SetViewSize(140, 110);
        logic.SetSource(picture);
    }
    int Draw(int low, int high) { return std::uniform_int_distribution(low, high)(m_random); }

    void Stroke(bool intoMask, double weight) {
        const int pen = Draw(2, 60);
        const bool erase = Draw(0, 3) == 0;
        logic.SetPenSize(pen);
        logic.SetErase(erase);
        const ViewGeometry geometry = logic.Geometry();
        const QRect place = geometry.ScreenRect();
        QPoint at(Draw(place.left(), place.right()), Draw(place.top(), place.bottom()));
        ASSERT_TRUE(logic.BeginStroke(at));
        const int radius = BrushTip::RadiusOf(pen, geometry.Zoom());
        std::optional<QPoint> last;
        for (int moves = Draw(1, 8); moves >= 0; --moves) {
            const auto stamp = StampPlace(at - geometry.ViewOffset(), pen, geometry.Zoom(), Size);
            if (stamp && (!last || IsFarEnough(*last, *stamp, 2 * radius))) {
                model.plain.Stamp(PC_Dsp::Circle_Gradient_Alpha, radius, stamp->x(), stamp->y(), erase,
                                  erase ? 0.0 : weight, intoMask);
                last = stamp;
                model.dirty = true;
                model.recorded = false;
            }
            at += QPoint(Draw(-40, 40), Draw(-30, 30));
            if (moves > 0) logic.MoveStroke(at);
        }
        logic.EndStroke();
        model.Commit(false);
    }
    void MoveInHistory(int which) {
        switch (which) {
            case 0:
                logic.Undo();
                return model.Undo();
            case 1:
                logic.Redo();
                return model.Redo();
            case 2: {
                const int row = Draw(0, static_cast<int>(model.steps.size()) - 1);
                logic.Jump(row);
                return model.Jump(static_cast<std::size_t>(row));
            }
            default:
                logic.Revert();
                return model.Revert();
        }
    }
    void Visit() {
        logic.Apply();
        logic.Reset();
        ASSERT_TRUE(logic.TakeViewState());
    }
    void Compare(const char* after) {
        ASSERT_TRUE(logic.RenderResult() == model.plain.working) << after;
        ASSERT_EQ(history.m_count, static_cast<int>(model.steps.size())) << after;
        ASSERT_EQ(history.m_currentNo, static_cast<int>(model.current) + 1) << after;
        ASSERT_EQ(logic.HasUnrecorded(), model.HasWork() && !model.recorded) << after;
    }

  private:
    std::mt19937 m_random;

  public:
    const Bitmap picture;
    CHistoryManager history;
    Logic logic;
    TheModel model;
};

}  // namespace

TEST(BrushRandom, TheMaskFlavourEqualsItsModel) {
    for (unsigned seed = 1; seed <= 25; ++seed) {
        Session<CChunCaiLogic, MaskModel> run(seed, "/Temp/RandomMask/");
        Values& v = run.model.values;
        for (int n = 0; n < 24 && run.model.steps.size() < 28; ++n) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", act " << n);
            switch (run.Draw(0, 9)) {
                case 0:
                case 1:
                case 2:
                    run.Stroke(true, 255 * (v.strength / 255.0));
                    ASSERT_NO_FATAL_FAILURE(run.Compare("a stroke"));
                    break;
                case 3: {
                    const int percent = run.Draw(0, 100);
                    run.logic.ComposeView(run.Draw(0, 100) / 100.0);
                    run.logic.ComposeFull(percent / 100.0);
                    v.strength = percent / 100.0;
                    run.model.Compose();
                    ASSERT_NO_FATAL_FAILURE(run.Compare("a strength"));
                    break;
                }
                case 4: {
                    v.brightness = run.Draw(-50, 50);
                    run.logic.SetBrightnessView(run.Draw(-50, 50));
                    run.logic.SetBrightnessFull(v.brightness);
                    run.model.Compose();
                    ASSERT_NO_FATAL_FAILURE(run.Compare("a brightness"));
                    break;
                }
                case 5:
                    v.red = run.Draw(0, 255);
                    v.blue = run.Draw(0, 255);
                    if (run.logic.SetColor(v.red, v.green, v.blue, nullptr)) run.model.Compose();
                    ASSERT_NO_FATAL_FAILURE(run.Compare("a colour"));
                    break;
                case 6:
                    run.Visit();
                    run.model.Leave();
                    run.model.Enter();
                    ASSERT_NO_FATAL_FAILURE(run.Compare("a visit"));
                    break;
                default:
                    run.MoveInHistory(run.Draw(0, 3));
                    ASSERT_NO_FATAL_FAILURE(run.Compare("a move in the history"));
            }
        }
    }
}

TEST(BrushRandom, TheDirectFlavourEqualsItsModel) {
    for (unsigned seed = 1; seed <= 25; ++seed) {
        Session<CMoPiLogic, DirectModel> run(seed, "/Temp/RandomDirect/");
        for (int n = 0; n < 24 && run.model.steps.size() < 28; ++n) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", act " << n);
            switch (run.Draw(0, 7)) {
                case 0:
                case 1:
                case 2:
                    run.Stroke(false, 1.0);
                    ASSERT_NO_FATAL_FAILURE(run.Compare("a stroke"));
                    break;
                case 3:
                    run.model.values.smoothing = run.Draw(0, 50);
                    run.logic.SetStrength(run.model.values.smoothing, nullptr);
                    run.model.plain.processed = run.model.Effect(run.model.plain.base);
                    break;
                case 4:
                    run.Visit();
                    run.model.Visit();
                    ASSERT_NO_FATAL_FAILURE(run.Compare("a visit"));
                    break;
                default:
                    run.MoveInHistory(run.Draw(0, 3));
                    ASSERT_NO_FATAL_FAILURE(run.Compare("a move in the history"));
            }
        }
    }
}
