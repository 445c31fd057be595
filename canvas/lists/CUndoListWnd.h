// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QListWidget>
#include <vector>

#include "CPopupWnd.h"

// Row of the history list: the name of a step.
class CHistoryListItem : public CXMLWnd {
    Q_OBJECT

  public:
    static constexpr int Height = 25;

    CHistoryListItem(const QString& name, QWidget* parent);
    // " " and the step's name.
    QString Text() const;
    // The row of the step on show is drawn in the accent.
    void SetCurrent(bool current);
};

// History list: the names of the reachable steps, oldest first.
class CHistoryList : public QListWidget {
    Q_OBJECT

  public:
    explicit CHistoryList(QWidget* parent);

    // Shows these names with `current` selected and in view. Setting raises no notification.
    void Fill(const std::vector<QString>& names, int current);
    CHistoryListItem* Row(int row) const;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};

// Drop-down with the history list.
class CUndoListWnd : public CPopupWnd {
    Q_OBJECT

  public:
    static constexpr int Width = 168;
    static constexpr int VisibleRows = 6;

    explicit CUndoListWnd(QAbstractButton* option);

    // Opens the list on these steps with row `current` selected.
    void Open(const std::vector<QString>& names, int current);

  signals:
    // The user chose a row, 0 for the oldest step. The list is closed by then.
    void RowClicked(int row);

  protected:
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    void OnNotify(const Notify& notify) override;

  private:
    CHistoryList* m_list = nullptr;
    int m_height = 0;
};
