// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QStringList>

#include "CPopupWnd.h"

struct Addresses;

// Settings: the drop-down of the caption bar with updates, large pictures, what is sent, and about. An entry that this
// installation cannot carry out is disabled and says why. It closes as drop-downs do, and is gone afterwards. What an
// entry opens is its owner's business: each is told by a signal once the drop-down is closed.
class CSettingWnd : public CPopupWnd {
    Q_OBJECT

  public:
    using StartProgram = std::function<bool(const QString& path, const QStringList& arguments)>;

    CSettingWnd(QAbstractButton* option, const Addresses& addresses, StartProgram startProgram);
    void Open();

  signals:
    void SizeChosen();
    void NetworkChosen();
    void AboutChosen();
    // The updater was asked for and is not installed.
    void UpdaterMissing();

  protected:
    void OnNotify(const Notify& notify) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void Update();

    const StartProgram m_startProgram;
};
