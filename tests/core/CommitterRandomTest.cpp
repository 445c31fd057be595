// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <sstream>

#include "AppPaths.h"
#include "RandomRun.h"
#include "ToyTool.h"

using namespace HistorySteps;

namespace {

enum Kind { Slide, SlideAndCommit, Bake, FailedCommit, UndoMove, RedoMove, Jump, Revert, NextTool, FailedLeave };
const std::vector<std::string> KindNames{"slide", "slideAndCommit", "bake",   "failedCommit", "undo",
                                         "redo",  "jump",           "revert", "nextTool",     "failedLeave"};

// What the user sees: a list of pictures, where in it one stands, and what is not in it yet.
struct Session {
    struct Step {
        std::int64_t picture;
        bool hasSlider;
        // Its pixels are those of the opened picture's file.
        bool onOrigin;
    };
    // How a step gets its pixels: in a file of its own, or in that of the step it stands on.
    enum class Pixels { Own, Shared };

    std::vector<Step> steps{{1000, false, true}};
    std::size_t at = 0;
    std::int64_t shown = 1000;
    bool open = false;
    // Left but not yet in a file: pictures, and whether each belongs over the current step.
    std::vector<std::pair<std::int64_t, bool>> owed;

    bool IsOriginal() const {
        if (!owed.empty()) return false;
        return steps.size() == 1 || (steps[at].onOrigin && !steps[at].hasSlider);
    }
    void Commit(bool hasSlider, Pixels pixels) {
        const Step step{shown, hasSlider, pixels == Pixels::Shared && steps[at].onOrigin};
        if (open)
            steps[at] = step;
        else
            Push(step);
        open = true;
    }
    void Push(const Step& step) {
        steps.resize(at + 1);
        steps.push_back(step);
        if (steps.size() > 31) steps.erase(steps.begin());
        at = steps.size() - 1;
        open = false;
    }
    void Pay() {
        for (const auto& [picture, over] : std::exchange(owed, {})) {
            if (over)
                steps[at] = {picture, false, false};
            else
                Push({picture, false, false});
        }
    }
    void Show(std::size_t to) {
        at = to;
        shown = steps[at].picture;
        open = steps[at].hasSlider;
    }
};

class Player {
  public:
    explicit Player(CHistoryManager& history) : m_history(history) {
        m_history.OpenImage(Colour(1000));
        m_tool = std::make_unique<ToyTool>(m_history);
    }

    std::string Play(const RandomRun::Move& move) {
        const int value = static_cast<int>(move.argument % 7);
        switch (move.kind) {
            case Slide:
                SlideTo(value);
                break;
            case SlideAndCommit:
                SlideTo(value);
                Commit();
                m_tool->committer.Commit();
                break;
            case Bake:
                m_tool->Bake();
                break;
            case FailedCommit:
                return FailToCommit(value);
            case UndoMove:
                Commit();
                if (m_session.at > 0) m_session.Show(m_session.at - 1);
                m_tool->committer.Undo();
                break;
            case RedoMove:
                // What no step holds would be gone: redo waits for it.
                if (!Unrecorded() && m_session.owed.empty() && m_session.at + 1 < m_session.steps.size())
                    m_session.Show(m_session.at + 1);
                m_tool->committer.Redo();
                break;
            case Jump:
                JumpToRow(static_cast<int>(move.argument % m_session.steps.size()));
                break;
            case Revert:
                RevertPicture();
                break;
            case FailedLeave:
                return FailToLeave();
            default:
                return EnterNextTool();
        }
        return Compare();
    }

  private:
    bool Pending() const { return m_tool->BuildStep(false) != nullptr; }
    bool Unrecorded() const { return m_tool->HasWork() && !m_tool->IsRecorded(); }
    void PayOwed() {
        if (m_session.owed.empty()) return;
        m_session.Pay();
        m_writeFailed = false;
    }
    void Commit() {
        PayOwed();
        if (!Pending() || (m_session.open && m_tool->IsRecorded())) return;
        const bool own = m_tool->baked || m_writeFailed;
        m_session.Commit(m_tool->value != 0, own ? Session::Pixels::Own : Session::Pixels::Shared);
        if (own) m_writeFailed = false;
    }
    void CommitFinal() {
        PayOwed();
        if (!m_tool->BuildStep(true)) return;
        m_session.Commit(false, Session::Pixels::Own);
        m_writeFailed = false;
    }

    void SlideTo(int value) {
        m_tool->Slide(value);
        m_session.shown = m_tool->Result();
    }

    // A commit that has no file to write succeeds all the same; else everything stays.
    std::string FailToCommit(int value) {
        SlideTo(value);
        const bool owes = !m_session.owed.empty();
        const bool mustFail = owes || (Pending() && (m_tool->baked || m_writeFailed));
        if (!mustFail) Commit();
        {
            const UnwritableFiles blocked(m_history);
            if ((m_tool->committer.Commit() == CommitResult::Failed) != mustFail) return "a commit ended differently";
        }
        if (!mustFail) return Compare();
        m_writeFailed = true;
        return m_tool->Result() == m_session.shown ? "" : "a failed commit changed the picture";
    }

    void JumpToRow(int row) {
        const std::size_t before = m_session.steps.size();
        const bool drops = before == 31 && m_session.at == before - 1 && !m_session.open && Pending();
        Commit();
        const int to = drops ? row - 1 : row;
        if (to >= 0 && to < static_cast<int>(m_session.steps.size()) && to != static_cast<int>(m_session.at))
            m_session.Show(static_cast<std::size_t>(to));
        m_tool->committer.Jump(row);
    }

    void RevertPicture() {
        CommitFinal();
        if (!m_session.IsOriginal()) {
            m_session.Push({1000, false, true});
            m_session.shown = 1000;
        }
        m_tool->committer.Revert();
    }

    // Of a tool without work.
    bool LeavingFinishesTheStepAhead() const {
        return m_session.owed.empty() && m_session.at + 1 < m_session.steps.size() && m_session.steps.back().hasSlider;
    }

    // The picture on show goes on to the next tool though no step can hold it yet.
    std::string FailToLeave() {
        if (m_tool->BuildStep(true)) {
            if (!m_session.owed.empty() && !m_session.owed.back().second) m_session.owed.pop_back();
            m_session.owed.emplace_back(m_session.shown, m_session.open);
            m_writeFailed = true;
        } else if (LeavingFinishesTheStepAhead()) {
            m_writeFailed = true;
        }
        {
            const UnwritableFiles blocked(m_history);
            m_tool->Leave();
        }
        if (m_history.Owes() == m_session.owed.empty()) return "what is owed differs";
        m_tool = std::make_unique<ToyTool>(m_history);
        m_session.open = false;
        return Compare();
    }

    // The left tool's steps must make sense to one that knows none of its records.
    std::string EnterNextTool() {
        CommitFinal();
        if (!m_tool->BuildStep(true) && LeavingFinishesTheStepAhead()) m_writeFailed = false;
        if (!m_tool->Leave()) return "leaving failed";
        m_tool = std::make_unique<ToyTool>(m_history);
        m_session.open = false;
        FinishSteps();
        for (int no = 1; no <= static_cast<int>(m_session.steps.size()); ++no)
            if (StepAt(m_history, no).Params().size() != 1) return "a step in reach still holds the tool's record";
        return Compare();
    }

    // No step in reach keeps a record of a tool that was left.
    void FinishSteps() {
        for (Session::Step& step : m_session.steps) {
            if (step.hasSlider) step.onOrigin = false;
            step.hasSlider = false;
        }
    }

    std::string Compare() {
        std::ostringstream text;
        if (m_history.IsOriginal() != m_session.IsOriginal()) text << "IsOriginal differs; ";
        if (m_tool->committer.StepOpen() != m_session.open) text << "StepOpen differs; ";
        if (m_tool->Result() != m_session.shown)
            text << "shows " << m_tool->Result() << ", not " << m_session.shown << "; ";
        // m_count may still be raised by a push that failed; the list of names never is.
        const std::size_t count = m_history.GetStepNames().size();
        if (count != m_session.steps.size())
            text << count << " steps, not " << m_session.steps.size() << "; ";
        else if (m_history.m_ring[m_history.m_current].get() != &StepAt(m_history, static_cast<int>(m_session.at) + 1))
            text << "not at " << m_session.at << "; ";
        else
            for (std::size_t i = 0; i < m_session.steps.size(); ++i) {
                ToyTool viewer(m_history);
                if (!viewer.LoadStep(StepAt(m_history, static_cast<int>(i) + 1).Clone())) text << i << " unreadable; ";
                if (viewer.Result() != m_session.steps[i].picture)
                    text << "step " << i << " shows " << viewer.Result() << ", not " << m_session.steps[i].picture
                         << "; ";
            }
        return text.str();
    }

    CHistoryManager& m_history;
    std::unique_ptr<ToyTool> m_tool;
    Session m_session;
    bool m_writeFailed = false;
};

class CommitterRandom : public testing::TestWithParam<unsigned> {
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

TEST_P(CommitterRandom, EveryStepShowsWhatWasOnShowWhenItWasCommitted) {
    Run({2, 8, 2, 0, 5, 4, 2, 1, 4}, 1500);
}

TEST_P(CommitterRandom, FailedCommitsLoseNothing) {
    Run({2, 6, 3, 3, 5, 4, 2, 1, 4}, 1500);
}

TEST_P(CommitterRandom, PicturesOfToolsThatWereLeftWithoutARecordAreNotLost) {
    Run({2, 6, 2, 1, 5, 4, 2, 1, 4, 3}, 1500);
}

TEST_P(CommitterRandom, RowsStayRightWhenACommitDropsTheOldestStep) {
    Run({10, 2, 0.5, 0, 0.1, 0.5, 0.4, 0.1, 10}, 1500);
}

INSTANTIATE_TEST_SUITE_P(Seeds, CommitterRandom, testing::Values(4u, 50u, 600u));

}  // namespace
