// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>
#include <vector>

// Plays a user while modal windows hold the test: each step waits until its window is the active modal one and then
// acts on it. Steps run one after another, also from inside the loop of a window that an earlier step opened. A step
// whose window does not come within some seconds fails the test, and what is open is closed so that the test ends.
class ModalScript : public QObject {
  public:
    ModalScript();
    ~ModalScript() override;

    // Adds a step for a window of class W (CSaveWnd, QMessageBox, QFileDialog, ...).
    template <class W>
    ModalScript& On(std::function<void(W&)> act) {
        return Add([act](QWidget* active) {
            auto* window = qobject_cast<W*>(active);
            return window ? std::function<void()>([=] { act(*window); }) : std::function<void()>();
        });
    }

  private:
    // Gives the act when the active window is the awaited one.
    using Step = std::function<std::function<void()>(QWidget* active)>;

    ModalScript& Add(Step step);
    void Poll();
    void GiveUp();

    std::vector<Step> m_steps;
    std::size_t m_next = 0;
    int m_waits = 0;
    bool m_polling = false;
};

// The control of that name; the test fails and stops when it is missing.
template <class T = QWidget>
T& Control(const QWidget& window, const char* name) {
    auto* control = window.findChild<T*>(QLatin1String(name));
    if (!control) qFatal("no control %s", name);
    return *control;
}

// A left click in the middle of the control of that name.
void Click(const QWidget& window, const char* name);
// Replaces the text of an edit field by typing.
void TypeInto(const QWidget& window, const char* name, const QString& text);
