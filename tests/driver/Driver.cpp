// SPDX-License-Identifier: GPL-3.0-or-later
#include "Driver.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtGui/QInputMethodEvent>
#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPlainTextEdit>
#include <utility>

#include "CSliderCtrl.h"

namespace {

// Only what fails waits as long; a machine under load may take seconds for what takes none.
constexpr int PatienceMs = 60000;

QWidget* Search(const QString& name) {
    const QWidgetList windows = QApplication::topLevelWidgets();
    QWidget* found = nullptr;
    for (QWidget* window : windows) {
        if (!window->isVisible()) continue;
        for (QWidget* control : window->findChildren<QWidget*>(name)) {
            if (!control->isVisible()) continue;
            const bool modal = window == QApplication::activeModalWidget();
            if (!found || modal) found = control;
        }
    }
    return found;
}

// The window that a person would type into: the modal one, else an open pop-up's, else the main window.
QWidget* TopWindow() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    QWidget* top = QApplication::activeWindow();
    for (QWidget* window : QApplication::topLevelWidgets())
        if (!top && window->isVisible()) top = window;
    return top;
}

QWidget* Usable(const QString& name) {
    QWidget* control = Driver::Find(name);
    if (!control->isEnabled()) qFatal("control is disabled: %s", qPrintable(name));
    return control;
}

}  // namespace

QWidget* Driver::Find(const QString& name) {
    WaitFor(name, [&] { return Search(name) != nullptr; });
    return Search(name);
}

bool Driver::IsThere(const QString& name) {
    return Search(name) != nullptr;
}

void Driver::Click(const QString& name) {
    QWidget* control = Usable(name);
    // A check box takes clicks on its box and text only, which stand at its left.
    const bool box = qobject_cast<QCheckBox*>(control) != nullptr;
    QTest::mouseClick(control, Qt::LeftButton, {}, box ? QPoint(8, control->height() / 2) : QPoint());
}

void Driver::Press(const QString& name) {
    QTest::mousePress(Usable(name), Qt::LeftButton);
}

void Driver::Release(const QString& name) {
    QTest::mouseRelease(Find(name), Qt::LeftButton);
}

void Driver::HoldSlider(const QString& name, int value, const std::function<void()>& held) {
    auto* slider = qobject_cast<CSliderCtrl*>(Usable(name));
    if (!slider) qFatal("not a slider: %s", qPrintable(name));
    const int from = slider->value();
    QTest::mousePress(slider, Qt::LeftButton, {}, slider->HandleAt(from));
    constexpr int Moves = 8;
    for (int i = 1; i <= Moves; ++i) QTest::mouseMove(slider, slider->HandleAt(from + (value - from) * i / Moves));
    held();
    QTest::mouseRelease(slider, Qt::LeftButton, {}, slider->HandleAt(value));
}

void Driver::DragSlider(const QString& name, int value) {
    HoldSlider(name, value, [] {});
    auto* slider = qobject_cast<CSliderCtrl*>(Find(name));
    // A pixel may stand for more than one step: the arrow keys do the rest.
    for (int i = 0; i < 4 && slider->value() != value; ++i)
        QTest::keyClick(slider, slider->value() < value ? Qt::Key_Right : Qt::Key_Left);
    if (slider->value() != value) qFatal("the slider %s does not reach %d", qPrintable(name), value);
}

void Driver::DragOn(QWidget* window, QPoint from, QPoint to) {
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    constexpr int Moves = 4;
    for (int i = 1; i <= Moves; ++i) QTest::mouseMove(window, from + (to - from) * i / Moves);
    QTest::mouseRelease(window, Qt::LeftButton, {}, to);
}

namespace {

// What no key of the test's keyboard has comes as it does from an input method; halves of a character together.
void WriteByInputMethod(QWidget& edit, QChar character) {
    static QString written;
    written += character;
    if (character.isHighSurrogate()) return;
    QInputMethodEvent event;
    event.setCommitString(std::exchange(written, {}));
    QApplication::sendEvent(&edit, &event);
}

}  // namespace

void Driver::Type(const QString& name, const QString& text) {
    QWidget* edit = Usable(name);
    if (!qobject_cast<QLineEdit*>(edit) && !qobject_cast<QPlainTextEdit*>(edit))
        qFatal("not a field: %s", qPrintable(name));
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(edit, Qt::Key_Delete);
    for (const QChar character : text)
        if (character == u'\n')
            QTest::keyClick(edit, Qt::Key_Return);
        else if (character.unicode() < 0x80)
            QTest::keyClicks(edit, QString(character));
        else
            WriteByInputMethod(*edit, character);
}

void Driver::ChooseItem(const QString& name, int index) {
    auto* combo = qobject_cast<QComboBox*>(Usable(name));
    if (!combo) qFatal("not a combo: %s", qPrintable(name));
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Home);
    for (int i = 0; i < index; ++i) QTest::keyClick(combo, Qt::Key_Down);
}

void Driver::Key(int key, Qt::KeyboardModifiers modifiers) {
    // An open pop-up has the keyboard, whichever window is the active one.
    if (QWidget* popup = QApplication::activePopupWidget())
        return QTest::keyClick(popup, static_cast<Qt::Key>(key), modifiers);
    QWidget* window = TopWindow();
    if (!window) qFatal("no window to press a key in");
    // Without a window manager nobody hands the keyboard on when a window closes. The toolkit's own wait is content as
    // soon as the window below a dialog has it.
    window->activateWindow();
    WaitFor(QStringLiteral("the keyboard in ") + window->objectName(), [=] { return window->isActiveWindow(); });
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus && focus->window() == window ? focus : window, static_cast<Qt::Key>(key), modifiers);
}

void Driver::ClickRow(const QString& name, int row) {
    auto* list = qobject_cast<QListWidget*>(Usable(name));
    if (!list || !list->item(row)) qFatal("no such row: %s %d", qPrintable(name), row);
    list->scrollToItem(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
}

void Driver::WaitForRows(const QString& name, int rows) {
    const auto* list = qobject_cast<QListWidget*>(Find(name));
    if (!list) qFatal("not a list: %s", qPrintable(name));
    WaitFor(name + QStringLiteral(" with its rows"), [&] { return list->count() == rows; });
}

// The path is pasted: the list of matching names that drops down while one types would take keys for itself.
void Driver::ChooseFile(const QString& path) {
    const QString field = QStringLiteral("fileNameEdit");
    QWidget* edit = Usable(field);
    QApplication::clipboard()->setText(path);
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
    for (int i = 0; i < 3 && IsThere(field); ++i) {
        QTest::qWait(20);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    if (IsThere(field)) qFatal("the file dialog does not take %s", qPrintable(path));
}

void Driver::Wait(int ms) {
    QTest::qWait(ms);
}

void Driver::WaitFor(const QString& what, const std::function<bool()>& condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(PatienceMs)) qFatal("waited in vain for: %s", qPrintable(what));
        QTest::qWait(5);
    }
}

void Driver::Modal(const std::function<void()>& act, const QString& awaited, const std::function<void()>& inside) {
    bool done = false;
    QTimer poll;
    QElapsedTimer timer;
    timer.start();
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (timer.hasExpired(PatienceMs)) qFatal("no modal window with: %s", qPrintable(awaited));
        if (!Search(awaited)) return;
        poll.stop();
        inside();
        done = true;
    });
    poll.start(10);
    act();
    WaitFor(awaited, [&] { return done; });
}

QImage Driver::Shot(QWidget* window) {
    QTest::qWait(250);
    const QRect place = window->frameGeometry();
    return window->screen()->grabWindow(0, place.x(), place.y(), place.width(), place.height()).toImage();
}
