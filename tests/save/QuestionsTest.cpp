// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QFile>
#include <QtTest/QTest>

#include "AppPaths.h"
#include "CSaveMessageBox.h"
#include "CSizeAdjustDlg.h"
#include "IniFile.h"
#include "Language.h"
#include "SaveFixture.h"

namespace {

using Act = std::function<void(QWidget&)>;

class Questions : public SaveWindow {
  protected:
    void SetUp() override {
        SaveWindow::SetUp();
        QFile::remove(Config());
    }
    static QString Config() { return AppPath(QStringLiteral("Config.ini")); }
    static int StoredSize() {
        return GetProfileInt(QStringLiteral("Tip"), QStringLiteral("DlgOpenImageLessen"), -1, Config());
    }

    int SaveQuestion(const Act& act) {
        m_script.On<CSaveMessageBox>([=](CSaveMessageBox& box) { act(box); });
        return AskSaveFirst(&m_owner);
    }
    SizeAnswer SizeQuestion(const Act& act) {
        m_script.On<CSizeAdjustDlg>([=](CSizeAdjustDlg& box) { act(box); });
        return AskSizeAdjust(&m_owner);
    }
};

Act Press(const char* name) {
    return [=](QWidget& window) { Click(window, name); };
}

Act Key(Qt::Key key) {
    return [=](QWidget& window) { QTest::keyClick(window.focusWidget() ? window.focusWidget() : &window, key); };
}

void CloseByWindowManager(QWidget& window) {
    window.close();
}

Act CheckedThen(const Act& act) {
    return [=](QWidget& window) {
        Click(window, "OptCheck");
        act(window);
    };
}

}  // namespace

TEST_F(Questions, SaveFirstIsSix) {
    EXPECT_EQ(SaveQuestion(Press("BtnSave")), 6);
    EXPECT_EQ(SaveQuestion(Key(Qt::Key_Return)), 6);
}

TEST_F(Questions, GoingOnWithoutSavingIsSeven) {
    EXPECT_EQ(SaveQuestion(Press("BtnCancel")), 7);
}

TEST_F(Questions, CloseBoxEscAndWindowManagerAreNeither) {
    for (const Act& act : {Press("BtnClose"), Key(Qt::Key_Escape), Act(CloseByWindowManager)}) {
        const int result = SaveQuestion(act);
        EXPECT_NE(result, 6);
        EXPECT_NE(result, 7);
    }
}

TEST_F(Questions, SaveQuestionIsNamedAndTitled) {
    SaveQuestion([&](QWidget& window) {
        EXPECT_EQ(window.windowTitle(), QStringLiteral("SaveDlg"));
        EXPECT_EQ(window.objectName(), QStringLiteral("SaveMessageBox"));
        EXPECT_LE((window.frameGeometry().center() - m_owner.frameGeometry().center()).manhattanLength(), 4);
        Click(window, "BtnClose");
    });
}

TEST_F(Questions, SizeAnswersWithoutTheCheckAreNotStored) {
    EXPECT_EQ(SizeQuestion(Press("BtnYes")), SizeAnswer::Reduce);
    EXPECT_EQ(SizeQuestion(Key(Qt::Key_Return)), SizeAnswer::Reduce);
    EXPECT_EQ(SizeQuestion(Press("BtnNot")), SizeAnswer::Keep);
    EXPECT_EQ(StoredSize(), -1);
}

TEST_F(Questions, SizeAnswersWithTheCheckAreStored) {
    EXPECT_EQ(SizeQuestion(CheckedThen(Press("BtnYes"))), SizeAnswer::Reduce);
    EXPECT_EQ(StoredSize(), 1);
    EXPECT_EQ(SizeQuestion(CheckedThen(Press("BtnNot"))), SizeAnswer::Keep);
    EXPECT_EQ(StoredSize(), 2);
}

TEST_F(Questions, CheckingTwiceIsNotChecked) {
    EXPECT_EQ(SizeQuestion(CheckedThen(CheckedThen(Press("BtnYes")))), SizeAnswer::Reduce);
    EXPECT_EQ(StoredSize(), -1);
}

TEST_F(Questions, ClosingTheSizeQuestionKeepsTheSizeAndStoresNothing) {
    for (const Act& act : {Press("BtnClose"), Key(Qt::Key_Escape), Act(CloseByWindowManager)})
        EXPECT_EQ(SizeQuestion(CheckedThen(act)), SizeAnswer::Keep);
    EXPECT_EQ(StoredSize(), -1);
}

TEST_F(Questions, BothLanguagesHaveBothQuestions) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        EXPECT_EQ(SaveQuestion(Press("BtnCancel")), 7) << language;
        EXPECT_EQ(SizeQuestion(Press("BtnYes")), SizeAnswer::Reduce) << language;
    }
}
