// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QComboBox>

#include "ThumbnailThread.h"

class QStringListModel;

// The list of font families, each in its own face. Typing a part of a name shows the families that have it. The names
// are gathered on a thread of their own, since a machine may have thousands; until then the list has the one that it
// was made with.
class CFontCombo : public QComboBox {
    Q_OBJECT

  public:
    explicit CFontCombo(QWidget* parent = nullptr);

    // Gathers the families anew.
    void Fill();
    bool IsFilled() const { return m_filled; }
    // Selects a family, once it is there; one that is not leaves the list without a selection. Tells nothing.
    void ShowFamily(const QString& family);

  protected:
    void showEvent(QShowEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void Take(const QStringList& families);

    QStringListModel* m_families;
    QString m_shown;
    bool m_filled = false;
    ThumbnailThread m_thread;
};
