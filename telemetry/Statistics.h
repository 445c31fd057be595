// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <QtCore/QSize>
#include <QtCore/QString>

#include "Addresses.h"
#include "NetworkTasks.h"
#include "Requests.h"

// What the statistics ask of the machine.
struct StatisticsServices {
    std::function<qint64()> now;      // seconds since the epoch
    std::function<int()> dayOfMonth;  // in local time
    std::function<bool()> networkAlive;
    std::function<QString()> clientId;
};
StatisticsServices SystemStatistics();

// Usage statistics: what the program tells its maker of starts, opened pictures and clicks, when and only when an
// address is set up for it and the user has not turned it off. Without one the object reads two settings and does
// nothing else, ever: no id, no thread, no file, no key, no request.
//
// Made by the process that holds the instance lock, before its main window, and destroyed when that is gone. Main
// thread. What is sent is carried out by tasks that own copies of all they need; the clicks have their own lock. No
// failure is shown or tried again.
class CStatistics {
  public:
    explicit CStatistics(Addresses addresses = ReadAddresses(), StatisticsServices services = SystemStatistics());
    // Gives up what is being sent, and keeps the length of the session.
    ~CStatistics();
    CStatistics(const CStatistics&) = delete;
    CStatistics& operator=(const CStatistics&) = delete;

    // The program's own, while it lives.
    static CStatistics* Current() { return s_current; }

    // Once, when the main window stands: the daily check and the run task. Without a network nothing is sent or kept.
    // `screen` in pixels.
    void StartStatistics(QSize screen);
    // Once per opened picture.
    void SendOpen(const OpenFacts& picture);

    // The program runs for the first time, as far as its settings know.
    bool IsFirstRun() const { return m_firstRun == 0; }
    NetworkTasks& Tasks() { return m_tasks; }

  private:
    // What tasks carry with them.
    struct Context {
        Addresses addresses;
        StatisticsServices services;
        QString client;
        int firstRun = 0;
        QSize screen;
    };
    using CanContinue = NetworkTasks::CanContinue;

    static void DailyCheck(const Context& context, const CanContinue& canContinue);
    static void RunTask(const Context& context, const CanContinue& canContinue);
    static void ClickReport(const Context& context, const CanContinue& canContinue);
    static qint64 DaysSinceLastVisit(const Context& context);
    Context NewContext() const;

    static inline CStatistics* s_current = nullptr;

    const Addresses m_addresses;
    const StatisticsServices m_services;
    bool m_on = false;
    int m_firstRun = 0;
    QString m_client;
    QSize m_screen;
    qint64 m_sessionStart = 0;
    NetworkTasks m_tasks;
};

// The one GET of the statistics, one at a time in the whole process: the reply's text, empty on any failure.
QString HttpGetText(const QString& url, const std::function<bool()>& canContinue);

// Takes the installer's name apart, which it leaves in [Main] InstallerName: fullname, partner and n of [Main].
void ParseInstallerName();
