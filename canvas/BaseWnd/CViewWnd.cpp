// SPDX-License-Identifier: GPL-3.0-or-later
#include "CViewWnd.h"

#include <algorithm>
#include <new>
#include <QtCore/QLineF>
#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QNativeGestureEvent>
#include <QtGui/QPainter>
#include <QtGui/QTouchEvent>
#include <QtGui/QWheelEvent>

#include "Messages.h"
#include "RunTask.h"
#include "Truncate.h"

namespace {

constexpr int WheelTurn = 120;
// Client pixels that an arrow key pans, before the screen's scale.
constexpr int KeyPan = 40;

QPoint Whole(QPointF p) {
    return {Truncate(p.x()), Truncate(p.y())};
}

}  // namespace

CViewWnd::CViewWnd(ToolHost& host, int tool, QWidget* parent) : CBaseWnd(host, tool, parent) {
    setMouseTracking(true);
    setAttribute(Qt::WA_AcceptTouchEvents);
    connect(&m_navigator, &CImageNavigateCtrl::FrameDragging, this, [this] { FollowNavigator(ViewChange::Panning); });
    connect(&m_navigator, &CImageNavigateCtrl::FrameDragged, this, [this] { FollowNavigator(ViewChange::Settled); });
}

void CViewWnd::GetImageSize(int* w, int* h) {
    const QSize size = Geometry().Image();
    *w = std::max(0, size.width());
    *h = std::max(0, size.height());
}

void CViewWnd::GetViewRects(QRectF* imageRect, QRect* screenRect) {
    *imageRect = Geometry().ImageRect();
    *screenRect = Geometry().ScreenRect();
}

void CViewWnd::FitToWindow() {
    Geometry().Fit();
    m_zoom = Geometry().Zoom();
    OnViewChanged(ViewChange::Settled);
}

void CViewWnd::UpdateViewRects() {
    Geometry().UpdateViewRects();
    UpdateNavigator();
}

void CViewWnd::ZoomToPercent(int percent) {
    Geometry().ZoomToPercent(percent);
    TakeUpZoom();
}

void CViewWnd::ZoomOut() {
    Geometry().ZoomOut();
    TakeUpZoom();
}

void CViewWnd::ZoomIn() {
    Geometry().ZoomIn();
    TakeUpZoom();
}

void CViewWnd::ZoomActualSize() {
    Geometry().ZoomActualSize();
    TakeUpZoom();
}

void CViewWnd::ZoomFit() {
    Geometry().Fit();
    TakeUpZoom();
}

void CViewWnd::LayoutChildren(int cx, int cy) {
    const ViewGeometry before = Geometry();
    Geometry().SetClient({Truncate(cx * PixelRatio()), Truncate(cy * PixelRatio())});
    m_navigator.move(cx - CImageNavigateCtrl::Width, cy - CImageNavigateCtrl::Height);
    if (!Geometry().HasPicture() || Geometry() == before) return;
    const bool zoomed = Geometry().Zoom() != before.Zoom();
    m_zoom = Geometry().Zoom();
    OnViewChanged(ViewChange::Settled);
    UpdateNavigator();
    Redraw(Paint::Later);
    if (zoomed) NotifyView(ZoomNews{Geometry().ZoomPercent()});
}

void CViewWnd::TakeUpZoom() {
    if (!Geometry().HasPicture()) return;
    m_zoom = Geometry().Zoom();
    OnViewChanged(ViewChange::Settled);
    UpdateNavigator();
    Redraw(Paint::Now);
    NotifyView(ZoomNews{Geometry().ZoomPercent()});
}

void CViewWnd::TakeUpPan(ViewChange change) {
    OnViewChanged(change);
    m_navigator.SetView(Geometry().ImageRect(), Geometry().Zoom());
    Redraw(Paint::Now);
}

void CViewWnd::UpdateNavigator() {
    const bool canDrag = Geometry().CanDrag();
    const QRectF view = Geometry().ImageRect();
    const double zoom = Geometry().Zoom();
    if (!OnMainThread()) {
        // A view that can be panned gets its thumbnail from RefreshNavigator, on the thread that has the picture.
        return PostToMain(this, [this, canDrag, view, zoom] {
            m_navigator.SetView(view, zoom);
            m_navigator.setVisible(canDrag && m_navigator.HasImage());
        });
    }
    if (zoom != m_navigator.Zoom()) m_navigator.ForgetClose();
    if (canDrag && !m_navigator.HasImage()) return RefreshNavigator();
    m_navigator.SetView(view, zoom);
    ShowNavigator(canDrag && !m_navigator.IsClosedByUser());
}

// Null for want of memory: there is an overview again when the picture next changes.
Bitmap CViewWnd::Thumbnail() {
    try {
        return CImageNavigateCtrl::MakeThumbnail(NavigatorPicture(), PixelRatio());
    } catch (const std::bad_alloc&) {
        return {};
    }
}

void CViewWnd::RefreshNavigator() {
    const bool canDrag = Geometry().CanDrag();
    const QSize image = Geometry().Image();
    const QRectF view = Geometry().ImageRect();
    const double zoom = Geometry().Zoom();
    // Here and not later: on a worker only this thread may look at the picture.
    const Bitmap thumbnail = canDrag ? Thumbnail() : Bitmap();
    const auto show = [this, canDrag, image, view, zoom, thumbnail] {
        if (thumbnail.IsNull())
            m_navigator.DropImage();
        else
            m_navigator.SetImage(thumbnail, image, view, zoom);
        m_navigator.setVisible(canDrag && m_navigator.HasImage() && !m_navigator.IsClosedByUser());
    };
    if (OnMainThread())
        show();
    else
        PostToMain(this, show);
}

void CViewWnd::FollowNavigator(ViewChange change) {
    Geometry().PanToImage(m_navigator.View().topLeft());
    OnViewChanged(change);
    Redraw(Paint::Now);
}

void CViewWnd::PaintOverlay(QPainter&, const QRect&) {}

bool CViewWnd::BeginStroke(const StrokePoint&) {
    return false;
}

void CViewWnd::MoveStroke(const StrokePoint&) {}

void CViewWnd::EndStroke(StrokeEnd) {}

void CViewWnd::Hover(const StrokePoint&) {}

bool CViewWnd::IsStrokeHeld() const {
    const bool sliderHeld = m_sliderHeld && QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    return m_stroking || m_panButton != Qt::NoButton || m_navigator.IsDragging() || sliderHeld;
}

StrokePoint CViewWnd::PointAt(QPointF logical, Qt::KeyboardModifiers modifiers, double pressure) {
    const QPointF client = Physical(logical);
    return {Geometry().ToImage(client), client, pressure, modifiers};
}

void CViewWnd::PressStroke(const StrokePoint& at) {
    if (LeftButtonPans() || m_spaceHeld || !TakesInput()) return;
    m_stroking = BeginStroke(at);
    if (m_stroking) QCoreApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
}

void CViewWnd::FinishStroke(StrokeEnd how) {
    if (!m_stroking) return;
    m_stroking = false;
    QCoreApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, true);
    EndStroke(how);
}

// A pen's events carry its pressure; what is taken here does not come again as a mouse.
void CViewWnd::tabletEvent(QTabletEvent* event) {
    const StrokePoint at = PointAt(event->position(), event->modifiers(), event->pressure());
    const bool left = event->button() == Qt::LeftButton;
    if (event->type() == QEvent::TabletPress && left) PressStroke(at);
    event->setAccepted(m_stroking);
    if (event->type() == QEvent::TabletMove && m_stroking) MoveStroke(at);
    if (event->type() == QEvent::TabletRelease && left) FinishStroke(StrokeEnd::Released);
}

void CViewWnd::paintEvent(QPaintEvent*) {
    SettleLayout();
    QPainter painter(this);
    UsePhysicalPixels(painter);
    const ViewPicture picture = TakeViewPicture();
    PaintPictures(painter, {picture});
    if (!picture.bitmap.IsNull()) PaintOverlay(painter, picture.place);
}

void CViewWnd::showEvent(QShowEvent* event) {
    CBaseWnd::showEvent(event);
    // Back from compare, which hid the navigator.
    if (!IsTaskRunning() && Geometry().HasPicture()) UpdateNavigator();
}

bool CViewWnd::TakesInput() {
    return Geometry().HasPicture() && !IsStrokeHeld() && !Host().IsBusy();
}

void CViewWnd::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (!TakesInput()) return;
    // Fine wheels and touchpads send parts of a turn.
    const int delta = event->angleDelta().y();
    if ((delta > 0) != (m_wheelRest > 0)) m_wheelRest = 0;
    m_wheelRest += delta;
    const ViewGeometry before = Geometry();
    for (; m_wheelRest >= WheelTurn; m_wheelRest -= WheelTurn) Geometry().Wheel(true, Physical(event->position()));
    for (; m_wheelRest <= -WheelTurn; m_wheelRest += WheelTurn) Geometry().Wheel(false, Physical(event->position()));
    if (Geometry() != before) TakeUpZoom();
    UpdateCursor(event->position());
}

bool CViewWnd::NativeGesture(QNativeGestureEvent* event) {
    if (event->gestureType() != Qt::ZoomNativeGesture) return false;
    if (!TakesInput()) return true;
    const ViewGeometry before = Geometry();
    Geometry().SetZoomAt(before.Zoom() * (1.0 + event->value()), Physical(event->position()));
    if (Geometry() != before) TakeUpZoom();
    return true;
}

bool CViewWnd::Touch(QTouchEvent* event) {
    event->accept();  // else no update follows
    const auto& points = event->points();
    if (points.size() == 1) {
        if (!m_pinching) FingerAsMouse(points.front());
    } else if (points.size() == 2) {
        Pinch(points[0].position(), points[1].position());
    }
    if (event->type() == QEvent::TouchEnd || event->type() == QEvent::TouchCancel) m_pinching = false;
    return true;
}

// Qt makes a mouse of a finger only for widgets that refuse touches, and those never hear of the second finger.
void CViewWnd::FingerAsMouse(const QEventPoint& point) {
    const auto send = [&](QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent mouse(type, point.position(), point.globalPosition(), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(this, &mouse);
    };
    if (point.state() == QEventPoint::Pressed) send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
    if (point.state() == QEventPoint::Updated) send(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
    if (point.state() == QEventPoint::Released) send(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
}

void CViewWnd::Pinch(QPointF first, QPointF second) {
    LetGo();
    if (!TakesInput()) return;
    const double distance = std::max(1.0, QLineF(first, second).length());
    const QPointF centre = Physical((first + second) / 2);
    if (!m_pinching) {
        m_pinching = true;
        m_pinchStart = Geometry().Zoom() / distance;
        m_panLast = Whole(centre);
    }
    const ViewGeometry before = Geometry();
    const QPoint moved = Whole(centre) - m_panLast;
    m_panLast = Whole(centre);
    Geometry().PanBy(moved.x(), moved.y());
    Geometry().SetZoomAt(m_pinchStart * distance, centre);
    if (Geometry() != before) TakeUpZoom();
}

bool CViewWnd::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::NativeGesture:
            if (NativeGesture(static_cast<QNativeGestureEvent*>(event))) return true;
            break;
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TouchCancel:
            return Touch(static_cast<QTouchEvent*>(event));
        case QEvent::Leave:
            unsetCursor();
            break;
        case QEvent::UngrabMouse:
        case QEvent::WindowBlocked:
        case QEvent::WindowDeactivate:
            LetGo();
            break;
        default:
            break;
    }
    return QWidget::event(event);
}

void CViewWnd::UpdateCursor(QPointF at) {
    const QPoint position = Whole(Physical(at));
    const bool mayPan = Geometry().CanDrag() && (LeftButtonPans() || m_spaceHeld);
    if (IsPanning())
        setCursor(Qt::ClosedHandCursor);
    else if (mayPan && Geometry().ScreenRect().contains(position))
        setCursor(Qt::OpenHandCursor);
    else
        setCursor(ToolCursor());
}

void CViewWnd::mousePressEvent(QMouseEvent* event) {
    const bool pans =
        event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && (LeftButtonPans() || m_spaceHeld));
    if (!pans && event->button() == Qt::LeftButton) PressStroke(PointAt(event->position(), event->modifiers()));
    const QPoint at = Whole(Physical(event->position()));
    if (!pans || !TakesInput() || !Geometry().CanDrag() || !Geometry().ScreenRect().contains(at)) return;
    m_panButton = event->button();
    m_panLast = at;
    UpdateCursor(event->position());
}

void CViewWnd::mouseMoveEvent(QMouseEvent* event) {
    if (IsPanning()) {
        const QPoint at = Whole(Physical(event->position()));
        const QPoint delta = at - m_panLast;
        m_panLast = at;
        const QPoint before = Geometry().Pan();
        Geometry().PanBy(delta.x(), delta.y());
        if (Geometry().Pan() != before) TakeUpPan(ViewChange::Panning);
    } else if (m_stroking) {
        MoveStroke(PointAt(event->position(), event->modifiers()));
    } else {
        Hover(PointAt(event->position(), event->modifiers()));
    }
    UpdateCursor(event->position());
}

void CViewWnd::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == m_panButton) EndPan();
    if (event->button() == Qt::LeftButton) FinishStroke(StrokeEnd::Released);
    UpdateCursor(event->position());
}

void CViewWnd::EndPan() {
    m_panButton = Qt::NoButton;
    TakeUpPan(ViewChange::Settled);
}

void CViewWnd::keyPressEvent(QKeyEvent* event) {
    const int step = Truncate(KeyPan * PixelRatio());
    QPoint pan;
    switch (event->key()) {
        case Qt::Key_Escape:
            if (!m_stroking) return CBaseWnd::keyPressEvent(event);
            return FinishStroke(StrokeEnd::Cancelled);
        case Qt::Key_Space:
            m_spaceHeld = true;
            return UpdateCursor(mapFromGlobal(QCursor::pos()));
        case Qt::Key_Left:
            pan = {step, 0};
            break;
        case Qt::Key_Right:
            pan = {-step, 0};
            break;
        case Qt::Key_Up:
            pan = {0, step};
            break;
        case Qt::Key_Down:
            pan = {0, -step};
            break;
        default:
            return CBaseWnd::keyPressEvent(event);
    }
    if (!TakesInput() || !Geometry().CanDrag()) return CBaseWnd::keyPressEvent(event);
    Geometry().PanBy(pan.x(), pan.y());
    TakeUpPan(ViewChange::Settled);
}

void CViewWnd::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space) return CBaseWnd::keyReleaseEvent(event);
    if (event->isAutoRepeat()) return;
    m_spaceHeld = false;
    UpdateCursor(mapFromGlobal(QCursor::pos()));
}

void CViewWnd::focusOutEvent(QFocusEvent* event) {
    m_spaceHeld = false;
    CBaseWnd::focusOutEvent(event);
}

// No release can be expected any more.
void CViewWnd::LetGo() {
    FinishStroke(StrokeEnd::Released);
    if (IsPanning()) EndPan();
}

void CViewWnd::hideEvent(QHideEvent* event) {
    LetGo();
    CBaseWnd::hideEvent(event);
}
