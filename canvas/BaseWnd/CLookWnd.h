// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CPictureWnd.h"
#include "LookLogic.h"

// Base of the canvases of tools that lay one look over the picture: it maps the wishes of a list of looks and of the
// strength window to the logic object, and cuts what the thumbnails are made from.
class CLookWnd : public CPictureWnd {
    Q_OBJECT

  public:
    // For the panel, on the main thread; each paints before it returns.

    // Runs a look as a task with the progress window, shows it and tells the frame of the step. False when nothing
    // came of it: picture, look, strength and history are then as they were.
    bool RunLook(int look);
    void OnUndo() override;
    void OnRedo() override;
    void OnRevert() override;
    void OnHistoryJump(int row) override;
    // The strength slider moves or settles: shows the value; the next commit records it.
    void SetStrength(int percent, bool moving);
    // The look in force, LookLogic::NoLook for none, and its strength in percent.
    int Look() const { return m_look.Look(); }
    int Alpha() const { return m_look.Alpha(); }
    bool CanFade() const { return m_look.CanFade(); }

    // A piece of the picture that the looks are laid over, of `shape` in logical pixels at `scale` times that. The
    // source, so that a list shows what a choice would come to. Null without a picture.
    Bitmap ThumbnailBase(QSize shape, double scale) const;

  protected:
    // `logic` is a member of the derived class.
    CLookWnd(ToolHost& host, const ToolFacts& tool, LookLogic& logic, QWidget* parent)
        : CPictureWnd(host, tool, logic, parent), m_look(logic) {}

    // Keys of the texts by which the user learns, once, that a look that was chosen can't be used, and that the one of
    // a step can't be had any more. Empty for nothing.
    virtual QString ChoiceFailedKey() const { return {}; }
    virtual QString StepFailedKey() const { return {}; }

  private:
    void TellFailure(const QString& key);

    LookLogic& m_look;
};
