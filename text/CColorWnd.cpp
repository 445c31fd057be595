// SPDX-License-Identifier: GPL-3.0-or-later
#include "CColorWnd.h"

#include <algorithm>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <utility>

#include "CColorButton.h"
#include "CColorField.h"
#include "PixelUnder.h"
#include "SkinIcons.h"

namespace {

constexpr int PaletteColumns = 7, PaletteRows = 3;
// Side of the marker around a point.
constexpr int MarkerSide = 5;
constexpr int CursorSide = 24;
const QString PaletteStart = QStringLiteral("BtnColor_");

QString PaletteName(int row, int column) {
    return PaletteStart + QString::number(row) + QString::number(column + 1);
}

// The tip of the pipette, at the lower left, is what points.
QCursor PipetteCursor() {
    const QString name = QStringLiteral("pipette");
    QPixmap picture(CursorSide, CursorSide);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const QPixmap edge = SkinIcon(name, Qt::white).pixmap(CursorSide - 4, CursorSide - 4);
    for (const QPoint by : {QPoint(1, 2), QPoint(3, 2), QPoint(2, 1), QPoint(2, 3)}) painter.drawPixmap(by, edge);
    painter.drawPixmap(2, 2, SkinIcon(name, Qt::black).pixmap(CursorSide - 4, CursorSide - 4));
    painter.end();
    return QCursor(picture, 5, CursorSide - 6);
}

}  // namespace

CColorWnd::CColorWnd(QWidget* owner, QAbstractButton* option, std::function<QWidget*()> canvas)
    : CXMLWnd(owner), m_option(option), m_canvas(std::move(canvas)) {
    setObjectName(QStringLiteral("ColorWnd"));
    Create(QStringLiteral("ColorWnd.xml"));
    hide();
}

CColorWnd::~CColorWnd() {
    ShowPipette(false);
    qApp->removeEventFilter(this);
}

QWidget* CColorWnd::CreateControl(const QString& className, QWidget* parent, const QString&) {
    if (className == QLatin1String("CColorButton")) return new CColorButton(parent);
    if (className == QLatin1String("CColorField")) return new CColorField(parent);
    return nullptr;
}

// ---- opening and closing

void CColorWnd::Open() {
    if (!m_option) return;
    m_live.reset();
    m_following = false;
    m_pressed = false;
    for (CColorButton* button : findChildren<CColorButton*>()) button->setChecked(button->objectName() == s_chosen);
    Place();
    m_option->setChecked(true);
    show();
    raise();
    qApp->installEventFilter(this);
    auto* chosen = Find<CColorButton>(s_chosen.isEmpty() ? PaletteName(0, 0) : s_chosen);
    if (chosen) chosen->setFocus(Qt::PopupFocusReason);
    ShowMarker();
}

// Under the option, held inside of the window that it lies in.
void CColorWnd::Place() {
    const QSize size(Width, Height + (s_pickMode ? PickHeight : 0));
    const QWidget* owner = parentWidget();
    QPoint at = m_option->mapTo(owner, QPoint(0, m_option->height() + Gap));
    at.setX(std::max(0, std::min(at.x(), owner->width() - size.width())));
    at.setY(std::max(0, std::min(at.y(), owner->height() - size.height())));
    setFixedSize(size);
    move(at);
    if (m_field) m_field->setVisible(s_pickMode);
    if (m_toggle) m_toggle->setChecked(s_pickMode);
}

void CColorWnd::Close() {
    hide();
}

void CColorWnd::hideEvent(QHideEvent* event) {
    CXMLWnd::hideEvent(event);
    qApp->removeEventFilter(this);
    ShowPipette(false);
    if (std::exchange(m_following, false)) Tell(true);
    if (m_option && !std::exchange(m_pressedOption, false)) m_option->setChecked(false);
}

void CColorWnd::OnNotify(const Notify& notify) {
    if (notify.type == u"windowinit") {
        m_field = Find<CColorField>(QStringLiteral("TextYanSeSePan"));
        m_marker = Find<QLabel>(QStringLiteral("TextYanSeCurPt"));
        m_toggle = Find<QAbstractButton>(QStringLiteral("BtnQuSe"));
    } else if (notify.Is(u"click", u"BtnQuSe")) {
        SetPickMode(!s_pickMode);
    } else if (notify.type == u"click" && notify.name.startsWith(PaletteStart)) {
        if (auto* button = qobject_cast<CColorButton*>(notify.sender)) ChoosePalette(*button);
    }
}

void CColorWnd::ChoosePalette(CColorButton& button) {
    s_chosen = button.objectName();
    m_live = button.Color();
    m_following = false;
    Tell(true);
    GiveBack();
}

// Closes and gives the keyboard back to the option.
void CColorWnd::GiveBack() {
    Close();
    if (!m_option) return;
    m_option->setChecked(false);
    m_option->setFocus(Qt::PopupFocusReason);
}

void CColorWnd::SetPickMode(bool pick) {
    s_pickMode = pick;
    ShowPipette(false);
    Place();
    ShowMarker();
}

void CColorWnd::Tell(bool settled) {
    if (m_taker && m_live) m_taker(*m_live, settled);
}

// ---- the mouse

bool CColorWnd::IsOver(const QWidget* widget, QPointF global) const {
    return widget && widget->isVisible() && QRectF(widget->rect()).contains(widget->mapFromGlobal(global));
}

// The window itself lies over the canvas.
bool CColorWnd::IsPickable(QPointF global) const {
    if (IsOver(this, global)) return IsOver(m_field, global);
    return IsOver(m_canvas(), global);
}

std::optional<QRgb> CColorWnd::Sample(QPointF global) const {
    const std::optional<QRgb> color = PixelUnder(global);
    return color == Ground || color == Edge ? std::nullopt : color;
}

void CColorWnd::Follow(QPointF global) {
    const std::optional<QRgb> color = Sample(global);
    if (!color || color == m_live) return;
    m_live = color;
    m_following = true;
    Tell(false);
}

void CColorWnd::Pick(QPointF global) {
    if (IsOver(m_field, global)) s_marker = m_field->mapFromGlobal(global.toPoint());
    if (const std::optional<QRgb> color = Sample(global)) m_live = color;
    m_following = false;
    Tell(true);
    Close();
}

bool CColorWnd::OnMouse(QEvent::Type type, QPointF global, bool left) {
    const bool picks = s_pickMode && IsPickable(global);
    if (type == QEvent::MouseMove) {
        ShowPipette(picks);
        if (picks) Follow(global);
        return picks;
    }
    if (type == QEvent::MouseButtonRelease) {
        if (!std::exchange(m_pressed, false) || !left) return false;
        if (picks) Pick(global);
        return picks;
    }
    if (picks && left) {
        m_pressed = true;
        return true;
    }
    // A press on the option comes to it after the window has gone, and must find it as it was to close for good.
    m_pressedOption = IsOver(m_option, global);
    if (!IsOver(this, global)) Close();
    return false;
}

// Only what goes to the program's own windows comes here.
bool CColorWnd::eventFilter(QObject* object, QEvent* event) {
    if (!isVisible() || !object->isWidgetType()) return CXMLWnd::eventFilter(object, event);
    switch (event->type()) {
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove: {
            const auto* mouse = static_cast<QMouseEvent*>(event);
            const bool left = mouse->button() == Qt::LeftButton;
            return OnMouse(event->type(), mouse->globalPosition(), left);
        }
        case QEvent::FocusIn: {
            // A press gives the keyboard before it comes here: the one that picks to the canvas, the one that closes to
            // the option.
            const bool ownPress = object == m_option || (s_pickMode && object == m_canvas());
            if (object != this && !isAncestorOf(static_cast<QWidget*>(object)) && !ownPress) Close();
            break;
        }
        case QEvent::KeyPress:
            if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) break;
            GiveBack();
            return true;
        case QEvent::WindowDeactivate:
            if (object == window()) Close();
            break;
        default:
            break;
    }
    return CXMLWnd::eventFilter(object, event);
}

void CColorWnd::ShowPipette(bool show) {
    if (show == m_pipette) return;
    m_pipette = show;
    if (show)
        QApplication::setOverrideCursor(PipetteCursor());
    else
        QApplication::restoreOverrideCursor();
}

void CColorWnd::ShowMarker() {
    if (!m_marker || !m_field) return;
    m_marker->setVisible(s_pickMode && s_marker.has_value());
    if (!s_marker) return;
    const QPoint at = m_field->mapTo(m_marker->parentWidget(), *s_marker);
    m_marker->setGeometry(at.x() - MarkerSide / 2, at.y() - MarkerSide / 2, MarkerSide, MarkerSide);
    m_marker->raise();
}

// ---- the keyboard

// The arrow keys walk over the palette.
bool CColorWnd::StepFocus(int key) {
    const auto* at = qobject_cast<CColorButton*>(focusWidget());
    for (int row = 0; at && row < PaletteRows; ++row) {
        for (int column = 0; column < PaletteColumns; ++column) {
            if (at->objectName() != PaletteName(row, column)) continue;
            const int x = column + (key == Qt::Key_Right) - (key == Qt::Key_Left);
            const int y = row + (key == Qt::Key_Down) - (key == Qt::Key_Up);
            if (auto* next = Find<CColorButton>(PaletteName(y, x))) next->setFocus(Qt::OtherFocusReason);
            return true;
        }
    }
    return false;
}

void CColorWnd::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (auto* button = qobject_cast<CColorButton*>(focusWidget())) return ChoosePalette(*button);
            break;
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
            if (StepFocus(event->key())) return;
            break;
        default:
            break;
    }
    CXMLWnd::keyPressEvent(event);
}
