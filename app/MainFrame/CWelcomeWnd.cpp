// SPDX-License-Identifier: GPL-3.0-or-later
#include "CWelcomeWnd.h"

#include <array>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractButton>

#include "ClickCount.h"
#include "Language.h"
#include "ToolTable.h"

namespace {

struct ChoiceRow {
    const char* control;
    int choice;
    const char* clickCode;
};

constexpr std::array<ChoiceRow, 3> Choices{{{"BtnWelEdit", CWelcomeWnd::Basic, "8880101"},
                                            {"BtnWelTeXiao", CWelcomeWnd::Effects, "8880102"},
                                            {"BtnWelMeiRong", CWelcomeWnd::Beauty, "8880103"}}};

}  // namespace

CWelcomeWnd::CWelcomeWnd(QWidget* frame, const ToolTable& tools) : CXMLWnd(frame), m_tools(tools) {
    setObjectName(QStringLiteral("WelcomeWnd"));
    setWindowTitle(QStringLiteral("WelcomeWnd"));
    Create(QStringLiteral("WelcomeWnd.xml"));
    EnableChoices();
    hide();
    frame->installEventFilter(this);
}

void CWelcomeWnd::Open() {
    EnableChoices();
    Place();
    show();
    raise();
    if (auto* first = Find<QWidget>(QStringLiteral("BtnWelEdit"))) first->setFocus();
}

void CWelcomeWnd::Place() {
    move((parentWidget()->width() - width()) / 2, (parentWidget()->height() - height()) / 2);
}

bool CWelcomeWnd::eventFilter(QObject* object, QEvent* event) {
    if (object == parentWidget() && event->type() == QEvent::Resize) Place();
    return CXMLWnd::eventFilter(object, event);
}

void CWelcomeWnd::EnableChoices() {
    for (const ChoiceRow& row : Choices) {
        auto* button = Find<QAbstractButton>(QLatin1String(row.control));
        if (!button) continue;
        const bool built = m_tools.FirstOf(row.choice) != 0;
        button->setEnabled(built);
        if (!built) button->setToolTip(LanguageText(QStringLiteral("ids_notyet")));
    }
    if (auto* sample = Find<QWidget>(QStringLiteral("BtnExit"))) sample->setEnabled(true);
}

void CWelcomeWnd::OnNotify(const Notify& notify) {
    if (notify.type != u"click") return;
    for (const ChoiceRow& row : Choices)
        if (notify.name == QLatin1String(row.control)) return Choose(row.choice, QLatin1String(row.clickCode));
    if (notify.name == u"BtnExit") Choose(Sample, {});
    if (notify.name == u"BtnWelClose") emit Dismissed();
}

void CWelcomeWnd::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        emit Dismissed();
    else
        CXMLWnd::keyPressEvent(event);
}

// The buttons go off first, so that a second click while the picture opens does nothing.
void CWelcomeWnd::Choose(int choice, const QString& clickCode) {
    for (const ChoiceRow& row : Choices)
        if (auto* button = Find<QAbstractButton>(QLatin1String(row.control))) button->setEnabled(false);
    if (!clickCode.isEmpty()) CountClick(clickCode);
    emit Chosen(choice);
}
