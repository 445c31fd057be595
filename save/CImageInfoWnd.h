// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "CPopupWnd.h"

struct tag_ImageInfo;

// Picture information: the pop-up with all that is known of the opened picture. It stands above the option that opened
// it, closes as drop-downs do, and is gone afterwards. Every value can be selected and copied, one by one or all at
// once; a field that the picture does not tell is empty.
class CImageInfoWnd : public CPopupWnd {
    Q_OBJECT

  public:
    static constexpr int Width = 376, Height = 336;
    // How far left of the option's right edge the window begins.
    static constexpr int FromRight = 73;

    explicit CImageInfoWnd(QAbstractButton* option);

    // `path` is that of the picture's file, for the name's tooltip and for copying.
    void SetInfo(const tag_ImageInfo& info, const QString& path);
    void Open();

    // All that is shown, a line "label: value" for each field that is not empty, and the path.
    QString AllText() const;

  protected:
    void OnNotify(const Notify& notify) override;
    void hideEvent(QHideEvent* event) override;

  private:
    QString m_name;  // whole
    QString m_path;
};

// Opens the window above `option`, which was just checked. Without a record nothing opens, the option is unchecked, and
// the answer is false.
bool ShowImageInfo(QAbstractButton* option, const tag_ImageInfo* info, const QString& path);
