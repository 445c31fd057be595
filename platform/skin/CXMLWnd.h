// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include "MessageBox.h"
#include "Notify.h"

class QEventLoop;

// Base of all skinned windows: panels, bars, pop-ups and dialogs. The skin decides what lies where; the window finds
// its controls by name and gets their notifications in one place. Main thread only.
class CXMLWnd : public QWidget {
    Q_OBJECT

  public:
    explicit CXMLWnd(QWidget* parent = nullptr);
    ~CXMLWnd() override;

    // Loads the skin and calls OnNotify with "windowinit". Once, from the constructor of the derived class or its
    // maker; false without a usable skin, and then the window is empty.
    bool Create(const QString& skinName);

    // The control of that name in this window's skin; null when the skin lacks it.
    template <class T>
    T* Find(const QString& name) const {
        return findChild<T*>(name);
    }

    // Shows the window as a dialog of `owner`, centred over it, and returns its result when it ends: what EndModal was
    // called with, ResultClose when it was closed.
    int ShowModal(QWidget* owner, const QString& title);
    // Ends ShowModal. No effect outside it.
    void EndModal(int result);
    bool IsModal() const { return m_loop != nullptr; }

  protected:
    // Called while the skin loads, for each control: gives the window the chance to build its own class under a name.
    // Null leaves the control to the loader.
    virtual QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name);
    // Everything that the controls tell.
    virtual void OnNotify(const Notify& notify);
    // A dialog may refuse to be closed by its close box, the window manager or Esc; the default allows it.
    virtual bool OnCloseRequest() { return true; }

    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    // Goes before the controls do.
    QObject m_alive;
    QEventLoop* m_loop = nullptr;
    int m_result = ResultClose;
};
