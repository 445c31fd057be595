// SPDX-License-Identifier: GPL-3.0-or-later
// Random drags, clicks, brushes, zooms, moves in the history and changes between the two tools, against the scalar twin
// and a plain list of steps, pixel for pixel.
#include <random>

#include "ShapeVisit.h"
#include "TestHome.h"
#include "TestPictures.h"

namespace {

constexpr QSize Size(110, 80);

class Session {
  public:
    Session(unsigned seed)
        : m_random(seed),
          m_picture(TestPictures::Noise(Size.width(), Size.height(), seed)),
          m_steps{{m_picture, true}} {
        m_history.OpenImage(m_picture);
        m_history.SetCurrentBitmap(m_picture);
        for (WarpLogic* tool : {&Slim(), &Eye()}) tool->SetViewSize(150, 120);
        Slim().SetSource(m_picture);
        m_slimTwin.Take(m_picture);
    }

    int Draw(int low, int high) { return std::uniform_int_distribution(low, high)(m_random); }
    std::size_t Steps() const { return m_steps.size(); }

    void Act() {
        switch (Draw(0, 11)) {
            case 0:
                Tool().SetZoom(Draw(20, 400) / 100.0);
                break;
            case 1:
                Tool().FitToWindow();
                break;
            case 2:
                Tool().PanBy(Draw(-60, 60), Draw(-60, 60));
                break;
            case 3:
                Tool().SetPenSize(Draw(1, 90));
                Tool().SetStrength(Draw(0, 100));
                break;
            case 4:
                Change();
                break;
            case 5:
                Undo();
                break;
            case 6:
                if (Tool().Redo()) Go(m_current + 1);
                break;
            case 7:
                Jump();
                break;
            case 8:
                if (Draw(0, 3) == 0) Revert();
                break;
            default:
                Stroke();
        }
    }
    void Compare() {
        ASSERT_TRUE(Tool().RenderResult() == Twin().Expected());
        ASSERT_EQ(m_history.m_count, static_cast<int>(m_steps.size()));
        ASSERT_EQ(m_history.m_currentNo, static_cast<int>(m_current) + 1);
        ASSERT_FALSE(Tool().HasUnrecorded());
    }

  private:
    WarpLogic& Slim() { return m_slim; }
    WarpLogic& Eye() { return m_eye; }
    WarpLogic& Tool() { return m_onSlim ? Slim() : Eye(); }
    ShapeVisit& Twin() { return m_onSlim ? m_slimTwin : m_eyeTwin; }

    void Stroke() {
        const QRect place = Tool().Geometry().ScreenRect();
        QPoint at(Draw(place.left(), place.right()), Draw(place.top(), place.bottom()));
        std::vector<QPoint> places{at};
        for (int moves = Draw(0, 9); moves > 0; --moves) places.push_back(at += QPoint(Draw(-25, 25), Draw(-20, 20)));
        if (!Twin().Stroke(places)) return;
        m_steps.resize(++m_current);
        m_steps.push_back({Twin().Expected(), false});
    }
    void Change() {
        const Bitmap result = Twin().Expected();
        Tool().Apply();
        m_onSlim = !m_onSlim;
        Tool().Reset();
        ASSERT_TRUE(Tool().TakeViewState());
        Twin().Take(result);
    }
    void Go(std::size_t index) {
        m_current = index;
        Twin().Take(m_steps[index].picture);
    }
    void Undo() {
        EXPECT_EQ(Tool().Undo(), m_current > 0);
        if (m_current > 0) Go(m_current - 1);
    }
    void Jump() {
        const auto row = static_cast<std::size_t>(Draw(0, static_cast<int>(m_steps.size()) - 1));
        Tool().Jump(static_cast<int>(row));
        if (row != m_current) Go(row);
    }
    void Revert() {
        Tool().Revert();
        if (m_steps[m_current].original) return;
        m_steps.resize(++m_current);
        m_steps.push_back({m_picture, true});
        Go(m_current);
    }

    struct Step {
        Bitmap picture;
        bool original;
    };
    std::mt19937 m_random;
    const Bitmap m_picture;
    CHistoryManager m_history{TestHome::Path() + QStringLiteral("/Temp/RandomShape/")};
    CShouLianSSLogic m_slim{m_history};
    CYanJingFDLogic m_eye{m_history};
    ShapeVisit m_slimTwin{m_slim, true}, m_eyeTwin{m_eye, false};
    bool m_onSlim = true;
    std::vector<Step> m_steps;
    std::size_t m_current = 0;
};

}  // namespace

TEST(ShapeRandom, BothToolsEqualTheirTwin) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        Session run(seed);
        for (int act = 0; act < 45 && run.Steps() < 29; ++act) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", act " << act);
            run.Act();
            ASSERT_NO_FATAL_FAILURE(run.Compare());
        }
    }
}
