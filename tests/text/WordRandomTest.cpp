// SPDX-License-Identifier: GPL-3.0-or-later
// Random acts against a plain model of the texts and of the history.
#include <algorithm>
#include <map>
#include <random>

#include "WordFixture.h"

namespace {

// What a text is, as far as the model knows it.
struct ModelText {
    QString text;
    QPointF place;
    double angle = 0;
    int size = 0;
    QRgb colour = 0;
    bool operator==(const ModelText&) const = default;
};
using ModelTexts = std::vector<ModelText>;

// The history as a list of states, of which the visit's own is overwritten.
struct Model {
    struct Step {
        ModelTexts texts;
        int burnt = 0;  // how many visits are burnt into the picture
    };
    std::vector<Step> steps{{}};
    std::size_t current = 0;
    bool open = false;
    ModelTexts texts;
    int selected = -1;
    int burnt = 0;
    std::vector<std::pair<ModelText, std::size_t>> deleted;

    void Commit() {
        if (!open) {
            steps.resize(current + 1);
            steps.push_back({});
            ++current;
            if (steps.size() > CHistoryManager::RingSize) {
                steps.erase(steps.begin());
                --current;
            }
        }
        open = true;
        steps[current] = {texts, burnt};
    }
    void Load() {
        texts = steps[current].texts;
        burnt = steps[current].burnt;
        open = !texts.empty();
        selected = -1;
        deleted.clear();
    }
};

ModelText StateOf(const StringParams& params) {
    return {params.GetText(), TextDrawing::PlaceOf(params), params.GetAngle(), static_cast<int>(params.GetFontSize()),
            params.GetColor()};
}

class WordRandom : public WordTest {
  protected:
    ModelTexts Shown() const {
        ModelTexts texts;
        for (int i = 0; i < logic.Count(); ++i) texts.push_back(StateOf(logic.Text(i)));
        return texts;
    }
    int Pick(int below) { return below <= 0 ? 0 : static_cast<int>(random() % static_cast<unsigned>(below)); }

    // One act in program and model; its name.
    const char* Act() {
        switch (Pick(12)) {
            case 0:
                return AddOne();
            case 1:
            case 2:
                return Drag();
            case 3:
                return Turn();
            case 4:
                return Restyle();
            case 5:
                return Delete();
            case 6:
                return Undo();
            case 7:
                logic.Redo();
                if (model.current + 1 < model.steps.size()) {
                    ++model.current;
                    model.Load();
                }
                return "redo";
            case 8:
                return Jump();
            case 9:
                return Leave();
            case 10:
                logic.RestoreDeleted();
                if (!model.deleted.empty()) {
                    const auto [text, place] = model.deleted.back();
                    model.deleted.pop_back();
                    model.texts.insert(model.texts.begin() + static_cast<std::ptrdiff_t>(place), text);
                    model.selected = static_cast<int>(place);
                    model.Commit();
                }
                return "restore";
            default:
                logic.Deselect();
                model.selected = -1;
                return "deselect";
        }
    }
    const char* AddOne() {
        WordStyle style = Style(QStringLiteral("t%1").arg(++serial), 20 + Pick(60));
        style.colour = static_cast<QRgb>(Pick(0x1000000));
        EXPECT_TRUE(logic.AddText(style));
        const ModelText added = StateOf(logic.Text(logic.Count() - 1));
        EXPECT_EQ(added.text, style.text);
        EXPECT_EQ(added.size, style.fontSize);
        EXPECT_EQ(added.colour, style.colour);
        model.texts.push_back(added);
        model.selected = static_cast<int>(model.texts.size()) - 1;
        model.deleted.clear();
        model.Commit();
        return "add";
    }
    // Presses a text where its body is on top; the model brings it to the top.
    bool PressOne() {
        if (logic.Count() == 0) return false;
        const int wanted = Pick(logic.Count());
        const QPoint at = Middle(wanted);
        if (logic.HitAt(at) != WordHit::Body) return false;
        logic.Press(at);
        const ModelText top = StateOf(logic.Text(logic.Count() - 1));
        const auto found = std::find(model.texts.begin(), model.texts.end(), top);
        EXPECT_NE(found, model.texts.end());
        moved = found + 1 != model.texts.end();
        std::rotate(found, found + 1, model.texts.end());
        model.selected = static_cast<int>(model.texts.size()) - 1;
        if (moved) model.deleted.clear();
        pressed = at;
        return true;
    }
    const char* Drag() {
        if (!PressOne()) return "no drag";
        const QPoint to(Pick(800) + 100, Pick(600) + 50);
        const bool changed = logic.MoveTo(to, false);
        const QPointF place = TextDrawing::PlaceOf(logic.Text(logic.Selected()));
        const QPointF free = model.texts.back().place + QPointF(to - pressed);
        EXPECT_NEAR(place.x(), free.x(), logic.AtMiddleX() ? 6.01 : 0.01);
        EXPECT_NEAR(place.y(), free.y(), logic.AtMiddleY() ? 6.01 : 0.01);
        logic.Release(to);
        model.texts.back().place = place;
        if (changed) model.deleted.clear();
        if (changed || moved) model.Commit();
        return "drag";
    }
    const char* Turn() {
        if (model.selected < 0) return "no turn";
        const int by = Pick(90) - 45;
        logic.TurnSelected(by);
        model.texts[static_cast<std::size_t>(model.selected)].angle += by;
        model.deleted.clear();
        model.Commit();
        return "turn";
    }
    const char* Restyle() {
        if (model.selected < 0) return "no restyle";
        auto& text = model.texts[static_cast<std::size_t>(model.selected)];
        const QString said = QStringLiteral("r%1").arg(++serial);
        const auto colour = static_cast<QRgb>(Pick(0x1000000));
        logic.ChangeSelected([&](StringParams& params) {
            params.SetText(said);
            params.SetColor(colour);
        });
        logic.CommitStep();
        text.text = said;
        text.colour = colour;
        text.place = TextDrawing::PlaceOf(logic.Text(model.selected));
        model.deleted.clear();
        model.Commit();
        return "restyle";
    }
    const char* Delete() {
        if (model.selected < 0) return "no delete";
        logic.DeleteSelected();
        const auto place = static_cast<std::size_t>(model.selected);
        model.deleted.emplace_back(model.texts[place], place);
        model.texts.erase(model.texts.begin() + model.selected);
        model.selected = -1;
        model.Commit();
        return "delete";
    }
    const char* Undo() {
        logic.Undo();
        if (model.current > 0) {
            --model.current;
            model.Load();
        }
        return "undo";
    }
    const char* Jump() {
        const int row = Pick(static_cast<int>(model.steps.size()));
        logic.Jump(row);
        if (row != static_cast<int>(model.current)) {
            model.current = static_cast<std::size_t>(row);
            model.Load();
        }
        return "jump";
    }
    // To another tool and back.
    const char* Leave() {
        logic.Apply();
        if (!model.texts.empty()) {
            model.Commit();
            model.steps[model.current] = {{}, ++serial};
            model.burnt = serial;
        }
        if (!model.steps.back().texts.empty()) model.steps.back() = {{}, ++serial};
        model.texts.clear();
        model.open = false;
        model.selected = -1;
        model.deleted.clear();
        logic.Reset();
        EXPECT_TRUE(logic.TakeViewState());
        return "leave";
    }
    void Compare() {
        ASSERT_EQ(Shown(), model.texts);
        ASSERT_EQ(logic.Selected(), model.selected);
        ASSERT_EQ(history.m_count, static_cast<int>(model.steps.size()));
        ASSERT_EQ(history.m_currentNo, static_cast<int>(model.current) + 1);
        ASSERT_EQ(logic.MayRestoreDeleted(), !model.deleted.empty());
        ASSERT_FALSE(logic.HasUnrecorded());
        for (int i = 0; i < logic.Count(); ++i) ASSERT_EQ(logic.Text(i).order, i + 1);
        // The picture without texts is the same whenever the same visits are burnt into it.
        const auto known = pictures.try_emplace(model.burnt, logic.Picture()).first;
        ASSERT_TRUE(known->second == logic.Picture());
    }

    std::mt19937 random;
    Model model;
    int serial = 0;
    QPoint pressed;
    bool moved = false;
    std::map<int, Bitmap> pictures;
};

}  // namespace

TEST_F(WordRandom, ARunOfRandomActsIsWhatTheModelSays) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        random.seed(seed);
        model = {};
        pictures.clear();
        Open(TestPictures::Face(800, 600, 0xFFD9A184, seed));
        std::string run;
        for (int i = 0; i < 120; ++i) {
            const char* act = Act();
            run += std::string(run.empty() ? "" : ", ") + act;
            SCOPED_TRACE("seed " + std::to_string(seed) + ": " + run);
            Compare();
            if (HasFatalFailure() || HasNonfatalFailure()) return;
        }
    }
}
