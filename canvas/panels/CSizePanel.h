// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <QtCore/QSize>

#include "CToolPanel.h"

class CNumberEdit;

// Base of the left panels with a width and a height in pixels (`EditKuanDu`, `EditGaoDu`), OK and Cancel. Enter is OK
// and Esc is Cancel wherever the keyboard is in the panel; every act leaves compare first.
class CSizePanel : public CToolPanel {
    Q_OBJECT

  protected:
    enum class Side { Width, Height };

    CSizePanel(ToolHost& host, QWidget* parent) : CToolPanel(host, parent) {}

    // The user changed a field by keys, arrows or wheel. The panel corrects what stands there.
    virtual void OnSideTyped(Side side) = 0;
    virtual void OnOk() = 0;
    virtual void OnCancel() = 0;
    // Any other control.
    virtual void OnControl(const Notify& notify) = 0;

    // The number in a field; 0 when it is empty, or missing in the skin.
    int Value(Side side) const;
    QSize Values() const;
    void ShowSide(Side side, int value);
    void ShowSize(QSize size);
    // The size that follows from the number just typed. Where that number itself must grow, it does so when the field
    // is left or the size is used: digits still to come would be added to a number that nobody typed.
    void ShowSizeByTyped(Side typed, QSize size);
    void ClearSize();
    // Writes `least` into a field that is empty or below it, `most` into one above; its value is then within. Numbers
    // are written in their plain form. What takes the place of an empty text is selected, so that the next key
    // replaces it.
    int Correct(Side side, int least, int most);

    void OnNotify(const Notify& notify) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    CNumberEdit* Edit(Side side) const;
    void Settle();

    CNumberEdit* m_width = nullptr;
    CNumberEdit* m_height = nullptr;
    // What the fields will show once the typing is over.
    std::optional<QSize> m_unsettled;
};
