// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QPointer>

#include "CXMLWnd.h"

class ToolTable;

// The first screen: what to begin with. It lies over the main frame and tells its choice; the frame acts on it and
// closes it once a picture is open.
class CWelcomeWnd : public CXMLWnd {
    Q_OBJECT

  public:
    // Choices as the frame gets them.
    enum Choice { Sample = 0, Basic = 1, Effects = 2, Beauty = 3 };

    CWelcomeWnd(QWidget* frame, const ToolTable& tools);

    // Shows it over the frame.
    void Open();
    // After a cancelled or failed open the buttons work again.
    void EnableChoices();

  signals:
    void Chosen(int choice);
    // The user wants the editor as it is.
    void Dismissed();

  protected:
    void OnNotify(const Notify& notify) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Choose(int choice, const QString& clickCode);
    void Place();

    const ToolTable& m_tools;
};
