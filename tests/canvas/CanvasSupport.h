// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mutex>
#include <QtCore/QCoreApplication>
#include <QtTest/QTest>
#include <vector>

#include "BitmapView.h"
#include "CObjProgress.h"
#include "CViewWnd.h"
#include "TestPictures.h"
#include "ToolHost.h"

// A work area of a few lines, which keeps what it is told.
class RecordingHost : public ToolHost {
  public:
    int Tool() const override { return tool; }
    CBaseWnd* Canvas() const override { return canvas; }
    void SwitchTool(int number) override { tool = number; }
    int CompareMode() const override { return compareMode; }
    void SetCompareMode(int mode) override {
        compareMode = mode;
        log.push_back(QStringLiteral("compare %1").arg(mode));
    }
    bool IsBusy() const override { return busy; }
    bool RunTask(const std::function<void(CObjProgress&)>& work) override {
        CObjProgress sink;
        work(sink);
        return true;
    }
    const tag_ImageInfo* ImageInfo() const override { return info; }
    void UpdateSizeText() override { log.push_back(QStringLiteral("size text")); }
    void Tell(const QString& key) override { log.push_back(QStringLiteral("tell ") + key); }
    void SendFrame(const FrameMessage& message) override {
        messages.push_back(message);
        std::visit([this](const auto& m) { log.push_back(QStringLiteral("message %1").arg(m.Number, 0, 16)); },
                   message);
    }

    // What a canvas told of one kind.
    template <class Kind>
    std::vector<Kind> News() const {
        std::vector<Kind> news;
        for (const FrameMessage& message : messages)
            if (const auto* view = std::get_if<ViewNotifyMessage>(&message))
                if (const auto* told = std::get_if<Kind>(&view->news)) news.push_back(*told);
        return news;
    }
    std::vector<int> Zooms() const {
        std::vector<int> percents;
        for (const ZoomNews& news : News<ZoomNews>()) percents.push_back(news.percent);
        return percents;
    }
    template <class Message>
    int Count() const {
        int count = 0;
        for (const FrameMessage& message : messages) count += std::holds_alternative<Message>(message);
        return count;
    }

    int tool = 1;
    CBaseWnd* canvas = nullptr;
    int compareMode = 0;
    bool busy = false;
    const tag_ImageInfo* info = nullptr;
    std::vector<FrameMessage> messages;
    std::vector<QString> log;
};

// The smallest tool: shows its picture as it is. Its view bitmap is cut out of the picture by plain indexing.
class PlainTool : public CViewWnd {
  public:
    PlainTool(ToolHost& host, QWidget* parent = nullptr) : CViewWnd(host, 1, parent) {}

    Bitmap GetShowBitmap() override {
        ++fullPasses;
        return m_picture;
    }
    void SetShowBitmap(const Bitmap& picture) override {
        {
            const std::lock_guard lock(m_lock);
            m_picture = picture;
            Geometry().SetImage({picture.Width(), picture.Height()});
        }
        RefreshNavigator();
    }
    bool IsImageChanged() override { return changed; }
    ViewPicture TakeViewPicture() override {
        const std::lock_guard lock(m_lock);
        return {m_view, m_view.IsOpaque(), m_place};
    }
    void OnViewChanged(ViewChange change) override {
        const std::lock_guard lock(m_lock);
        (change == ViewChange::Settled ? settled : panned) += 1;
        m_place = Geometry().ScreenRect();
        m_view = Bitmap();
        if (!m_picture) return;
        m_view = Bitmap::Uninitialised(m_place.width(), m_place.height());
        auto* words = reinterpret_cast<std::uint32_t*>(m_view.MutablePixels());
        for (int y = 0; y < m_place.height(); ++y)
            for (int x = 0; x < m_place.width(); ++x) {
                const QPointF p = Geometry().ToImage(QPointF(m_place.topLeft()) + QPointF(x + 0.5, y + 0.5));
                *words++ = TestPictures::PixelAt(m_picture, std::clamp(int(p.x()), 0, m_picture.Width() - 1),
                                                 std::clamp(int(p.y()), 0, m_picture.Height() - 1));
            }
    }
    Bitmap NavigatorPicture() override { return m_picture; }
    bool LeftButtonPans() const override { return leftPans; }

    bool leftPans = true;
    bool changed = false;
    int settled = 0, panned = 0, fullPasses = 0;

  private:
    std::mutex m_lock;
    Bitmap m_picture;
    Bitmap m_view;
    QRect m_place;
};

// A canvas of that logical size on the screen with a picture at fit.
struct ShownTool {
    ShownTool(const Bitmap& picture, QSize size) : tool(host) {
        host.canvas = &tool;
        tool.setWindowFlag(Qt::FramelessWindowHint);
        tool.Place(QRect(QPoint(50, 50), size));
        tool.show();
        if (!QTest::qWaitForWindowExposed(&tool)) qFatal("the canvas did not come up");
        tool.SetShowBitmap(picture);
        tool.ZoomFit();
        host.messages.clear();
        host.log.clear();
    }
    QImage Grab() { return tool.grab().toImage().convertToFormat(QImage::Format_ARGB32); }

    RecordingHost host;
    PlainTool tool;
};

inline void SendWheel(QWidget& widget, QPoint at, int delta) {
    QWheelEvent event(QPointF(at), widget.mapToGlobal(QPointF(at)), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
}

// A drag of the real mouse events from one point to another, in steps.
inline void Drag(QWidget& widget, Qt::MouseButton button, QPoint from, QPoint to, int steps = 4) {
    QTest::mousePress(&widget, button, Qt::NoModifier, from);
    for (int i = 1; i <= steps; ++i) {
        const QPoint at = from + (to - from) * i / steps;
        QMouseEvent move(QEvent::MouseMove, QPointF(at), widget.mapToGlobal(QPointF(at)), Qt::NoButton, button,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &move);
    }
    QTest::mouseRelease(&widget, button, Qt::NoModifier, to);
}
