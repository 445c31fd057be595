// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGui/QClipboard>
#include <QtGui/QInputMethodEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>

#include "CBasePanelText.h"
#include "CColorButton.h"
#include "CColorField.h"
#include "CColorWnd.h"
#include "CFontCombo.h"
#include "CNumberEdit.h"
#include "CSliderCtrl.h"
#include "CWordEdit.h"
#include "CWordWnd.h"
#include "Style.h"
#include "ToolTestHost.h"

// The text tool's canvas and panel beside each other, with a picture of 600 x 400 at 100 %.
class TextHost : public ToolTestHost<CWordWnd, CBasePanelText> {
  public:
    explicit TextHost(const QString& language = QStringLiteral("1033"), QSize picture = {600, 400})
        : ToolTestHost<CWordWnd, CBasePanelText>(language) {
        Style::Apply(*qApp);
        Open(TestPictures::Face(picture.width(), picture.height()));
        Enter();
    }
    // The window loses the keyboard while everything is still there.
    ~TextHost() override { frame.hide(); }
    // As the work area does when the tool is entered.
    void Enter() {
        panel->OnFrameMessage(LeavingToolMessage{5});
        panel->OnFrameMessage(RefreshPanelMessage{5});
        messages.clear();
    }
    void Undo() {
        canvas->OnUndo();
        panel->OnFrameMessage(RefreshPanelMessage{5});
    }
    void Redo() {
        canvas->OnRedo();
        panel->OnFrameMessage(RefreshPanelMessage{5});
    }

    const CWordLogic& Logic() const { return canvas->Logic(); }
    const StringParams& Selected() const { return Logic().Text(Logic().Selected()); }
    CWordEdit* Edit() const { return Control<CWordEdit>("EditWenZi"); }
    CNumberEdit* Size() const { return Control<CNumberEdit>("EditZiHao"); }
    QComboBox* Sizes() const { return Control<QComboBox>("ComboZiHao"); }
    CFontCombo* Fonts() const { return Control<CFontCombo>("ComboZiTi"); }
    CColorButton* Color() const { return Control<CColorButton>("BtnColor"); }
    QAbstractButton* Option(const char* name) const { return Control<QAbstractButton>(name); }

    // Acts of the user.
    void Click(const char* name) const { QTest::mouseClick(Control(name), Qt::LeftButton); }
    void Type(const QString& text) const {
        Edit()->setFocus();
        QTest::keyClick(Edit(), Qt::Key_A, Qt::ControlModifier);
        if (text.isEmpty()) QTest::keyClick(Edit(), Qt::Key_Delete);
        for (const QChar character : text) {
            if (character == u'\n')
                QTest::keyClick(Edit(), Qt::Key_Return);
            else
                QTest::keyClicks(Edit(), QString(character));
        }
    }
    void TypeSize(const QString& text) const {
        Size()->setFocus();
        Size()->selectAll();
        if (text.isEmpty())
            QTest::keyClick(Size(), Qt::Key_Backspace);
        else
            QTest::keyClicks(Size(), text);
    }
    void Add(const QString& text) const {
        Type(text);
        Click("BtnAddWenZi");
    }
    void Key(int key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(canvas.get(), static_cast<Qt::Key>(key), modifiers);
    }
    void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::mousePress(canvas.get(), Qt::LeftButton, {}, from);
        Move((from + to) / 2, modifiers);
        Move(to, modifiers);
        QTest::mouseRelease(canvas.get(), Qt::LeftButton, {}, to);
    }
    // With the left button down.
    void Move(QPoint to, Qt::KeyboardModifiers modifiers = {}) const {
        MoveOver(canvas.get(), to, modifiers, Qt::LeftButton);
    }
    static void MoveOver(QWidget* widget, QPoint to, Qt::KeyboardModifiers modifiers = {},
                         Qt::MouseButtons held = Qt::NoButton) {
        QMouseEvent move(QEvent::MouseMove, QPointF(to), widget->mapToGlobal(QPointF(to)), Qt::NoButton, held,
                         modifiers);
        QApplication::sendEvent(widget, &move);
    }
    QPoint Middle() const { return Logic().BoxOf(Logic().Selected()).Centre(); }
    QPoint RotateAt() const { return Logic().ButtonsOf(Logic().Selected()).rotateCentre.toPoint(); }
    QPoint DeleteAt() const { return Logic().ButtonsOf(Logic().Selected()).deleteCentre.toPoint(); }
    // The canvas as it is painted.
    QImage Painted() const {
        QImage shown(canvas->size(), QImage::Format_RGB32);
        canvas->render(&shown, {}, {}, {});
        return shown;
    }
    CColorWnd& OpenColors() const {
        Click("BtnColor");
        if (!panel->ColorWnd() || !panel->ColorWnd()->isVisible()) qFatal("the palette did not open");
        return *panel->ColorWnd();
    }
};
