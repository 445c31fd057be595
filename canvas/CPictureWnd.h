// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "CanvasLogic.h"
#include "CViewWnd.h"

// Base of the canvases that show the picture of one logic object: source and history go to the logic, its view is
// painted. A tool adds its input and what it draws over the picture.
class CPictureWnd : public CViewWnd {
    Q_OBJECT

  public:
    // Code of NotifyView for a change of the history, the same in every tool.
    static constexpr int HistoryCode = 5;

    Bitmap GetShowBitmap() override;
    void SetShowBitmap(const Bitmap& picture) override;
    bool OnEnter() override;
    void OnApply() override;
    bool IsImageChanged() override;
    bool HasPendingWork() override;
    void OnUndo() override;
    void OnRedo() override;
    void OnRevert() override;
    void OnHistoryJump(int row) override;

  protected:
    // `leaveClick` is counted when the tool is left with a changed picture; empty for none.
    CPictureWnd(ToolHost& host, int tool, QString leaveClick, QWidget* parent);

    // The tool's logic object, a member of the derived class.
    virtual CanvasLogic& PictureLogic() = 0;
    // A picture came into the logic from outside: opened, entered, or by a move in the history. Before it is painted;
    // on a worker too.
    virtual void OnPictureTaken() {}
    // After a move in the history was shown; the tool tells its panel. Main thread.
    virtual void OnHistoryMoved() {}

    // Takes the logic's geometry over, as after an operation that fitted the picture, and shows the picture. Tells the
    // frame the zoom when it changed. Main thread.
    void TakeUpPicture();
    // Paints a picture that changed within its geometry. Main thread.
    void ShowChange();

    ViewPicture TakeViewPicture() override;
    void OnViewChanged(ViewChange change) override;
    Bitmap NavigatorPicture() override;

  private:
    // The logic starts anew with the client's size.
    void StartVisit();
    void TakeUpSource();
    void TakeUpStep();

    const QString m_leaveClick;
};
