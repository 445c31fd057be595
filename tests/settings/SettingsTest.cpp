// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QToolButton>

#include "Addresses.h"
#include "AppPaths.h"
#include "CAboutDlg.h"
#include "CAdviseDlg.h"
#include "ClickCount.h"
#include "CNetworkDlg.h"
#include "CSettingWnd.h"
#include "CSizeSettingDlg.h"
#include "IniFile.h"
#include "Language.h"
#include "ModalScript.h"
#include "SentReports.h"
#include "Style.h"
#include "Version.h"

namespace {

Addresses AllAddresses() {
    Addresses addresses;
    addresses.analytics = QStringLiteral("https://a.example:443");
    addresses.data = QStringLiteral("https://d.example:443");
    addresses.feedback = QStringLiteral("https://f.example:443");
    addresses.website = QStringLiteral("https://w.example/");
    addresses.update = QStringLiteral("https://u.example/");
    return addresses;
}

int Clicks(const char* code) {
    const auto counts = ClickCounts().Counts();
    const auto found = counts.find(QLatin1String(code));
    return found == counts.end() ? 0 : found->second;
}

class Settings : public testing::Test {
  protected:
    void SetUp() override {
        SetLanguage(QStringLiteral("1033"));
        Style::Apply(*qApp);
        QFile::remove(ConfigIni());
        QFile::remove(AppPath(QStringLiteral("dbg.log")));
        ClickCounts().Clear();
        m_owner.setGeometry(200, 100, 1024, 730);
        m_option = new QToolButton(&m_owner);
        m_option->setGeometry(980, 10, 30, 30);
        m_owner.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_owner));
    }
    void TearDown() override { SetLanguage(QStringLiteral("1033")); }

    CSettingWnd& OpenSettings() {
        const auto start = [this](const QString& path, const QStringList& arguments) {
            m_started << path + u' ' + arguments.join(u' ');
            return m_starts;
        };
        auto* window = new CSettingWnd(m_option, m_addresses, start);
        QObject::connect(window, &CSettingWnd::SizeChosen, &m_owner, [this] { m_told << QStringLiteral("size"); });
        QObject::connect(window, &CSettingWnd::NetworkChosen, &m_owner,
                         [this] { m_told << QStringLiteral("network"); });
        QObject::connect(window, &CSettingWnd::AboutChosen, &m_owner, [this] { m_told << QStringLiteral("about"); });
        QObject::connect(window, &CSettingWnd::UpdaterMissing, &m_owner,
                         [this] { m_told << QStringLiteral("missing"); });
        window->Open();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
        return *window;
    }
    // Shows a dialog and lets `act` work in it.
    template <class Dialog>
    int Run(Dialog& dialog, const std::function<void(QWidget&)>& act) {
        m_script.On<Dialog>([=](Dialog& shown) { act(shown); });
        return dialog.ShowModal(&m_owner, QStringLiteral("dialog"));
    }
    static int Stored() {
        return GetProfileInt(QStringLiteral("Tip"), QStringLiteral("DlgOpenImageLessen"), -1, ConfigIni());
    }
    static void Store(const QString& value) {
        WriteProfileString(QStringLiteral("Tip"), QStringLiteral("DlgOpenImageLessen"), value, ConfigIni());
    }

    QWidget m_owner;
    QToolButton* m_option = nullptr;
    Addresses m_addresses = AllAddresses();
    QStringList m_started;
    QStringList m_told;
    bool m_starts = true;
    ModalScript m_script;
};

void Key(QWidget& window, Qt::Key key) {
    QTest::keyClick(window.focusWidget() ? window.focusWidget() : &window, key);
}

bool IsOn(const QWidget& window, const char* name) {
    return Control<QAbstractButton>(window, name).isChecked();
}

}  // namespace

// ---- the drop-down ----

TEST_F(Settings, UpdateStartsTheUpdaterByHandLogsAndCounts) {
    const QPointer<CSettingWnd> window = &OpenSettings();
    Click(*window, "ElementUpdate");
    EXPECT_EQ(m_started, QStringList(AppPath(QStringLiteral("Update.exe")) + QStringLiteral(" hand")));
    EXPECT_TRUE(m_told.isEmpty());
    EXPECT_EQ(Clicks("8880701"), 1);
    QFile log(AppPath(QStringLiteral("dbg.log")));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    const QByteArray line = log.readAll();
    EXPECT_TRUE(line.contains("]============[QUINCE][SettingWnd][Line:")) << line.toStdString();
    EXPECT_TRUE(line.endsWith("]OnUpdateClick=================\r\n"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.isNull(); }));
}

TEST_F(Settings, AMissingUpdaterIsToldWhenAskedForByHand) {
    m_starts = false;
    Click(OpenSettings(), "ElementUpdate");
    EXPECT_EQ(m_told, QStringList(QStringLiteral("missing")));
    EXPECT_EQ(Clicks("8880701"), 1);
}

TEST_F(Settings, WithoutAnAddressUpdateIsDisabledAndSaysWhy) {
    m_addresses.update.clear();
    CSettingWnd& window = OpenSettings();
    EXPECT_FALSE(Control(window, "ElementUpdate").isEnabled());
    EXPECT_EQ(Control(window, "ElementUpdate").toolTip(), LanguageText(QStringLiteral("ids_noupdateaddress")));
    Click(window, "ElementUpdate");
    EXPECT_TRUE(m_started.isEmpty());
    EXPECT_TRUE(window.isVisible());
}

TEST_F(Settings, EntriesAreToldAndCountedOnceTheDropDownIsClosed) {
    struct Entry {
        const char* name;
        const char* told;
        const char* code;
    };
    for (const Entry& entry : {Entry{"ElementSetting", "size", "8880702"}, Entry{"ElementAbout", "about", "8880703"},
                               Entry{"ElementNetwork", "network", nullptr}}) {
        m_told.clear();
        CSettingWnd& window = OpenSettings();
        Click(window, entry.name);
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(m_told, QStringList(QLatin1String(entry.told)));
        EXPECT_EQ(entry.code ? Clicks(entry.code) : 1, 1);
    }
}

TEST_F(Settings, TheKeyboardReachesAndOpensEntriesAndEscCloses) {
    CSettingWnd& window = OpenSettings();
    EXPECT_EQ(window.focusWidget()->objectName(), u"ElementUpdate");
    Key(window, Qt::Key_Down);
    EXPECT_EQ(window.focusWidget()->objectName(), u"ElementSetting");
    Key(window, Qt::Key_Return);
    EXPECT_EQ(m_told, QStringList(QStringLiteral("size")));
    const QPointer<CSettingWnd> second = &OpenSettings();
    Key(*second, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return second.isNull(); }));
    EXPECT_EQ(m_told.size(), 1);
}

TEST_F(Settings, HangsUnderItsButtonInsideTheScreen) {
    CSettingWnd& window = OpenSettings();
    const QPoint corner = m_option->mapToGlobal(QPoint(m_option->width(), m_option->height()));
    EXPECT_EQ(window.geometry().top(), corner.y());
    EXPECT_EQ(window.geometry().right() + 1, corner.x());
}

// ---- size setting ----

TEST_F(Settings, TheStoredChoiceIsSelected) {
    const std::pair<const char*, const char*> choices[] = {{"1", "Opt1"}, {"2", "Opt2"}, {"0", "Opt3"}};
    for (const auto& [value, option] : choices) {
        Store(QLatin1String(value));
        CSizeSettingDlg dialog;
        Run(dialog, [option = option](QWidget& window) {
            for (const char* name : {"Opt1", "Opt2", "Opt3"})
                EXPECT_EQ(IsOn(window, name), std::string(name) == option) << name;
            Click(window, "BtnCancel");
        });
    }
    QFile::remove(ConfigIni());
    CSizeSettingDlg dialog;
    Run(dialog, [](QWidget& window) {
        EXPECT_TRUE(IsOn(window, "Opt3")) << "the default asks";
        Click(window, "BtnClose");
    });
}

TEST_F(Settings, SaveWritesTheChoice) {
    const std::pair<const char*, int> choices[] = {{"Opt1", 1}, {"Opt2", 2}, {"Opt3", 0}};
    for (const auto& [option, value] : choices) {
        CSizeSettingDlg dialog;
        const int result = Run(dialog, [option = option](QWidget& window) {
            auto& radio = Control(window, option);
            QTest::mouseClick(&radio, Qt::LeftButton, {}, QPoint(8, radio.height() / 2));
            Click(window, "BtnSave");
        });
        EXPECT_EQ(result, 1);
        EXPECT_EQ(Stored(), value);
    }
}

TEST_F(Settings, SizeIsChosenByTheKeyboard) {
    Store(QStringLiteral("1"));
    CSizeSettingDlg dialog;
    Run(dialog, [](QWidget& window) {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        EXPECT_EQ(window.focusWidget()->objectName(), u"Opt1");
        Key(window, Qt::Key_Down);
        EXPECT_TRUE(IsOn(window, "Opt2"));
        Key(window, Qt::Key_Return);
    });
    EXPECT_EQ(Stored(), 2);
}

TEST_F(Settings, CancelCloseEscAndTheWindowManagerWriteNothing) {
    const std::function<void(QWidget&)> ways[] = {
        [](QWidget& window) { Click(window, "BtnCancel"); }, [](QWidget& window) { Click(window, "BtnClose"); },
        [](QWidget& window) { Key(window, Qt::Key_Escape); }, [](QWidget& window) { window.close(); }};
    for (const auto& way : ways) {
        CSizeSettingDlg dialog;
        const int result = Run(dialog, [&](QWidget& window) {
            auto& radio = Control(window, "Opt1");
            QTest::mouseClick(&radio, Qt::LeftButton, {}, QPoint(8, radio.height() / 2));
            way(window);
        });
        EXPECT_NE(result, 1);
        EXPECT_EQ(Stored(), -1);
    }
}

// ---- about ----

TEST_F(Settings, AboutTellsTheVersionAndOpensTheWebsite) {
    QStringList opened;
    CAboutDlg dialog(m_addresses.website, [&](const QString& page) {
        opened << page;
        return true;
    });
    Run(dialog, [&](QWidget& window) {
        EXPECT_TRUE(Control<QLabel>(window, "TextVersion").text().contains(GetVersionText()));
        Click(window, "BtnWebSite");
        Click(window, "BtnClose");
    });
    EXPECT_EQ(opened, QStringList(m_addresses.website));
    EXPECT_EQ(Clicks("888070301"), 1);
}

TEST_F(Settings, WithoutAWebsiteItsButtonIsDisabledAndSaysWhy) {
    CAboutDlg dialog(QString(), [](const QString&) {
        ADD_FAILURE();
        return true;
    });
    Run(dialog, [&](QWidget& window) {
        EXPECT_FALSE(Control(window, "BtnWebSite").isEnabled());
        EXPECT_EQ(Control(window, "BtnWebSite").toolTip(), LanguageText(QStringLiteral("ids_nowebsite")));
        Click(window, "BtnWebSite");
        Key(window, Qt::Key_Escape);
    });
    EXPECT_EQ(Clicks("888070301"), 0);
}

// ---- what is sent ----

TEST_F(Settings, WithoutAddressesItSaysThatNothingIsSent) {
    CNetworkDlg dialog{Addresses()};
    Run(dialog, [](QWidget& window) {
        EXPECT_EQ(Control<QLabel>(window, "TextSent").text(),
                  LanguageText(QStringLiteral("ids_net_none"), QStringLiteral("NetworkDlg")));
        EXPECT_FALSE(IsOn(window, "OptSend"));
        EXPECT_FALSE(Control(window, "OptSend").isEnabled());
        Click(window, "BtnSave");
    });
    EXPECT_TRUE(StatisticsAllowed());
    EXPECT_FALSE(QFile::exists(ConfigIni()));
}

TEST_F(Settings, EachAddressHasItsSentenceInBothLanguages) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        const QString text = CNetworkDlg::TextFor(m_addresses);
        for (const QString& address : {m_addresses.analytics, m_addresses.data, m_addresses.feedback})
            EXPECT_EQ(text.count(address.chopped(4)), 1) << text.toStdString();
        CNetworkDlg dialog(m_addresses);
        Run(dialog, [](QWidget& window) {
            const auto& label = Control<QLabel>(window, "TextSent");
            EXPECT_GE(label.height(), label.heightForWidth(label.width())) << "every line has its room";
            Click(window, "BtnCancel");
        });
    }
}

TEST_F(Settings, StatisticsAreTurnedOffAndOnAgain) {
    for (const bool allowed : {false, true}) {
        CNetworkDlg dialog(m_addresses);
        Run(dialog, [&](QWidget& window) {
            EXPECT_EQ(IsOn(window, "OptSend"), !allowed);
            Click(window, "OptSend");
            Click(window, "BtnSave");
        });
        EXPECT_EQ(StatisticsAllowed(), allowed);
    }
    CNetworkDlg dialog(m_addresses);
    Run(dialog, [](QWidget& window) {
        Click(window, "OptSend");
        Key(window, Qt::Key_Escape);
    });
    EXPECT_TRUE(StatisticsAllowed());
}

TEST_F(Settings, TheLastReportIsShown) {
    QFile::remove(AppPath(QStringLiteral("Resources/LastReport.txt")));
    const auto shown = [&] {
        QString text;
        CNetworkDlg dialog(m_addresses);
        Run(dialog, [&](QWidget& window) {
            text = Control<QPlainTextEdit>(window, "EditLastReport").toPlainText();
            Click(window, "BtnClose");
        });
        return text;
    };
    EXPECT_EQ(shown(), LanguageText(QStringLiteral("ids_net_nothing"), QStringLiteral("NetworkDlg")));
    BeginSentReport();
    NoteSent(QStringLiteral("GET"), QStringLiteral("https://a.example:443/run.json"));
    EXPECT_TRUE(shown().endsWith(QStringLiteral("\nGET https://a.example:443/run.json")));
    QFile::remove(AppPath(QStringLiteral("Resources/LastReport.txt")));
}

// ---- feedback without an address ----

TEST_F(Settings, WithoutAnAddressFeedbackSaysSoAndTakesNoInput) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        CAdviseDlg dialog{QString()};
        Run(dialog, [](QWidget& window) {
            EXPECT_TRUE(Control(window, "TextNoAddress").isVisible());
            for (const char* name : {"EditReason", "EditAddr", "BtnCommit"})
                EXPECT_FALSE(Control(window, name).isEnabled()) << name;
            Key(window, Qt::Key_Escape);
        });
    }
}

// ---- all of them ----

TEST_F(Settings, TextsFitTheirButtonsInBothLanguages) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        const auto check = [](QWidget& window) {
            for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
                EXPECT_GE(button->width(), button->sizeHint().width()) << qPrintable(button->objectName());
            for (const QLabel* label : window.findChildren<QLabel*>())
                if (label->wordWrap() && label->isVisible()) {
                    EXPECT_GE(label->height(), label->heightForWidth(label->width()))
                        << qPrintable(label->objectName());
                }
        };
        CSettingWnd& settings = OpenSettings();
        check(settings);
        Key(settings, Qt::Key_Escape);
        const auto checkAndClose = [&](QWidget& window) {
            check(window);
            Key(window, Qt::Key_Escape);
        };
        CSizeSettingDlg size;
        Run(size, checkAndClose);
        CAboutDlg about(m_addresses.website, [](const QString&) { return true; });
        Run(about, checkAndClose);
        CNetworkDlg network(m_addresses);
        Run(network, checkAndClose);
        CAdviseDlg advise(m_addresses.feedback);
        Run(advise, checkAndClose);
    }
}
