// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>

#include "ClickCount.h"
#include "ToolTestHost.h"

// The surroundings of the tools that change the picture's shape: fields, lists and buttons in the panel.
template <class Wnd, class Panel>
class EditHost : public ToolTestHost<Wnd, Panel> {
  public:
    explicit EditHost(const QString& language = QStringLiteral("1033")) : ToolTestHost<Wnd, Panel>(language) {}

    using ToolTestHost<Wnd, Panel>::canvas;
    using ToolTestHost<Wnd, Panel>::panel;
    using ToolTestHost<Wnd, Panel>::Control;

    // As the tool bar's buttons do.
    void Undo() {
        canvas->OnUndo();
        panel->OnFrameMessage(RefreshPanelMessage{Wnd::Facts.number});
    }
    void Redo() {
        canvas->OnRedo();
        panel->OnFrameMessage(RefreshPanelMessage{Wnd::Facts.number});
    }

    // The clicks counted so far for a code.
    static int Clicks(const char* code) {
        const auto counts = ClickCounts().Counts();
        const auto found = counts.find(QString::fromLatin1(code));
        return found == counts.end() ? 0 : found->second;
    }

    QString Text(const char* edit) const { return this->template Control<QLineEdit>(edit)->text(); }
    bool Enabled(const char* name) const { return Control(name)->isEnabled(); }
    bool Checked(const char* name) const { return this->template Control<QAbstractButton>(name)->isChecked(); }
    // Width and height as the panel shows them.
    QSize Fields() const { return {Text("EditKuanDu").toInt(), Text("EditGaoDu").toInt()}; }
    bool FieldsAreEmpty() const { return Text("EditKuanDu").isEmpty() && Text("EditGaoDu").isEmpty(); }
    QSize ImageSize() const {
        int width = 0, height = 0;
        canvas->GetImageSize(&width, &height);
        return {width, height};
    }

    // Acts of the user.
    void Click(const char* name) const {
        QWidget* control = Control(name);
        // A check box answers to its indicator, at its left.
        QTest::mouseClick(control, Qt::LeftButton, {}, {8, control->height() / 2});
    }
    void Type(const char* edit, const QString& text) const {
        QLineEdit* field = this->template Control<QLineEdit>(edit);
        field->setFocus();
        field->selectAll();
        if (text.isEmpty())
            QTest::keyClick(field, Qt::Key_Backspace);
        else
            QTest::keyClicks(field, text);
    }
    void Choose(const char* combo, int item) const {
        auto* box = this->template Control<QComboBox>(combo);
        box->setFocus();
        const int rows = item - box->currentIndex();
        for (int i = 0; i < std::abs(rows); ++i) QTest::keyClick(box, rows > 0 ? Qt::Key_Down : Qt::Key_Up);
    }
    void Key(int key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(canvas.get(), static_cast<Qt::Key>(key), modifiers);
    }
    // A drag on the canvas between two points of it.
    void Drag(QPoint from, QPoint to) const {
        QTest::mousePress(canvas.get(), Qt::LeftButton, {}, from);
        QTest::mouseMove(canvas.get(), (from + to) / 2);
        QTest::mouseMove(canvas.get(), to);
        QTest::mouseRelease(canvas.get(), Qt::LeftButton, {}, to);
    }
};
