// SPDX-License-Identifier: GPL-3.0-or-later
#include "CBaseWnd.h"

#include <QtGui/QPainter>
#include <QtGui/QResizeEvent>

#include "AppPaths.h"
#include "CanvasPaint.h"
#include "Messages.h"
#include "RunTask.h"
#include "Truncate.h"

CBaseWnd::CBaseWnd(ToolHost& host, int tool, QWidget* parent)
    : QWidget(parent), m_navigator(this), m_host(host), m_tool(tool), m_pixelRatio(devicePixelRatioF()) {
    // Every pixel is painted, and the window system's own double buffer is the off-screen one: no flicker.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::StrongFocus);
    m_navigator.hide();
}

CBaseWnd::~CBaseWnd() = default;

void CBaseWnd::GetImageSize(int* w, int* h) {
    *w = 0;
    *h = 0;
}

void CBaseWnd::GetViewRects(QRectF* imageRect, QRect* screenRect) {
    *imageRect = {};
    *screenRect = {};
}

void CBaseWnd::ZoomToPercent(int) {}

void CBaseWnd::OnHistoryJump(int) {}

void CBaseWnd::LayoutChildren(int, int) {}

void CBaseWnd::NotifyView(const ViewNews& news) {
    m_host.SendFrame(ViewNotifyMessage{m_tool, news});
}

void CBaseWnd::KeepInput(const QMouseEvent&) {}

std::function<void()> CBaseWnd::Remember() {
    return [] {};
}

void CBaseWnd::ShowNavigator(bool show) {
    if (!OnMainThread()) return PostToMain(this, [this, show] { ShowNavigator(show); });
    int width = 0, height = 0;
    GetImageSize(&width, &height);
    if (width > 0 && height > 0) m_navigator.setVisible(show);
}

void CBaseWnd::Place(const QRect& rect) {
    setGeometry(rect);
    // A hidden window gets its resize event only when it is shown; a tool is entered before that.
    LayOut();
}

void CBaseWnd::Redraw(Paint when) {
    if (!OnMainThread()) return PostToMain(this, [this] { update(); });
    if (when == Paint::Now && isVisible())
        repaint();
    else
        update();
}

void CBaseWnd::RedrawPart(const QRect& part) {
    const QRectF logical(QPointF(part.topLeft()) / m_pixelRatio, QSizeF(part.size()) / m_pixelRatio);
    if (!part.isEmpty() && isVisible()) repaint(logical.toAlignedRect());
}

void CBaseWnd::LayOut() {
    AssertMainThread();
    // The worker of a task reads the view's geometry, which a layout writes.
    m_layoutPending = IsTaskRunning();
    if (m_layoutPending) return;
    m_pixelRatio = devicePixelRatioF();
    m_physicalClient = {Truncate(width() * m_pixelRatio), Truncate(height() * m_pixelRatio)};
    LayoutChildren(width(), height());
}

void CBaseWnd::SettleLayout() {
    if (m_layoutPending || devicePixelRatioF() != m_pixelRatio) LayOut();
}

void CBaseWnd::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    LayOut();
}

void CBaseWnd::UsePhysicalPixels(QPainter& painter) const {
    if (m_pixelRatio != 1.0) painter.scale(1.0 / m_pixelRatio, 1.0 / m_pixelRatio);
}

const QPixmap& CBaseWnd::Texture() {
    if (m_pTexture.isNull())
        m_pTexture = LoadTexture(ResourcePath(QStringLiteral("Images/TextureBrush/TextureBrush.jpg")));
    return m_pTexture;
}

void CBaseWnd::PaintPictures(QPainter& painter, const std::vector<ViewPicture>& pictures) {
    // One pixel more than the client: a fractional scale of the screen leaves a part of one.
    QRegion bare(QRect(QPoint(0, 0), m_physicalClient + QSize(1, 1)));
    for (const ViewPicture& picture : pictures)
        if (picture.bitmap && picture.opaque) bare -= picture.place;
    for (const QRect& rect : bare) painter.fillRect(rect, CanvasColor);
    for (const ViewPicture& picture : pictures) {
        if (!picture.bitmap || picture.place.isEmpty()) continue;
        if (!picture.opaque) PaintTexture(painter, picture.place.adjusted(2, 2, -2, -2), Texture(), m_pixelRatio);
        DrawBitmap(painter, picture.place, picture.bitmap, picture.opaque);
    }
}
