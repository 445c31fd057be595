// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QStringList>

#include "CBaseWnd.h"
#include "CToolPanel.h"
#include "Messages.h"

// A tool that does nothing but write down what it is asked, for tests of the frame.
class ToyTool : public CBaseWnd {
  public:
    ToyTool(ToolHost& host, int tool, QWidget* parent, QStringList& told)
        : CBaseWnd(host, tool, parent), m_told(told), m_name(QString::number(tool)) {}
    ~ToyTool() override { Tell("gone"); }

    Bitmap GetShowBitmap() override { return m_picture; }
    void SetShowBitmap(const Bitmap& picture) override {
        Tell("SetShowBitmap");
        m_picture = picture;
    }
    bool IsImageChanged() override { return false; }
    void GetImageSize(int* w, int* h) override {
        *w = m_picture.Width();
        *h = m_picture.Height();
    }
    void OnImageReady() override { Tell("OnImageReady"); }
    void OnApply() override { Tell("OnApply"); }
    void ZoomFit() override { Tell("ZoomFit"); }
    bool OnEnter() override {
        Tell("OnEnter");
        return false;
    }

  private:
    void Tell(const char* what) {
        const QString thread = OnMainThread() ? QString() : QStringLiteral(" on worker");
        m_told << m_name + QLatin1Char(' ') + QLatin1String(what) + thread;
    }

    QStringList& m_told;
    QString m_name;
    Bitmap m_picture;
};

// Its panel writes down the messages that reach it.
class ToyPanel : public CToolPanel {
  public:
    ToyPanel(ToolHost& host, QWidget* parent, QStringList& told) : CToolPanel(host, parent), m_told(told) {}
    void OnFrameMessage(const FrameMessage& message) override {
        std::visit([this](const auto& m) { m_told << QStringLiteral("0x%1").arg(m.Number, 0, 16); }, message);
    }

  private:
    QStringList& m_told;
};
