// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

class QWidget;

// Results of modal windows, everywhere.
enum ModalResult { ResultClose = 1, ResultYes = 6, ResultNo = 7 };

// A message with the program's caption and one OK button. Main thread; returns when it was read.
void ShowMessage(QWidget* owner, const QString& text);
// A question with Yes and No: ResultYes or ResultNo; Esc and the close box count as No.
ModalResult AskYesNo(QWidget* owner, const QString& text);
