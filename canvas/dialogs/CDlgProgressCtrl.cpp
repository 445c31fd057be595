// SPDX-License-Identifier: GPL-3.0-or-later
#include "CDlgProgressCtrl.h"

#include <algorithm>
#include <QtCore/QCoreApplication>
#include <QtGui/QBitmap>
#include <QtGui/QCloseEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>

#include "AppPaths.h"
#include "CBaseWnd.h"
#include "Language.h"
#include "Messages.h"
#include "Style.h"

namespace {

constexpr QPoint SpinnerAt(10, 14), PercentAt(44, 22), TextAt(70, 22), BarAt(44, 56), EscAt(44, 66);
constexpr int LineHeight = 16, BarHeight = 3;
constexpr int BarRight = 24, TextRight = 12;
constexpr int Corner = 10;
// Of 255: the whole window lets a hint of what is below through.
constexpr double WindowAlpha = 254.0 / 255.0;

bool IsInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::ContextMenu:
        case QEvent::InputMethod:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TouchCancel:
        case QEvent::NativeGesture:
        case QEvent::TabletPress:
        case QEvent::TabletMove:
        case QEvent::TabletRelease:
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
        case QEvent::Close:
            return true;
        default:
            return false;
    }
}

bool IsMouse(QEvent::Type type) {
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease ||
           type == QEvent::MouseButtonDblClick || type == QEvent::MouseMove;
}

}  // namespace

CDlgProgressCtrl::CDlgProgressCtrl(QWidget* owner)
    : QWidget(owner ? owner->window() : nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      m_background(ResourcePath(QStringLiteral("Images/Loading/login_bg.png"))),
      m_spinner(ResourcePath(QStringLiteral("Images/Loading/loading.png"))) {
    setObjectName(QStringLiteral("DlgProgressCtrl"));
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFixedSize(Width, Height);
    setWindowOpacity(WindowAlpha);
    // Round also on a desktop that can't mix windows.
    QBitmap shape(size());
    shape.fill(Qt::color0);
    QPainter painter(&shape);
    painter.setBrush(Qt::color1);
    painter.drawRoundedRect(rect(), Corner, Corner);
    painter.end();
    setMask(shape);
    m_timer.setInterval(TickTime);
    connect(&m_timer, &QTimer::timeout, this, &CDlgProgressCtrl::Tick);
    m_appear.setInterval(VisibleAfter);
    m_appear.setSingleShot(true);
    connect(&m_appear, &QTimer::timeout, this, &CDlgProgressCtrl::Appear);
}

CDlgProgressCtrl::~CDlgProgressCtrl() {
    QCoreApplication::instance()->removeEventFilter(this);
}

void CDlgProgressCtrl::Reset() {
    AssertMainThread();
    m_nPercent = NoPercent;
    m_bShowBar = false;
    m_escKept = false;
    m_strText.clear();
    m_nSpinner = 0;
    m_timer.start();
    m_appear.start();
    update();
}

void CDlgProgressCtrl::Appear() {
    QRect around = QGuiApplication::primaryScreen()->availableGeometry();
    if (parentWidget() && parentWidget()->isVisible()) around = parentWidget()->frameGeometry();
    move(around.center() - rect().center());
    show();
    raise();
}

void CDlgProgressCtrl::Tick() {
    m_nSpinner = (m_nSpinner + FrameSide) % StripWidth;
    update();
}

void CDlgProgressCtrl::SetPercent(int percent) {
    AssertMainThread();
    m_nPercent = percent;
    m_bShowBar = true;
    if (m_escKept) Cancel();
    update();
}

void CDlgProgressCtrl::SetText(const QString& text) {
    AssertMainThread();
    // A text that was on its way when the user cancelled does not take the answer away.
    if (IsCancelled() && m_strText == u"esc") return;
    m_strText = text;
    setAccessibleName(text);
    update();
}

void CDlgProgressCtrl::Hide() {
    AssertMainThread();
    m_timer.stop();
    m_appear.stop();
    hide();
}

void CDlgProgressCtrl::RunModal() {
    QEventLoop loop;
    m_loop = &loop;
    m_pressed = nullptr;
    QCoreApplication::instance()->installEventFilter(this);
    SetReady(true);
    loop.exec();
    SetReady(false);
    QCoreApplication::instance()->removeEventFilter(this);
    m_loop = nullptr;
}

void CDlgProgressCtrl::CloseModal() {
    if (m_loop) m_loop->quit();
}

void CDlgProgressCtrl::Cancel() {
    m_escKept = !m_bShowBar;
    if (m_escKept) return;
    RequestCancel();
    SetText(QStringLiteral("esc"));
}

bool CDlgProgressCtrl::eventFilter(QObject* object, QEvent* event) {
    if (!m_loop || !IsInput(event->type())) return QWidget::eventFilter(object, event);
    const bool press = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (press && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) Cancel();
    if (event->type() == QEvent::Close && object == this) Cancel();
    if (IsMouse(event->type())) Offer(object, *static_cast<QMouseEvent*>(event));
    // Refused and not merely unseen: an accepted close or drop would go ahead.
    event->ignore();
    return true;
}

// An event of the window system is caught at its window, before it is known for which widget it is. From a press to its
// release everything is for the canvas that was pressed. A window hears of a press that makes a double click twice.
void CDlgProgressCtrl::Offer(QObject* object, const QMouseEvent& event) {
    if (object->isWidgetType()) {
        if (auto* canvas = qobject_cast<CBaseWnd*>(object)) canvas->KeepInput(event);
        return;
    }
    if (event.type() == QEvent::MouseButtonDblClick && m_pressed) return;
    CBaseWnd* canvas = m_pressed;
    if (!canvas) canvas = qobject_cast<CBaseWnd*>(QApplication::widgetAt(event.globalPosition().toPoint()));
    const bool down = event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
    if (down) m_pressed = canvas;
    if (event.type() == QEvent::MouseButtonRelease) m_pressed = nullptr;
    if (canvas) canvas->KeepInput(event);
}

void CDlgProgressCtrl::closeEvent(QCloseEvent* event) {
    event->ignore();
}

void CDlgProgressCtrl::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (m_background.isNull()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(32, 38, 46, 236));
        painter.drawRoundedRect(rect(), Corner, Corner);
    } else {
        painter.drawPixmap(rect(), m_background);
    }
    PaintSpinner(painter);
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(12);
    painter.setFont(font);
    painter.setPen(Qt::white);
    if (m_bShowBar) PaintBar(painter);
    PaintLine(painter);
}

void CDlgProgressCtrl::PaintSpinner(QPainter& painter) const {
    const QRectF place(SpinnerAt, QSizeF(FrameSide, FrameSide));
    if (!m_spinner.isNull()) {
        const double ratio = m_spinner.devicePixelRatio();
        painter.drawPixmap(place, m_spinner, QRectF(m_nSpinner * ratio, 0, FrameSide * ratio, FrameSide * ratio));
        return;
    }
    painter.setPen(QPen(Style::Accent, 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(place.adjusted(3, 3, -3, -3), -m_nSpinner * 360 * 16 / StripWidth, 270 * 16);
}

void CDlgProgressCtrl::PaintBar(QPainter& painter) const {
    const QRectF track(BarAt, QSizeF(Width - BarAt.x() - BarRight, BarHeight));
    painter.fillRect(track, QColor(255, 255, 255, 50));
    painter.fillRect(QRectF(track.topLeft(), QSizeF(track.width() * m_nPercent / 100.0, track.height())),
                     Style::Accent);
    if (IsCancelled()) return;
    painter.setOpacity(0.6);
    painter.drawText(QRect(EscAt, QSize(Width - EscAt.x() - BarRight, LineHeight)), Qt::AlignRight | Qt::AlignTop,
                     LanguageText(QStringLiteral("ids_progress_esc")));
    painter.setOpacity(1.0);
}

void CDlgProgressCtrl::PaintLine(QPainter& painter) const {
    int textX = TextAt.x();
    if (m_bShowBar) {
        const QString percent = QStringLiteral("%1%").arg(m_nPercent);
        painter.drawText(QRect(PercentAt, QSize(Width, LineHeight)), Qt::AlignLeft | Qt::AlignTop, percent);
        textX = std::max(textX, PercentAt.x() + painter.fontMetrics().horizontalAdvance(percent) + 6);
    }
    const QString text = m_strText.isEmpty() ? LanguageText(QStringLiteral("ids_progress_1")) : m_strText;
    const QRect place(QPoint(textX, TextAt.y()), QSize(Width - textX - TextRight, LineHeight));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignTop,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
}
