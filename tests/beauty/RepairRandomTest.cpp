// SPDX-License-Identifier: GPL-3.0-or-later
// Random clicks and strokes at any place, pen and zoom, moves in the history and visits, against a plain model of
// picture and steps, pixel for pixel.
#include <gtest/gtest.h>

#include <random>

#include "BrushPlace.h"
#include "CQuDouQBLogic.h"
#include "CXiaoChuHYLogic.h"
#include "CXiaoChuHYQLogic.h"
#include "PC_Dsp.h"
#include "PlainBrush.h"
#include "PlainRepair.h"
#include "TestHome.h"
#include "TestPictures.h"

namespace {

// Pictures, one for each step, and the one on show.
struct Model {
    explicit Model(const Bitmap& opened) : steps{opened}, origins{true}, picture(opened), base(opened) {}

    void Push() {
        steps.resize(++current);
        origins.resize(current);
        steps.push_back(picture);
        origins.push_back(false);
    }
    void Go(std::size_t index) {
        current = index;
        picture = base = steps[index];
    }
    void Revert() {
        if (origins[current]) return;
        picture = steps[0];
        Push();
        origins.back() = true;
        base = picture;
    }

    std::vector<Bitmap> steps;
    std::vector<bool> origins;
    std::size_t current = 0;
    Bitmap picture;
    // What erasing paints back.
    Bitmap base;
};

template <class Logic>
class Session {
  public:
    Session(unsigned seed, const char* folder)
        : m_random(seed),
          size(Draw(20, 110), Draw(20, 90)),
          history(TestHome::Path() + QLatin1String(folder)),
          logic(history),
          model(Draw(0, 3) == 0 ? TestPictures::Noise(size.width(), size.height(), seed)
                                : PlainRepair::Face(size.width(), size.height())) {
        history.OpenImage(model.picture);
        history.SetCurrentBitmap(model.picture);
        logic.SetViewSize(140, 110);
        logic.SetSource(model.picture);
    }
    int Draw(int low, int high) { return std::uniform_int_distribution(low, high)(m_random); }
    QPoint Somewhere() {
        const QRect place = logic.Geometry().ScreenRect();
        return {Draw(place.left() - 5, place.right() + 5), Draw(place.top() - 5, place.bottom() + 5)};
    }
    void Any() {
        logic.SetPenSize(Draw(0, 90));
        if (Draw(0, 5) == 0) {
            logic.SetZoom(Draw(2, 40) / 10.0);
            logic.PanBy(Draw(-60, 60), Draw(-60, 60));
        }
    }
    void MoveInHistory() {
        switch (Draw(0, 3)) {
            case 0:
                logic.Undo();
                if (model.current > 0) model.Go(model.current - 1);
                break;
            case 1:
                logic.Redo();
                if (model.current + 1 < model.steps.size()) model.Go(model.current + 1);
                break;
            case 2: {
                const int row = Draw(0, static_cast<int>(model.steps.size()) - 1);
                logic.Jump(row);
                if (row != static_cast<int>(model.current)) model.Go(static_cast<std::size_t>(row));
                break;
            }
            default:
                logic.Revert();
                model.Revert();
        }
    }
    void Visit() {
        logic.Apply();
        logic.Reset();
        ASSERT_TRUE(logic.TakeViewState());
        model.base = model.picture;
    }
    void Compare(const char* after) {
        ASSERT_TRUE(logic.RenderResult() == model.picture) << after;
        ASSERT_EQ(history.m_count, static_cast<int>(model.steps.size())) << after;
        ASSERT_EQ(history.m_currentNo, static_cast<int>(model.current) + 1) << after;
        ASSERT_FALSE(logic.HasUnrecorded()) << after;
    }

  private:
    std::mt19937 m_random;

  public:
    const QSize size;
    CHistoryManager history;
    Logic logic;
    Model model;
};

template <class Logic, class Act>
void Play(const char* folder, const Act& act) {
    for (unsigned seed = 1; seed <= 25; ++seed) {
        Session<Logic> run(seed, folder);
        for (int n = 0; n < 24 && run.model.steps.size() < 28; ++n) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", act " << n);
            switch (run.Draw(0, 7)) {
                case 0:
                case 1:
                    run.MoveInHistory();
                    ASSERT_NO_FATAL_FAILURE(run.Compare("a move in the history"));
                    break;
                case 2:
                    ASSERT_NO_FATAL_FAILURE(run.Visit());
                    ASSERT_NO_FATAL_FAILURE(run.Compare("a visit"));
                    break;
                default:
                    run.Any();
                    act(run);
                    ASSERT_NO_FATAL_FAILURE(run.Compare("a repair"));
            }
        }
    }
}

template <class Logic>
void PlayClicks(const char* folder, Bitmap (*repair)(Bitmap, const QRect&)) {
    Play<Logic>(folder, [&](Session<Logic>& run) {
        const QPoint at = run.Somewhere();
        const auto place = run.logic.Aim(at);
        const QRect covered = PlainRepair::Place(at, run.logic.PenSize(), run.logic.Geometry());
        const bool hit = run.logic.Geometry().ScreenRect().contains(at) && !covered.isEmpty() &&
                         covered.intersects(QRect(QPoint(0, 0), run.size));
        ASSERT_EQ(place.has_value(), hit);
        if (!hit) return;
        ASSERT_EQ(*place, covered);
        run.logic.Repair(*place, nullptr);
        run.logic.CommitStep();
        run.model.picture = repair(run.model.picture, covered);
        run.model.Push();
    });
}

}  // namespace

TEST(RepairRandom, SpotsEqualTheirModel) {
    PlayClicks<CQuDouQBLogic>("/Temp/RandomSpots/", PlainRepair::WithoutSpot);
}

TEST(RepairRandom, RedEyesEqualTheirModel) {
    PlayClicks<CXiaoChuHYLogic>("/Temp/RandomRedEyes/", PlainRepair::WithoutRedEye);
}

TEST(RepairRandom, DarkCirclesEqualTheirModel) {
    Play<CXiaoChuHYQLogic>("/Temp/RandomCircles/", [](Session<CXiaoChuHYQLogic>& run) {
        const int strength = run.Draw(0, 10), pen = run.logic.PenSize();
        const bool erase = run.Draw(0, 2) == 0;
        run.logic.SetStrength(strength);
        run.logic.SetErase(erase);
        const ViewGeometry geometry = run.logic.Geometry();
        QPoint at = run.Somewhere();
        const bool begun = geometry.ScreenRect().contains(at);
        ASSERT_EQ(run.logic.BeginStroke(at), begun);
        if (!begun) return;
        const int radius = BrushTip::RadiusOf(pen, geometry.Zoom());
        PlainBrush plain;
        plain.Take(run.model.base, run.model.base);
        plain.working = run.model.picture;
        std::vector<QRect> discs;
        std::optional<QPoint> last;
        bool changed = false;
        for (int moves = run.Draw(0, 6); moves >= 0; --moves) {
            const auto place = StampPlace(at - geometry.ViewOffset(), pen, geometry.Zoom(), run.size);
            if (place && !erase) discs.push_back(QRect(*place, QSize(2 * radius, 2 * radius)));
            if (place && (!erase || !last || IsFarEnough(*last, *place, 2 * radius))) {
                if (erase) plain.Stamp(PC_Dsp::Circle_Gradient_Alpha, radius, place->x(), place->y(), true, 0.0, false);
                last = place;
                changed |= !StampedPart(*place, 2 * radius, run.size).isEmpty();
            }
            at += QPoint(run.Draw(-40, 40), run.Draw(-30, 30));
            if (moves > 0) run.logic.MoveStroke(at);
        }
        run.logic.EndStroke(nullptr);
        run.logic.CommitStep();
        if (erase)
            run.model.picture = plain.working;
        else if (!discs.empty())
            run.model.picture = PlainRepair::WithoutCircles(run.model.picture, discs, 2 * radius, strength);
        if (changed) run.model.Push();
    });
}
