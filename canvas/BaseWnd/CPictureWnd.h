// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CanvasLogic.h"
#include "CViewWnd.h"

// Base of the canvases that show the picture of one logic object: source and history go to the logic, its view is
// painted. A tool adds its input and what it draws over the picture.
class CPictureWnd : public CViewWnd {
    Q_OBJECT

  public:
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
    std::function<void()> Remember() override;

  protected:
    // `logic` is a member of the derived class.
    CPictureWnd(ToolHost& host, const ToolFacts& tool, CanvasLogic& logic, QWidget* parent);

    // The click that is counted when the tool is left with a changed picture, empty for none; that of the facts here.
    virtual QString LeaveClick() const;

    // A picture came into the logic from outside: opened, entered, or by a move in the history. Before it is painted;
    // on a worker too.
    virtual void OnPictureTaken() {}

    // The three ways in which a tool acts on its logic object. Each runs `act`, takes the result up and paints it
    // before it returns; an act that runs out of memory has not happened. Main thread.

    // A slider of the panel moves: tells nobody.
    void Preview(const std::function<void()>& act);
    // Anything else: the frame hears of a new zoom or size and of the history, and the user of want of memory. True
    // when something came of it, which `act` says.
    bool Perform(const std::function<bool()>& act);
    // The same as a task with the progress window; not while the host is busy.
    bool PerformTask(const std::function<bool(CObjProgress*)>& act);

    ViewPicture TakeViewPicture() override;
    void OnViewChanged(ViewChange change) override;
    Bitmap NavigatorPicture() override;

  private:
    // The logic starts anew with the client's size.
    void StartVisit();
    void TakeUpSource();
    void TakeUpPicture();
    void Move(const std::function<void()>& move);

    const ToolFacts& m_facts;
    // The picture's size as the frame knows it; a preview may be of another.
    QSize m_toldSize;
    CanvasLogic& m_pictureLogic;
};
