// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>

#include "AppPaths.h"
#include "CSliderCtrl.h"
#include "SaveFixture.h"

// The quality panel and the size estimate of the save window.
namespace {

bool PanelShown(const QWidget& window) {
    return Control(window, "HorLayHuaZhi").isVisible();
}

QString SizeShown(const QWidget& window) {
    return Control<QLabel>(window, "TextSaveSizeVal").text();
}

QString TrialFile(const char* suffix) {
    return AppPath(QStringLiteral("Temp/TempSaveImage")) + QLatin1String(suffix);
}

void DragTo(const QWidget& window, int value) {
    auto& slider = Control<CSliderCtrl>(window, "SliderHuaZhi");
    QTest::mousePress(&slider, Qt::LeftButton, {}, slider.HandleAt(slider.value()));
    QTest::mouseMove(&slider, slider.HandleAt(value));
}

void Release(const QWidget& window) {
    auto& slider = Control<CSliderCtrl>(window, "SliderHuaZhi");
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, slider.HandleAt(slider.value()));
}

}  // namespace

TEST_F(SaveWindow, QualityButtonShowsAndHidesThePanelAndEstimates) {
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        const QString before = SizeShown(window);
        EXPECT_FALSE(before.contains(QStringLiteral("KB")));
        Click(window, "BtnSaveHuaZhi");
        EXPECT_TRUE(PanelShown(window));
        EXPECT_TRUE(IsJpeg(TrialFile(".jpg")));
        EXPECT_EQ(SizeShown(window), SaveSizeText(static_cast<quint32>(QFileInfo(TrialFile(".jpg")).size())));
        Click(window, "BtnSaveHuaZhi");
        EXPECT_FALSE(PanelShown(window));
        EXPECT_EQ(Clicks("8880603"), 2);
        Click(window, "BtnSaveClose");
    });
    Run();
}

TEST_F(SaveWindow, APressOutsideHidesThePanelAndStillDoesItsWork) {
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        Click(window, "BtnSaveHuaZhi");
        Click(window, "TextSaveHuaZhiVal");
        EXPECT_TRUE(PanelShown(window)) << "a press inside";
        QTest::mouseClick(&window, Qt::RightButton, {}, QPoint(4, window.height() - 4));
        EXPECT_TRUE(PanelShown(window)) << "the right button";
        Click(window, "ConShowImage");
        EXPECT_FALSE(PanelShown(window)) << "a press elsewhere";
        Click(window, "BtnSaveHuaZhi");
        Click(window, "BtnCover");
        EXPECT_FALSE(PanelShown(window));
        EXPECT_EQ(Clicks("8880602"), 1) << "the press reached its control";
        Click(window, "BtnSaveClose");
    });
    Run();
}

TEST_F(SaveWindow, ChoosingATypeWithoutQualityClosesThePanel) {
    for (const int index : {1, 2}) {
        m_script.On<CSaveWnd>([=](CSaveWnd& window) {
            Click(window, "BtnSaveHuaZhi");
            ASSERT_TRUE(PanelShown(window));
            ChooseType(window, index);
            EXPECT_FALSE(PanelShown(window));
            EXPECT_FALSE(Control(window, "BtnSaveHuaZhi").isEnabled());
            ChooseType(window, 0);
            EXPECT_TRUE(Control(window, "BtnSaveHuaZhi").isEnabled());
            EXPECT_FALSE(PanelShown(window)) << "it stays closed";
            Click(window, "BtnSaveClose");
        });
        Run();
    }
}

TEST_F(SaveWindow, NumberFollowsTheSliderAndTheEstimateItsRelease) {
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        EXPECT_EQ(Control<QLabel>(window, "TextSaveHuaZhiVal").text(), QStringLiteral("90"));
        Click(window, "BtnSaveHuaZhi");
        const QString at90 = SizeShown(window);
        DragTo(window, 20);
        const int value = Control<CSliderCtrl>(window, "SliderHuaZhi").value();
        EXPECT_NEAR(value, 20, 3);
        EXPECT_EQ(Control<QLabel>(window, "TextSaveHuaZhiVal").text(), QString::number(value));
        EXPECT_EQ(SizeShown(window), at90);
        Release(window);
        EXPECT_LT(SizeShown(window).chopped(2).toDouble(), at90.chopped(2).toDouble());
        EXPECT_EQ(SizeShown(window), SaveSizeText(static_cast<quint32>(QFileInfo(TrialFile(".jpg")).size())));
        Click(window, "BtnSave");
        Click(window, "BtnSaveClose");
    });
    const SaveOutcome outcome = Run();
    ASSERT_TRUE(outcome.written);
    EXPECT_EQ(QFileInfo(outcome.path).size(), QFileInfo(TrialFile(".jpg")).size())
        << "the file has the quality that was estimated";
}

TEST_F(SaveWindow, AFailedEstimateIsSilent) {
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        const QString before = SizeShown(window);
        ASSERT_TRUE(QFileInfo(TrialFile(".jpg")).isDir());
        Click(window, "BtnSaveHuaZhi");
        EXPECT_TRUE(PanelShown(window));
        EXPECT_EQ(SizeShown(window), before);
        Click(window, "BtnSaveClose");
    });
    QFile::remove(TrialFile(".jpg"));
    ASSERT_TRUE(QDir().mkpath(TrialFile(".jpg") + QStringLiteral("/full")));
    Run();
    ASSERT_TRUE(QDir(TrialFile(".jpg")).removeRecursively());
}

TEST_F(SaveWindow, EstimateFollowsTheType) {
    QFile::remove(TrialFile(".png"));
    QFile::remove(TrialFile(".bmp"));
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        ChooseType(window, 2);
        // The button is disabled for this type, so the act that asks for an estimate is the slider's, by keyboard.
        auto& slider = Control<CSliderCtrl>(window, "SliderHuaZhi");
        QTest::keyClick(&slider, Qt::Key_Left);
        EXPECT_TRUE(IsBmp(TrialFile(".bmp")));
        EXPECT_EQ(SizeShown(window), SaveSizeText(static_cast<quint32>(QFileInfo(TrialFile(".bmp")).size())));
        Click(window, "BtnSaveClose");
    });
    Run();
}
