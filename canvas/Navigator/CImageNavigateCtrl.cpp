// SPDX-License-Identifier: GPL-3.0-or-later
#include "CImageNavigateCtrl.h"

#include <algorithm>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QWheelEvent>

#include "BitmapView.h"
#include "Language.h"
#include "Messages.h"
#include "PC_Dsp.h"
#include "Truncate.h"

namespace {

constexpr int ThumbTop = 28;
constexpr int TextHeight = 16;
constexpr int CornerRadius = 8;
constexpr QColor AccentColor(0x20, 0xB8, 0xF1);
constexpr QColor SecondaryColor(0x6B, 0x72, 0x80);
constexpr QColor HairlineColor(0xE1, 0xE4, 0xE8);

QPainterPath Rounded(const QRectF& rect, double radius) {
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

}  // namespace

CImageNavigateCtrl::CImageNavigateCtrl(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("ImageNavigateCtrl"));
    setFixedSize(Width, Height);
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(LanguageText(QStringLiteral("ids_navigator")));
}

double CImageNavigateCtrl::ThumbScale(QSize image) {
    if (image.width() <= 0 || image.height() <= 0) return 0.01;
    return std::min(static_cast<double>(ThumbWidth) / image.width(), static_cast<double>(ThumbHeight) / image.height());
}

QSize CImageNavigateCtrl::ThumbSize(QSize image) {
    const double scale = ThumbScale(image);
    return {TruncateSide(image.width() * scale), TruncateSide(image.height() * scale)};
}

Bitmap CImageNavigateCtrl::MakeThumbnail(const Bitmap& picture, double pixelRatio) {
    if (picture.IsNull()) return {};
    const QSize size = ThumbSize({picture.Width(), picture.Height()});
    return PC_Dsp::Resample(picture, TruncateSide(size.width() * pixelRatio), TruncateSide(size.height() * pixelRatio));
}

void CImageNavigateCtrl::SetImage(const Bitmap& thumbnail, QSize image, const QRectF& view, double zoom) {
    AssertMainThread();
    m_imageSize = image;
    m_thumbScale = ThumbScale(image);
    m_thumb = ViewOf(thumbnail);
    SetView(view, zoom);
}

void CImageNavigateCtrl::SetView(const QRectF& view, double zoom) {
    AssertMainThread();
    m_source = view;
    m_zoom = zoom;
    m_frame = {view.x() * m_thumbScale, view.y() * m_thumbScale, view.width() * m_thumbScale,
               view.height() * m_thumbScale};
    setAccessibleDescription(ZoomText());
    update();
}

void CImageNavigateCtrl::DropImage() {
    m_thumb = {};
}

QRectF CImageNavigateCtrl::View() const {
    return {m_frame.x() / m_thumbScale, m_frame.y() / m_thumbScale, m_frame.width() / m_thumbScale,
            m_frame.height() / m_thumbScale};
}

QRect CImageNavigateCtrl::ThumbRect() const {
    const QSize size = ThumbSize(m_imageSize);
    return {QPoint((Width - size.width()) / 2, ThumbTop + (ThumbHeight - size.height()) / 2), size};
}

QRect CImageNavigateCtrl::CloseBox() {
    return {QPoint(Width - 23, 5), QPoint(Width - 8, 20)};
}

QString CImageNavigateCtrl::ZoomText() const {
    // The same tolerance as ViewGeometry::ZoomPercent, so that bar and navigator never differ.
    const QString unit = LanguageText(QStringLiteral("ids_Scale"));
    return QStringLiteral("%1 %2")
        .arg(Truncate(m_zoom * 100.0 + 1e-6))
        .arg(unit.isEmpty() ? QStringLiteral("%") : unit);
}

bool CImageNavigateCtrl::MoveFrame(QPointF delta) {
    const QSizeF thumb = ThumbSize(m_imageSize);
    QPointF at = m_frame.topLeft() + delta;
    // The right and lower limit first: a frame as large as the thumbnail then rests at 0.
    at.setX(std::max(0.0, std::min(at.x(), thumb.width() - m_frame.width())));
    at.setY(std::max(0.0, std::min(at.y(), thumb.height() - m_frame.height())));
    if (at == m_frame.topLeft()) return false;
    m_frame.moveTopLeft(at);
    m_source = View();
    update();
    return true;
}

void CImageNavigateCtrl::CloseByUser() {
    m_closedByUser = true;
    hide();
}

void CImageNavigateCtrl::UpdateCursor(QPointF at) {
    const bool hot = CloseBox().contains(at.toPoint());
    if (hot != m_closeHot) {
        m_closeHot = hot;
        update(CloseBox().adjusted(-2, -2, 2, 2));
    }
    if (hot)
        setCursor(Qt::PointingHandCursor);
    else if (m_dragging)
        setCursor(Qt::ClosedHandCursor);
    else if (FrameRect().contains(at))
        setCursor(Qt::OpenHandCursor);
    else
        setCursor(Qt::ArrowCursor);
}

void CImageNavigateCtrl::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    if (CloseBox().contains(event->position().toPoint())) return CloseByUser();
    m_moved = false;
    m_dragging = FrameRect().contains(event->position());
    m_dragLast = event->position();
    UpdateCursor(event->position());
}

void CImageNavigateCtrl::mouseMoveEvent(QMouseEvent* event) {
    if (m_dragging) {
        const QPointF delta = event->position() - m_dragLast;
        m_dragLast = event->position();
        if (MoveFrame(delta)) {
            m_moved = true;
            emit FrameDragging();
        }
    }
    UpdateCursor(event->position());
}

void CImageNavigateCtrl::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_dragging) return;
    LetGo();
    UpdateCursor(event->position());
}

void CImageNavigateCtrl::wheelEvent(QWheelEvent* event) {
    // The wheel zooms the canvas around the point under the cursor, which here would be a hidden one.
    event->accept();
}

void CImageNavigateCtrl::keyPressEvent(QKeyEvent* event) {
    constexpr double step = 4.0;
    QPointF delta;
    switch (event->key()) {
        case Qt::Key_Left:
            delta = {-step, 0};
            break;
        case Qt::Key_Right:
            delta = {step, 0};
            break;
        case Qt::Key_Up:
            delta = {0, -step};
            break;
        case Qt::Key_Down:
            delta = {0, step};
            break;
        case Qt::Key_Escape:
            return CloseByUser();
        default:
            return QWidget::keyPressEvent(event);
    }
    if (!MoveFrame(delta)) return;
    emit FrameDragging();
    emit FrameDragged();
}

// However a drag ends, by the button, by hiding or by a window that takes the mouse: the owner redraws its view well.
void CImageNavigateCtrl::LetGo() {
    const bool moved = m_dragging && m_moved;
    m_dragging = false;
    m_moved = false;
    if (moved) emit FrameDragged();
}

bool CImageNavigateCtrl::event(QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::UngrabMouse || type == QEvent::WindowBlocked || type == QEvent::WindowDeactivate) LetGo();
    return QWidget::event(event);
}

void CImageNavigateCtrl::hideEvent(QHideEvent* event) {
    LetGo();
    QWidget::hideEvent(event);
}

void CImageNavigateCtrl::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    // The card keeps clear of the control's edge, where its shadow lies.
    const QRectF box = QRectF(rect()).adjusted(4.5, 1.5, -4.5, -6.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(20, 30, 45, 10));
    for (int spread = 1; spread <= 4; ++spread)
        painter.drawPath(Rounded(box.adjusted(-spread, -spread + 2, spread, spread + 2), CornerRadius + spread));
    painter.setPen(HairlineColor);
    painter.setBrush(Qt::white);
    painter.drawPath(Rounded(box, CornerRadius));

    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(12);
    painter.setFont(font);
    painter.setPen(SecondaryColor);
    painter.drawText(QRect(20, 6, Width - 50, TextHeight), Qt::AlignVCenter | Qt::AlignLeft, ZoomText());

    const QRectF cross = QRectF(CloseBox()).adjusted(4, 4, -3, -3);
    painter.setPen(QPen(m_closeHot ? AccentColor : SecondaryColor, 1.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(cross.topLeft(), cross.bottomRight());
    painter.drawLine(cross.topRight(), cross.bottomLeft());

    if (m_thumb.isNull()) return;
    const QRect thumb = ThumbRect();
    painter.drawImage(thumb, m_thumb);
    // What lies outside the view is veiled, so that the frame reads on any picture.
    QPainterPath veil;
    veil.addRect(thumb);
    QPainterPath frame;
    frame.addRect(FrameRect());
    painter.fillPath(veil.subtracted(frame), QColor(255, 255, 255, 120));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(AccentColor, 2.0, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(FrameRect().adjusted(1, 1, -1, -1));
    if (hasFocus()) {
        painter.setPen(QPen(AccentColor, 1.5));
        painter.drawPath(Rounded(box, CornerRadius));
    }
}
