// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "CXMLWnd.h"

// A page of the panel of frames: a skin with one list, which the panel makes and owns the meaning of.
class CFramePage : public CXMLWnd {
    Q_OBJECT

  public:
    using MakeControl = std::function<QWidget*(const QString& className, QWidget* parent, const QString& name)>;

  protected:
    CFramePage(QWidget* parent, const QString& skin, MakeControl makeControl);

    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;

  private:
    MakeControl m_makeControl;
};

// Simple frames.
class CFrameJianDan : public CFramePage {
    Q_OBJECT
  public:
    CFrameJianDan(QWidget* parent, MakeControl makeControl)
        : CFramePage(parent, QStringLiteral("Frame_JianDan.xml"), std::move(makeControl)) {}
};

// Ornate frames.
class CFrameXuanCai : public CFramePage {
    Q_OBJECT
  public:
    CFrameXuanCai(QWidget* parent, MakeControl makeControl)
        : CFramePage(parent, QStringLiteral("Frame_XuanCai.xml"), std::move(makeControl)) {}
};
