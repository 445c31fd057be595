// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QStackedWidget>

#include "FrameFixture.h"
#include "ToyTool.h"

namespace {

// Where each tool lies in the left column, and the pages of two.
constexpr ToolFacts Placed(int number, Section section, const char* tab, const char* button = "",
                           const char* page = "") {
    return {number, section, tab, button, page, "", "", ""};
}
constexpr ToolFacts AllTools[] = {
    Placed(1, SectionBasic, "btnTab1", "", "AdjustLayout"),
    Placed(2, SectionBasic, "btnTab2", "BtnCaiJian"),
    Placed(3, SectionBasic, "btnTab2", "BtnXuanZhuan"),
    Placed(4, SectionBasic, "btnTab2", "BtnXiuGaiChiCun"),
    Placed(5, SectionBasic, "btnTab3"),
    Placed(6, SectionBasic, "btnTab4"),
    Placed(7, SectionEffects, "", "", "LeftLayout_TeXiao"),
    Placed(8, SectionBeauty, "BtnMeiYan"),
    Placed(9, SectionBeauty, "BtnPiFu"),
    Placed(10, SectionBeauty, "BtnPiFu"),
    Placed(11, SectionBeauty, "BtnPiFu"),
    Placed(12, SectionBeauty, "BtnEyes"),
    Placed(13, SectionBeauty, "BtnEyes"),
    Placed(14, SectionBeauty, "BtnEyes"),
    Placed(15, SectionBeauty, "BtnEyes"),
    Placed(16, SectionBeauty, "BtnSouShen"),
    Placed(17, SectionBeauty, "BtnMouth"),
    Placed(18, SectionBeauty, "BtnMouth"),
};

// All tools there are, as toys, so that every tab of the left column works.
class Sections : public FrameTest {
  protected:
    void SetUp() override {
        FrameTest::SetUp();
        std::vector<ToolRow> rows;
        for (const ToolFacts& facts : AllTools) {
            const int number = facts.number;
            ToolRow row;
            row.facts = facts;
            row.makeCanvas = [this, number](QWidget* parent, ToolHost& host) -> CBaseWnd* {
                return new ToyTool(host, number, parent, m_told);
            };
            row.makePanel = [this](QWidget* parent, ToolHost& host) -> CToolPanel* {
                return new ToyPanel(host, parent, m_panelTold);
            };
            rows.push_back(row);
        }
        Show(Photo(), ToolTable(rows));
    }
    static int Page(const char* stack) {
        return qobject_cast<QStackedWidget*>(Driver::Find(QLatin1String(stack)))->currentIndex();
    }
    QStringList m_told;
    QStringList m_panelTold;
};

struct TabCase {
    const char* button;
    const char* stack;
    int page;
    int tool;
    const char* code;
};

}  // namespace

TEST_F(Sections, TheCaptionsOptionsChooseSectionPageAndTool) {
    Driver::Click(QStringLiteral("btnTexiao"));
    EXPECT_EQ(Page("TabLayoutLeft"), 1);
    EXPECT_EQ(Mid().Tool(), 7);
    EXPECT_EQ(Clicks("88803"), 1);
    EXPECT_EQ(Driver::Find(QStringLiteral("HorizontalLayoutUI6"))->property("bkimage").toString(),
              QStringLiteral("dest='150,7,300,40'"));
    Driver::Click(QStringLiteral("btnMeiRong"));
    EXPECT_EQ(Page("TabLayoutLeft"), 2);
    EXPECT_EQ(Mid().Tool(), 8);
    EXPECT_EQ(Clicks("88804"), 1);
    Driver::Click(QStringLiteral("btnJichubianji"));
    EXPECT_EQ(Page("TabLayoutLeft"), 0);
    EXPECT_EQ(Mid().Tool(), 1);
    EXPECT_EQ(Clicks("88802"), 1);
}

TEST_F(Sections, TabsOfBasicEditingEnterTheirTools) {
    for (const TabCase& tab : {TabCase{"btnTab2", "TabLayoutUI_JiChu", 1, 2, ""},
                               {"BtnXuanZhuan", "TabLayoutUI_Edit", 1, 3, ""},
                               {"BtnXiuGaiChiCun", "TabLayoutUI_Edit", 2, 4, ""},
                               {"BtnCaiJian", "TabLayoutUI_Edit", 0, 2, ""},
                               {"btnTab3", "TabLayoutUI_JiChu", 2, 5, ""},
                               {"btnTab4", "TabLayoutUI_JiChu", 3, 6, ""},
                               {"btnTab1", "TabLayoutUI_JiChu", 0, 1, ""}}) {
        Driver::Click(QLatin1String(tab.button));
        EXPECT_EQ(Page(tab.stack), tab.page) << tab.button;
        EXPECT_EQ(Mid().Tool(), tab.tool) << tab.button;
    }
}

TEST_F(Sections, TheEditTabReturnsToItsLastToolAndItsPage) {
    Driver::Click(QStringLiteral("btnTab2"));
    EXPECT_EQ(Mid().Tool(), 2) << "crop is the first";
    Driver::Click(QStringLiteral("BtnXiuGaiChiCun"));
    ASSERT_EQ(Mid().Tool(), 4);
    Driver::Click(QStringLiteral("btnTab1"));
    Driver::Click(QStringLiteral("btnTab2"));
    EXPECT_EQ(Mid().Tool(), 4);
    EXPECT_EQ(Page("TabLayoutUI_Edit"), 2);
    Driver::Click(QStringLiteral("btnTexiao"));
    Driver::Click(QStringLiteral("btnJichubianji"));
    EXPECT_EQ(Mid().Tool(), 1) << "a section begins with its first tab";
    Driver::Click(QStringLiteral("btnTab2"));
    EXPECT_EQ(Mid().Tool(), 4);
    // Coming back to the tab while one of its tools is on show keeps tool and page.
    Driver::Click(QStringLiteral("btnTab2"));
    EXPECT_EQ(Mid().Tool(), 4);
    EXPECT_EQ(Page("TabLayoutUI_Edit"), 2);
}

TEST_F(Sections, TabsOfBeautyCountTheirClicks) {
    Driver::Click(QStringLiteral("btnMeiRong"));
    for (const TabCase& tab : {TabCase{"BtnPiFu", "TabLayoutUI_MeiRong", 1, 9, "8880402"},
                               {"BtnEyes", "TabLayoutUI_MeiRong", 2, 12, "8880403"},
                               {"BtnSouShen", "TabLayoutUI_MeiRong", 3, 16, "8880404"},
                               {"BtnMouth", "TabLayoutUI_MeiRong", 4, 17, "8880405"},
                               {"BtnMeiYan", "TabLayoutUI_MeiRong", 0, 8, "8880401"}}) {
        Driver::Click(QLatin1String(tab.button));
        EXPECT_EQ(Page(tab.stack), tab.page) << tab.button;
        EXPECT_EQ(Mid().Tool(), tab.tool) << tab.button;
        EXPECT_EQ(Clicks(tab.code), 1) << tab.button;
    }
}

TEST_F(Sections, ComingBackToASectionShowsItsFirstTab) {
    Driver::Click(QStringLiteral("btnTab3"));
    Driver::Click(QStringLiteral("btnMeiRong"));
    Driver::Click(QStringLiteral("BtnMouth"));
    Driver::Click(QStringLiteral("btnJichubianji"));
    EXPECT_EQ(Page("TabLayoutUI_JiChu"), 0);
    EXPECT_EQ(Mid().Tool(), 1);
    Driver::Click(QStringLiteral("btnMeiRong"));
    EXPECT_EQ(Page("TabLayoutUI_MeiRong"), 0);
    EXPECT_EQ(Mid().Tool(), 8);
}

TEST_F(Sections, ThePanelOfALeftToolIsToldToStopItsWorkers) {
    m_panelTold.clear();
    Driver::Click(QStringLiteral("btnTexiao"));
    EXPECT_TRUE(m_panelTold.contains(QStringLiteral("0x7f3")));
    m_panelTold.clear();
    ASSERT_TRUE(Frame().OpenFile(Mid().HeldPath()));
    EXPECT_EQ(m_panelTold, QStringList({QStringLiteral("0x7f3"), QStringLiteral("0x7ef")}))
        << "opening stops the workers first and then tells of the picture";
}

TEST_F(Sections, ShortcutsChooseSections) {
    Driver::Key(Qt::Key_F3);
    EXPECT_EQ(Mid().Tool(), 7);
    Driver::Key(Qt::Key_F4);
    EXPECT_EQ(Mid().Tool(), 8);
    Driver::Key(Qt::Key_F2);
    EXPECT_EQ(Mid().Tool(), 1);
}
