// SPDX-License-Identifier: GPL-3.0-or-later
#include "NotifyWiring.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPlainTextEdit>

#include "CSliderCtrl.h"
#include "CXMLWnd.h"

namespace {

using Sink = std::function<void(const Notify&)>;

// Tells of an edit field's keyboard focus, which has no signal of its own.
class FocusTeller : public QObject {
  public:
    FocusTeller(QWidget* edit, Sink sink) : QObject(edit), m_edit(edit), m_sink(std::move(sink)) {
        edit->installEventFilter(this);
    }
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::FocusIn) m_sink({QStringLiteral("setfocus"), m_edit->objectName(), m_edit});
        if (event->type() == QEvent::FocusOut) m_sink({QStringLiteral("killfocus"), m_edit->objectName(), m_edit});
        return QObject::eventFilter(object, event);
    }

  private:
    QWidget* m_edit;
    Sink m_sink;
};

void WireButton(QAbstractButton* button, const Sink& sink) {
    QObject::connect(button, &QAbstractButton::pressed, button, [=] {
        sink({QStringLiteral("downclick"), button->objectName(), button});
    });
    QObject::connect(button, &QAbstractButton::clicked, button, [=] {
        // The name is read first: the handlers may delete the window that the button lies in.
        const Notify click{QStringLiteral("click"), button->objectName(), button};
        if (button->isCheckable() && button->isChecked())
            sink({QStringLiteral("selectchanged"), button->objectName(), button, 1});
        sink(click);
    });
}

void WireSlider(CSliderCtrl* slider, const Sink& sink) {
    QObject::connect(slider, &CSliderCtrl::ValueChanging, slider, [=](int value) {
        sink({QStringLiteral("valuechanging"), slider->objectName(), slider, value});
    });
    QObject::connect(slider, &CSliderCtrl::ValueChanged, slider, [=](int value) {
        sink({QStringLiteral("valuechanged"), slider->objectName(), slider, value});
    });
}

void WireEdit(QLineEdit* edit, const Sink& sink) {
    QObject::connect(edit, &QLineEdit::textEdited, edit, [=] {
        sink({QStringLiteral("textchanged"), edit->objectName(), edit});
        sink({QStringLiteral("enchange"), edit->objectName(), edit});
    });
    new FocusTeller(edit, sink);
}

// Whoever sets such a field from code tells itself apart: it has no signal of the user's own changes.
void WireText(QPlainTextEdit* edit, const Sink& sink) {
    QObject::connect(edit, &QPlainTextEdit::textChanged, edit, [=] {
        sink({QStringLiteral("enchange"), edit->objectName(), edit});
    });
    new FocusTeller(edit, sink);
}

void Wire(QWidget* control, const Sink& sink) {
    if (auto* slider = qobject_cast<CSliderCtrl*>(control)) {
        WireSlider(slider, sink);
    } else if (auto* button = qobject_cast<QAbstractButton*>(control)) {
        WireButton(button, sink);
    } else if (auto* combo = qobject_cast<QComboBox*>(control)) {
        QObject::connect(combo, &QComboBox::activated, combo, [=](int index) {
            sink({QStringLiteral("itemselect"), combo->objectName(), combo, index});
        });
    } else if (auto* edit = qobject_cast<QLineEdit*>(control)) {
        WireEdit(edit, sink);
    } else if (auto* text = qobject_cast<QPlainTextEdit*>(control)) {
        WireText(text, sink);
    } else if (auto* list = qobject_cast<QListWidget*>(control)) {
        QObject::connect(list, &QListWidget::itemClicked, list, [=](QListWidgetItem* item) {
            sink({QStringLiteral("itemclick"), list->objectName(), list, list->row(item)});
        });
    }
}

// A control belongs to the nearest skinned window around it.
bool BelongsTo(QWidget* control, const QWidget* root) {
    for (QWidget* above = control->parentWidget(); above && above != root; above = above->parentWidget())
        if (qobject_cast<CXMLWnd*>(above)) return false;
    return true;
}

}  // namespace

void WireNotifications(QWidget* root, const Sink& sink) {
    for (QWidget* control : root->findChildren<QWidget*>())
        if (!control->objectName().isEmpty() && BelongsTo(control, root)) Wire(control, sink);
}
