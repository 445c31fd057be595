// SPDX-License-Identifier: GPL-3.0-or-later
#include "MessageBox.h"

#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include "Language.h"

void ShowMessage(QWidget* owner, const QString& text) {
    QMessageBox box(QMessageBox::Warning, AppTitle(), text, QMessageBox::NoButton, owner);
    // Texts may come from files and servers; none of them is markup.
    box.setTextFormat(Qt::PlainText);
    QPushButton* ok = box.addButton(LanguageText(QStringLiteral("ids_ok")), QMessageBox::AcceptRole);
    ok->setObjectName(QStringLiteral("BtnOk"));
    box.setEscapeButton(ok);
    box.exec();
}

ModalResult AskYesNo(QWidget* owner, const QString& text) {
    QMessageBox box(QMessageBox::Question, AppTitle(), text, QMessageBox::NoButton, owner);
    box.setTextFormat(Qt::PlainText);
    QPushButton* yes = box.addButton(LanguageText(QStringLiteral("ids_yes")), QMessageBox::YesRole);
    QPushButton* no = box.addButton(LanguageText(QStringLiteral("ids_no")), QMessageBox::NoRole);
    yes->setObjectName(QStringLiteral("BtnYes"));
    no->setObjectName(QStringLiteral("BtnNo"));
    box.setDefaultButton(no);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes ? ResultYes : ResultNo;
}
