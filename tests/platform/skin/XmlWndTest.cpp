// SPDX-License-Identifier: GPL-3.0-or-later
#include "CXMLWnd.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLineEdit>

#include "CSliderCtrl.h"
#include "Language.h"
#include "TestHome.h"

namespace {

constexpr char Form[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0"><class>Form</class><widget class="QFrame" name="Form">
 <layout class="QVBoxLayout" name="l">
  <item><widget class="QPushButton" name="BtnYes"><property name="text"><string>Yes</string></property></widget></item>
  <item><widget class="QPushButton" name="OptOne"><property name="checkable"><bool>true</bool></property></widget></item>
  <item><widget class="CSliderCtrl" name="Amount"/></item>
  <item><widget class="QLineEdit" name="EdtName"><property name="toolTip"><string>Name</string></property></widget></item>
  <item><widget class="QWidget" name="Own"/></item>
 </layout></widget></ui>)";

class Window : public CXMLWnd {
  public:
    explicit Window(const QString& skin, QWidget* parent = nullptr) : CXMLWnd(parent) { loaded = Create(skin); }
    bool loaded = false;
    QStringList told;
    bool refuseClose = false;

  protected:
    QWidget* CreateControl(const QString&, QWidget* parent, const QString& name) override {
        return name == u"Own" ? new QLineEdit(parent) : nullptr;
    }
    void OnNotify(const Notify& notify) override {
        told << notify.type + QLatin1Char(' ') + notify.name;
        if (notify.Is(u"click", u"BtnYes")) EndModal(ResultYes);
    }
    bool OnCloseRequest() override { return !refuseClose; }
};

class SkinnedWindows : public testing::Test {
  protected:
    void SetUp() override {
        // A language folder of this test's own: what the program stages is linked and not to be written to.
        SetLanguage(QStringLiteral("9999"));
        const QString folder = TestHome::Path() + QStringLiteral("/I18N");
        if (QFileInfo(folder).isSymLink()) QFile::remove(folder);
        QDir().mkpath(folder + QStringLiteral("/9999"));
        Put(QStringLiteral("Form.xml"), Form);
        Put(QStringLiteral("Broken.xml"), "<ui><widget");
    }
    static void Put(const QString& name, const char* text) {
        QFile file(TestHome::Path() + QStringLiteral("/I18N/9999/") + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
};

}  // namespace

TEST_F(SkinnedWindows, LoadNoPlugInsOfQtDesignerAndLeaveTheLibraryPaths) {
    const QStringList paths = QCoreApplication::libraryPaths();
    const Window window(QStringLiteral("Form.xml"));
    ASSERT_TRUE(window.loaded);
    EXPECT_EQ(QCoreApplication::libraryPaths(), paths);
    QFile maps(QStringLiteral("/proc/self/maps"));
    ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
    const QByteArray mapped = maps.readAll();
    EXPECT_TRUE(mapped.contains("libQt6Widgets"));
    EXPECT_FALSE(mapped.contains("/designer/"));
}

TEST_F(SkinnedWindows, MayHoldWindowsWithSkinsOfTheirOwn) {
    class Outer : public Window {
      public:
        Outer() : Window(QString()) { loaded = Create(QStringLiteral("Form.xml")); }

      protected:
        QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override {
            if (name == u"Own") return new Window(QStringLiteral("Form.xml"), parent);
            return Window::CreateControl(className, parent, name);
        }
    };
    const Outer outer;
    ASSERT_TRUE(outer.loaded);
    const auto* inner = dynamic_cast<const Window*>(outer.findChild<QWidget*>(QStringLiteral("Own")));
    ASSERT_NE(inner, nullptr);
    EXPECT_TRUE(inner->loaded);
    // What stands before and after the inner window in the skin belongs to the outer one.
    EXPECT_EQ(outer.findChildren<QAbstractButton*>(QStringLiteral("BtnYes")).size(), 2);
    EXPECT_EQ(inner->findChildren<QAbstractButton*>(QStringLiteral("BtnYes")).size(), 1);
    EXPECT_NE(inner->findChild<CSliderCtrl*>(QStringLiteral("Amount")), nullptr);
}

TEST_F(SkinnedWindows, AMissingOrDamagedSkinGivesAnEmptyWindow) {
    EXPECT_FALSE(Window(QStringLiteral("None.xml")).loaded);
    EXPECT_FALSE(Window(QStringLiteral("Broken.xml")).loaded);
}

TEST_F(SkinnedWindows, ControlsAreFoundByNameAndTheWindowMakesItsOwn) {
    Window window(QStringLiteral("Form.xml"));
    ASSERT_TRUE(window.loaded);
    EXPECT_NE(window.Find<CSliderCtrl>(QStringLiteral("Amount")), nullptr);
    EXPECT_NE(window.Find<QLineEdit>(QStringLiteral("Own")), nullptr);
    EXPECT_EQ(window.told.first(), QStringLiteral("windowinit "));
}

TEST_F(SkinnedWindows, ControlsWithoutAnAccessibleNameGetTheirTextOrTooltip) {
    Window window(QStringLiteral("Form.xml"));
    EXPECT_EQ(window.Find<QWidget>(QStringLiteral("BtnYes"))->accessibleName(), QStringLiteral("Yes"));
    EXPECT_EQ(window.Find<QWidget>(QStringLiteral("EdtName"))->accessibleName(), QStringLiteral("Name"));
}

TEST_F(SkinnedWindows, AClickIsToldAsPressAndClick) {
    Window window(QStringLiteral("Form.xml"));
    window.show();
    QTest::mouseClick(window.Find<QWidget>(QStringLiteral("OptOne")), Qt::LeftButton);
    EXPECT_EQ(window.told.mid(1),
              QStringList({QStringLiteral("downclick OptOne"), QStringLiteral("selectchanged OptOne"),
                           QStringLiteral("click OptOne")}));
}

TEST_F(SkinnedWindows, TypingIsToldAndSettingFromCodeIsNot) {
    Window window(QStringLiteral("Form.xml"));
    auto* edit = window.Find<QLineEdit>(QStringLiteral("EdtName"));
    edit->setText(QStringLiteral("code"));
    window.Find<CSliderCtrl>(QStringLiteral("Amount"))->setValue(9);
    EXPECT_EQ(window.told.size(), 1);
    QTest::keyClicks(edit, QStringLiteral("a"));
    EXPECT_TRUE(window.told.contains(QStringLiteral("textchanged EdtName")));
}

TEST_F(SkinnedWindows, AModalWindowReturnsWhatEndedIt) {
    Window window(QStringLiteral("Form.xml"));
    QTimer::singleShot(0, [&] { QTest::mouseClick(window.Find<QWidget>(QStringLiteral("BtnYes")), Qt::LeftButton); });
    EXPECT_EQ(window.ShowModal(nullptr, QStringLiteral("t")), ResultYes);
    QTimer::singleShot(0, [&] { QTest::keyClick(&window, Qt::Key_Escape); });
    EXPECT_EQ(window.ShowModal(nullptr, QStringLiteral("t")), ResultClose);
    EXPECT_FALSE(window.IsModal());
}

TEST_F(SkinnedWindows, AWindowMayRefuseToClose) {
    Window window(QStringLiteral("Form.xml"));
    window.refuseClose = true;
    QTimer::singleShot(0, [&] {
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_TRUE(window.IsModal());
        window.EndModal(ResultNo);
    });
    EXPECT_EQ(window.ShowModal(nullptr, QStringLiteral("t")), ResultNo);
}
