// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CXMLWnd.h"

class QAbstractButton;
class ToolHost;

// Bottom edit bar: name, size and file size of the open picture, and the option that asks for all that is known of it.
// Main thread only.
class CMidBottomEditTool : public CXMLWnd {
    Q_OBJECT

  public:
    // Bars are all made with their host.
    CMidBottomEditTool(ToolHost& host, QWidget* parent);

    // Shows name (shortened), size and file size; the whole name is the name's tooltip.
    void ShowFacts(const QString& name, const QString& size, const QString& fileSize);
    // The same from a picture's information record (tag_ImageInfo).
    template <class Info>
    void ShowInfo(const Info& info) {
        ShowFacts(QString::fromStdWString(info.FileName), QString::fromStdWString(info.Dimensions),
                  QString::fromStdWString(info.FileSize));
    }
    // "6000 x 4000": how a size is written into bar and record.
    static QString SizeText(int width, int height);

  signals:
    // The information of the picture is asked for by this option, which is checked now.
    void InfoAsked(QAbstractButton* option);

  protected:
    void OnNotify(const Notify& notify) override;

  private:
    void SetText(const char* label, const QString& text);
};
