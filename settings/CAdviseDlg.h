// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CXMLWnd.h"

class QLineEdit;
class QPlainTextEdit;

// Feedback: a remark and a contact for the makers. It is sent on a task, which Esc gives up; on success the window
// closes, on failure the texts stay and the reason is told. Who leaves no contact is reminded once in the program's
// life
// ([Advise] Email of Config.ini). Without an address the window says so and takes no input.
class CAdviseDlg : public CXMLWnd {
    Q_OBJECT

  public:
    // `host` is where feedback goes; empty when none is set up.
    explicit CAdviseDlg(const QString& host);

  protected:
    void OnNotify(const Notify& notify) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    // What the user wrote; empty for a field that holds its default text and was never given another one.
    QString Remark() const;
    QString Contact() const;
    void Commit();
    void Send();
    void Tell(const char* key, QWidget* field);

    const QString m_host;
    QPlainTextEdit* m_remark = nullptr;
    QLineEdit* m_contact = nullptr;
    bool m_remarkEdited = false;
    bool m_contactEdited = false;
};
