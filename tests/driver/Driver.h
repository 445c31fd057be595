// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtGui/QImage>

class QWidget;

// A user in code: finds controls by name in the visible windows and works them with mouse and keyboard events. Every
// call fails loudly (qFatal with the name) when the control is not there, not visible or not enabled, as a person would
// notice. Main thread.
class Driver {
  public:
    // The control of that name in a visible window; the last opened window first.
    static QWidget* Find(const QString& name);
    static bool IsThere(const QString& name);

    static void Click(const QString& name);
    static void Press(const QString& name);
    static void Release(const QString& name);
    // Drags a slider's handle from where it is to a value, in several moves, and sets it exactly by the arrow keys.
    static void DragSlider(const QString& name, int value);
    // Drags a slider's handle to a value and calls `held` before it lets go.
    static void HoldSlider(const QString& name, int value, const std::function<void()>& held);
    // Drags with the left button from one point of a window to another, in several moves; logical pixels.
    static void DragOn(QWidget* window, QPoint from, QPoint to);
    // Replaces the text of a field, of one line or several, in any script.
    static void Type(const QString& name, const QString& text);
    static void ChooseItem(const QString& combo, int index);
    static void Key(int key, Qt::KeyboardModifiers modifiers = {});
    // Clicks a row of a list.
    static void ClickRow(const QString& list, int row);
    // Waits until a list has as many rows.
    static void WaitForRows(const QString& list, int rows);

    // Types a path into the file dialog that is up and confirms it.
    static void ChooseFile(const QString& path);

    // Runs the event loop.
    static void Wait(int ms);
    // Runs it until the condition holds; fails after a minute, naming `what`.
    static void WaitFor(const QString& what, const std::function<bool()>& condition);

    // Does `act`, which opens a modal window (so that it returns only when that is closed), and runs `inside` once a
    // window with a control `awaited` is up.
    static void Modal(const std::function<void()>& act, const QString& awaited, const std::function<void()>& inside);

    // What the screen shows of the window, with whatever lies over it.
    static QImage Shot(QWidget* window);
};
