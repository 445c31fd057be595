// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QPointer>
#include <QtGui/QClipboard>
#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolButton>

#include "CImageInfoWnd.h"
#include "ImageInfo.h"
#include "Language.h"
#include "SaveFixture.h"
#include "Style.h"

namespace {

constexpr const char* Stems[] = {"TuPianMingCheng", "TuPianChiCun",  "TuPianDaXiao", "ZhiZaoChangShang",
                                 "SeBeiXingHao",    "PaiSeShiJian",  "GuangQuan",    "KuaiMenSuDu",
                                 "GanGuangDu",      "PaiSeMoShi",    "CeGuangMoShi", "BaoGuangBuChang",
                                 "JiaoJu",          "ShanGuangDeng", "ChuLiRuanJian"};

tag_ImageInfo FullRecord() {
    tag_ImageInfo info;
    info.FileName = L"portrait-of-anna.jpg";
    info.Format = L"JPEG";
    info.Dimensions = L"6000 x 4000";
    info.FileSize = L"8402KB";
    info.Maker = L"Maker of Cameras";
    info.Lens = L"Lens";
    info.Model = L"Model 5";
    info.Copyright = L"Anna";
    info.DateTaken = L"2024-05-31 18:02:11";
    info.Aperture = L"f/2.8";
    info.ShutterSpeed = L"1/125 s";
    info.Sensitivity = L"ISO 200";
    info.ExposureProgramme = L"Aperture priority";
    info.MeteringMode = L"Centre-weighted average";
    info.ExposureCompensation = L"+0.3 EV";
    info.FocalLength = L"50 mm";
    info.Software = L"Software 7";
    info.Flash = L"Did not fire";
    return info;
}

const QString Path = QStringLiteral("/pictures/portrait-of-anna.jpg");

// An option in a window of its own, clicked as the bars' are.
class ImageInfo : public testing::Test {
  protected:
    void SetUp() override {
        SetLanguage(QStringLiteral("1033"));
        Style::Apply(*qApp);
        m_owner.setGeometry(100, 500, 600, 200);
        m_option = new QToolButton(&m_owner);
        m_option->setGeometry(100, 50, 80, 30);
        m_option->setCheckable(true);
        m_owner.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_owner));
        QObject::connect(m_option, &QToolButton::clicked, m_option, [this](bool checked) {
            ++m_clicks;
            if (checked) m_opened = ShowImageInfo(m_option, m_record, Path);
        });
    }
    void TearDown() override { SetLanguage(QStringLiteral("1033")); }

    void ClickOption() { QTest::mouseClick(m_option, Qt::LeftButton); }
    CImageInfoWnd* Window() const {
        auto* window = m_option->findChild<CImageInfoWnd*>();
        return window && window->isVisible() ? window : nullptr;
    }
    CImageInfoWnd& Open() {
        ClickOption();
        EXPECT_TRUE(QTest::qWaitFor([this] { return Window() != nullptr; }));
        if (!Window()) qFatal("the window does not open");
        return *Window();
    }
    QString Value(const char* stem) const {
        return Window()->Find<QLineEdit>(QStringLiteral("Text") + QLatin1String(stem))->text();
    }

    QWidget m_owner;
    QToolButton* m_option = nullptr;
    tag_ImageInfo m_info = FullRecord();
    const tag_ImageInfo* m_record = &m_info;
    int m_clicks = 0;
    bool m_opened = false;
};

}  // namespace

TEST_F(ImageInfo, EveryFieldStandsInItsControlAndTheNameIsShortened) {
    Open();
    const std::wstring expected[] = {L"por...nna.jpg",    m_info.Dimensions,
                                     m_info.FileSize,     m_info.Maker,
                                     m_info.Model,        m_info.DateTaken,
                                     m_info.Aperture,     m_info.ShutterSpeed,
                                     m_info.Sensitivity,  m_info.ExposureProgramme,
                                     m_info.MeteringMode, m_info.ExposureCompensation,
                                     m_info.FocalLength,  m_info.Flash,
                                     m_info.Software};
    for (std::size_t i = 0; i < std::size(Stems); ++i)
        EXPECT_EQ(Value(Stems[i]), QString::fromStdWString(expected[i])) << Stems[i];
}

TEST_F(ImageInfo, AnEmptyFieldShowsEmpty) {
    m_info = {};
    m_info.FileName = L"photo.png";
    Open();
    EXPECT_EQ(Value("TuPianMingCheng"), u"photo.png");
    EXPECT_EQ(Value("GuangQuan"), QString());
    EXPECT_FALSE(Window()->AllText().contains(u"Aperture"));
}

TEST_F(ImageInfo, StandsAboveTheOption) {
    CImageInfoWnd& window = Open();
    EXPECT_EQ(window.objectName(), u"ImageInfoWnd");
    EXPECT_EQ(window.size(), QSize(376, 336));
    const QPoint corner = m_option->mapToGlobal(QPoint(0, 0));
    EXPECT_EQ(window.pos(), QPoint(corner.x() + m_option->width() - 73, corner.y() - 336));
}

TEST_F(ImageInfo, StaysInsideTheScreen) {
    m_owner.move(m_owner.screen()->availableGeometry().right() - 200, 20);
    QTest::qWait(50);
    const QRect place = Open().geometry();
    EXPECT_TRUE(m_owner.screen()->availableGeometry().contains(place)) << place.x() << ',' << place.y();
}

TEST_F(ImageInfo, WithoutARecordNothingOpensAndTheOptionIsNotLeftOn) {
    m_record = nullptr;
    ClickOption();
    EXPECT_FALSE(m_opened);
    EXPECT_FALSE(m_option->isChecked());
    EXPECT_EQ(Window(), nullptr);
}

TEST_F(ImageInfo, EscClosesItForGood) {
    const QPointer<CImageInfoWnd> window = &Open();
    EXPECT_TRUE(m_option->isChecked());
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_FALSE(m_option->isChecked());
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.isNull(); }));
}

TEST_F(ImageInfo, APressElsewhereClosesItAndTheNextClickOpensAnother) {
    const QPointer<CImageInfoWnd> first = &Open();
    QTest::mouseClick(first, Qt::LeftButton, {}, QPoint(-20, 20));
    EXPECT_TRUE(QTest::qWaitFor([&] { return first.isNull(); }));
    EXPECT_FALSE(m_option->isChecked());
    EXPECT_NE(&Open(), nullptr);
}

TEST_F(ImageInfo, LosingTheFocusClosesIt) {
    const QPointer<CImageInfoWnd> window = &Open();
    QEvent away(QEvent::WindowDeactivate);
    QApplication::sendEvent(window, &away);
    EXPECT_FALSE(m_option->isChecked());
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.isNull(); }));
}

TEST_F(ImageInfo, HoveringTheNameTellsThePath) {
    EXPECT_EQ(Open().Find<QLineEdit>(QStringLiteral("TextTuPianMingCheng"))->toolTip(), Path);
}

TEST_F(ImageInfo, CopyAllPutsWholeNamesAndThePathIntoTheClipboard) {
    CImageInfoWnd& window = Open();
    QTest::mouseClick(window.Find<QWidget>(QStringLiteral("BtnCopyAll")), Qt::LeftButton);
    const QString text = QApplication::clipboard()->text();
    EXPECT_TRUE(text.startsWith(u"Name: portrait-of-anna.jpg\nSize in pixels: 6000 x 4000\n")) << text.toStdString();
    EXPECT_TRUE(text.contains(u"\nAperture: f/2.8\n"));
    EXPECT_TRUE(text.endsWith(QStringLiteral("\n%1\n").arg(Path)));
    EXPECT_EQ(text.count(u'\n'), 16);
}

TEST_F(ImageInfo, AValueIsSelectedAndCopiedByTheMouseAndNeverChanged) {
    CImageInfoWnd& window = Open();
    auto* value = window.Find<QLineEdit>(QStringLiteral("TextSeBeiXingHao"));
    QTest::mouseClick(value, Qt::LeftButton);
    QTest::keyClick(value, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(value, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"Model 5");
    QTest::keyClicks(value, QStringLiteral("x"));
    EXPECT_EQ(value->text(), u"Model 5");
}

TEST_F(ImageInfo, EveryTextFitsAndIsNamedForScreenReadersInBothLanguages) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        const QPointer<CImageInfoWnd> window = &Open();
        for (const char* stem : Stems) {
            const auto* label = window->Find<QLabel>(QStringLiteral("Label") + QLatin1String(stem));
            const auto* value = window->Find<QLineEdit>(QStringLiteral("Text") + QLatin1String(stem));
            ASSERT_TRUE(label && value) << stem;
            EXPECT_GE(label->width(), label->sizeHint().width()) << stem;
            EXPECT_GE(value->width(), value->fontMetrics().horizontalAdvance(value->text())) << stem;
            EXPECT_EQ(value->accessibleName(), label->text()) << stem;
            EXPECT_TRUE(window->rect().contains(QRect(value->mapTo(window, QPoint(0, 0)), value->size()))) << stem;
        }
        QTest::keyClick(window, Qt::Key_Escape);
        ASSERT_TRUE(QTest::qWaitFor([&] { return window.isNull(); }));
    }
}

TEST_F(SaveWindow, InformationOpensFromItsOptionAndOnlyThenCounts) {
    const tag_ImageInfo info = FullRecord();
    m_request.info = &info;
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        Click(window, "BtnSaveExif");
        auto* popup = window.findChild<CImageInfoWnd*>();
        ASSERT_TRUE(popup);
        EXPECT_EQ(Clicks("8880604"), 1);
        QTest::keyClick(popup, Qt::Key_Escape);
        EXPECT_FALSE(Control<QAbstractButton>(window, "BtnSaveExif").isChecked());
        Click(window, "BtnSaveClose");
    });
    Run();
    m_request.info = nullptr;
    m_script.On<CSaveWnd>([&](CSaveWnd& window) {
        Click(window, "BtnSaveExif");
        EXPECT_EQ(window.findChild<CImageInfoWnd*>(), nullptr);
        Click(window, "BtnSaveClose");
    });
    Run();
    EXPECT_EQ(Clicks("8880604"), 1);
}
