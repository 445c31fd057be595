// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <map>
#include <QtCore/QFile>
#include <sstream>

#include "AppPaths.h"
#include "HistorySteps.h"
#include "RandomRun.h"

using namespace HistorySteps;

namespace {

constexpr std::int64_t OriginColour = 4242;

enum Kind {
    PushSnapshot,
    PushParameters,
    OverCurrent,
    OverCurrentParameters,
    OverHead,
    OverHeadParameters,
    UndoMove,
    RedoMove,
    Jump,
    Revert,
    FailedPush,
    FailedOverCurrent,
    KindCount,
};
const std::vector<std::string> KindNames{
    "push", "pushParameters", "overCurrent", "overCurrentParameters", "overHead", "overHeadParameters", "undo", "redo",
    "jump", "revert",         "failedPush",  "failedOverCurrent"};

// The history as a plain list of steps, each with its pixels.
struct Model {
    struct Step {
        QString name;
        std::int64_t colour;
        bool onlyOrigin;
        std::size_t records;
    };
    std::vector<Step> steps{{QStringLiteral("ids_openimage!"), OriginColour, true, 1}};
    std::size_t at = 0;

    void Push(Step step) {
        steps.resize(at + 1);
        steps.push_back(std::move(step));
        if (steps.size() > 31) steps.erase(steps.begin());
        at = steps.size() - 1;
    }
    bool IsOriginal() const { return steps.size() == 1 || steps[at].onlyOrigin; }
};

class Player {
  public:
    explicit Player(CHistoryManager& history) : m_history(history) { m_history.OpenImage(Colour(OriginColour)); }

    std::string Play(const RandomRun::Move& move) {
        const std::int64_t colour = ++m_lastColour;
        switch (move.kind) {
            case PushSnapshot:
                return Store(&CHistoryManager::PushStep, Made(colour, false), colour, false);
            case PushParameters:
                return StoreParameters(&CHistoryManager::PushStep, m_model.at);
            case OverCurrent:
                return Store(&CHistoryManager::PushOverCurrent, Made(colour, false), colour, false);
            case OverCurrentParameters:
                return StoreParameters(&CHistoryManager::PushOverCurrent, m_model.at);
            case OverHead:
                return Store(&CHistoryManager::PushOverHead, Made(colour, false), colour, false);
            case OverHeadParameters:
                return StoreParameters(&CHistoryManager::PushOverHead, m_model.steps.size() - 1);
            case UndoMove:
                return Moved(m_history.Undo(), m_model.at > 0, m_model.at - 1);
            case RedoMove:
                return Moved(m_history.Redo(), m_model.at + 1 < m_model.steps.size(), m_model.at + 1);
            case Jump:
                return JumpTo(static_cast<int>(move.argument % 35));
            case Revert:
                return RevertToOrigin();
            case FailedPush:
                return Fail(&CHistoryManager::PushStep, colour, true);
            default:
                return Fail(&CHistoryManager::PushOverCurrent, colour, false);
        }
    }

  private:
    using PushKind = bool (CHistoryManager::*)(std::unique_ptr<CHistoryStep>&);

    std::unique_ptr<CHistoryStep> Made(std::int64_t colour, bool parameters) {
        const Bitmap picture = Colour(static_cast<std::uint32_t>(colour));
        auto step = parameters ? Parameters(picture) : Snapshot(picture);
        step->SetNameFromKey(parameters ? QStringLiteral("ids_bianji") : QStringLiteral("ids_caijian"));
        return step;
    }

    std::string Store(PushKind push, std::unique_ptr<CHistoryStep> step, std::int64_t colour, bool parameters) {
        const Model::Step expected{step->GetName(), colour, false, step->Params().size()};
        if (!(m_history.*push)(step)) return "a step was refused";
        if (push == &CHistoryManager::PushStep)
            m_model.Push(expected);
        else
            m_model.steps[push == &CHistoryManager::PushOverCurrent ? m_model.at : m_model.steps.size() - 1] = expected;
        // A tool whose work failed to be written keeps it as its base until a step with that base is stored.
        if (!parameters || colour == m_baseInNoFile) m_baseInNoFile = -1;
        return Compare();
    }

    // The tool's base is what the step that it stands on shows, or work that could not be written.
    std::string StoreParameters(PushKind push, std::size_t standsOn) {
        const std::int64_t base = m_baseInNoFile >= 0 ? m_baseInNoFile : m_model.steps[standsOn].colour;
        return Store(push, Made(base, true), base, true);
    }

    std::string Moved(bool moved, bool expected, std::size_t to) {
        if (moved != expected) return "a move went differently";
        if (moved) m_model.at = to;
        m_baseInNoFile = -1;
        return Compare();
    }

    std::string JumpTo(int stepNo) {
        const bool can = stepNo >= 1 && stepNo <= static_cast<int>(m_model.steps.size()) &&
                         stepNo != static_cast<int>(m_model.at) + 1;
        const auto step = m_history.JumpTo(stepNo);
        if (step && ColourOf(step->ReadImage()) != m_model.steps[stepNo - 1].colour)
            return "the clone reads other pixels";
        return Moved(step != nullptr, can, static_cast<std::size_t>(stepNo - 1));
    }

    std::string RevertToOrigin() {
        if (m_history.IsOriginal()) return CompareRing();
        auto step = m_history.MakeRevertStep();
        if (!m_history.PushStep(step)) return "a revert was refused";
        m_model.Push({QStringLiteral("ids_originalimage!"), OriginColour, true, 1});
        m_baseInNoFile = -1;
        return Compare();
    }

    std::string Fail(PushKind push, std::int64_t colour, bool raises) {
        auto step = Made(colour, false);
        {
            const UnwritableFiles blocked(m_history);
            if ((m_history.*push)(step) || !step) return "a push that could not be written was taken";
        }
        const int raised = static_cast<int>(m_model.at) + 2;
        if (raises && (m_history.m_count != raised || m_history.m_currentNo != raised)) return "counts are not raised";
        m_baseInNoFile = colour;
        return CompareRing();
    }

    std::string Compare() {
        const int count = static_cast<int>(m_model.steps.size()), no = static_cast<int>(m_model.at) + 1;
        std::ostringstream text;
        if (m_history.m_count != count) text << "count " << m_history.m_count << ", not " << count;
        if (m_history.m_currentNo != no) text << "at " << m_history.m_currentNo << ", not " << no;
        return text.str().empty() ? CompareRing() : text.str();
    }

    std::string CompareRing() {
        std::ostringstream text;
        std::vector<QString> names;
        for (const Model::Step& step : m_model.steps) names.push_back(step.name);
        if (m_history.GetStepNames() != names) return "other names";
        if (m_history.IsOriginal() != m_model.IsOriginal()) return "IsOriginal differs";
        if (m_history.m_ring[m_history.m_current].get() != &StepAt(m_history, static_cast<int>(m_model.at) + 1))
            return "m_current is another step";
        std::map<QString, std::int64_t> files;
        for (std::size_t i = 0; i < m_model.steps.size(); ++i) {
            const CHistoryStep& step = StepAt(m_history, static_cast<int>(i) + 1);
            const std::int64_t colour = m_model.steps[i].colour;
            if (step.Params().size() != m_model.steps[i].records) text << "step " << i << " has other records";
            if (!QFile::exists(step.GetImagePath())) text << "step " << i << " has no file; ";
            if (files.try_emplace(step.GetImagePath(), colour).first->second != colour)
                text << "step " << i << " shares a file with another picture; ";
            if (const std::int64_t read = ColourOf(step.ReadImage()); read != colour)
                text << "step " << i << " reads " << read << ", not " << colour << "; ";
            if (step.Image()->image) text << "step " << i << " holds a bitmap; ";
        }
        return text.str();
    }

    CHistoryManager& m_history;
    Model m_model;
    std::int64_t m_lastColour = 10000;
    std::int64_t m_baseInNoFile = -1;
};

class HistoryRandom : public testing::TestWithParam<unsigned> {
  protected:
    void Run(const std::vector<double>& weights, int count) {
        unsigned seed = GetParam();
        const auto moves = RandomRun::Make(seed, count, weights);
        CHistoryManager history(AppPath(QStringLiteral("Temp/UndoTemp")));
        Player player(history);
        RandomRun::Play(seed, moves, KindNames, [&](const RandomRun::Move& move) { return player.Play(move); });
        history.Reset();
    }
};

TEST_P(HistoryRandom, TellsTheSameAsAPlainListWhateverTheSequence) {
    Run({10, 8, 4, 4, 2, 2, 8, 6, 3, 2, 0, 0}, 2500);
}

TEST_P(HistoryRandom, TellsTheSameAlsoWhenPushesFail) {
    Run({10, 8, 4, 4, 2, 2, 8, 6, 3, 2, 2, 1}, 2000);
}

TEST_P(HistoryRandom, LongWaysBackAndManyVersionsOfOneStepReuseNoFileInReach) {
    Run({4, 1, 12, 1, 6, 1, 4, 1, 4, 0.2, 0.5, 0.5}, 2000);
}

INSTANTIATE_TEST_SUITE_P(Seeds, HistoryRandom, testing::Values(1u, 20u, 300u));

}  // namespace
