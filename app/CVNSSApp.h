// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QStringList>

class QApplication;

// The application object: one instance, start-up, the main frame as a modal loop, shutdown. When the frame's loop ends
// the program ends; there is no other main loop.
class CVNSSApp {
  public:
    explicit CVNSSApp(QApplication& application) : m_application(application) {}

    // Runs the whole program. `arguments` without the program's name. The process's exit code.
    int InitInstance(const QStringList& arguments);

  private:
    void RunFrame(const QString& picture, class SingleInstance& instance);
    void ExitInstance();

    QApplication& m_application;
};
