// SPDX-License-Identifier: GPL-3.0-or-later
#include "CutWnd.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include "CutOverlay.h"
#include "Truncate.h"

namespace {

const QString LeaveChangedClick = QStringLiteral("888020202");
// Side of the corner squares in logical pixels.
constexpr double HandleSide = 10.0;

Qt::CursorShape CursorOf(CutHit hit) {
    switch (hit) {
        case CutHit::TopLeft:
        case CutHit::BottomRight:
            return Qt::SizeFDiagCursor;
        case CutHit::TopRight:
        case CutHit::BottomLeft:
            return Qt::SizeBDiagCursor;
        case CutHit::Top:
        case CutHit::Bottom:
            return Qt::SizeVerCursor;
        case CutHit::Left:
        case CutHit::Right:
            return Qt::SizeHorCursor;
        case CutHit::Inside:
            return Qt::SizeAllCursor;
        case CutHit::None:
            break;
    }
    return Qt::ArrowCursor;
}

}  // namespace

CCutWnd::CCutWnd(ToolHost& host, QWidget* parent, CHistoryManager& history)
    : CPictureWnd(host, ToolNumber, LeaveChangedClick, parent), m_logic(history) {
    Geometry() = m_logic.Geometry();
}

template <class Act>
auto CCutWnd::WithSelection(Act act) const {
    const ViewGeometry geometry = m_logic.Geometry();
    const std::lock_guard lock(m_lock);
    m_selection.SetGeometry(geometry);
    m_selection.SetHandleSide(HandleSide * PixelRatio());
    return act(m_selection);
}

CutSelection CCutWnd::Selection() const {
    return WithSelection([](const CutSelection& selection) { return selection; });
}

void CCutWnd::SetShowBitmap(const Bitmap& picture) {
    WithSelection([](CutSelection& selection) { selection.StartDrawing(); });
    CPictureWnd::SetShowBitmap(picture);
}

bool CCutWnd::OnEnter() {
    WithSelection([](CutSelection& selection) { selection.StartDrawing(); });
    return CPictureWnd::OnEnter();
}

// After a move in the history the selection is the whole picture, unless there was none.
void CCutWnd::OnPictureTaken() {
    WithSelection([](CutSelection& selection) {
        if (!selection.IsEmpty()) selection.SelectAll();
    });
}

void CCutWnd::OnHistoryMoved() {
    NotifyView(SelectionCode, 1);
}

bool CCutWnd::IsStrokeHeld() const {
    const std::lock_guard lock(m_lock);
    return m_selection.IsDragging() || CPictureWnd::IsStrokeHeld();
}

QSize CCutWnd::SelectionSize() const {
    return Selection().Cut().size();
}

void CCutWnd::ShowSelection() {
    Redraw(Paint::Now);
    NotifyView(SelectionCode, 0);
}

void CCutWnd::StartDrawing() {
    WithSelection([](CutSelection& selection) { selection.StartDrawing(); });
    Redraw(Paint::Now);
}

void CCutWnd::SetDefaultSelection() {
    WithSelection([](CutSelection& selection) { selection.SelectDefault(); });
    ShowSelection();
}

void CCutWnd::SetSelectionSize(int w, int h) {
    WithSelection([&](CutSelection& selection) { selection.SetSize({w, h}); });
    Redraw(Paint::Now);
}

void CCutWnd::SetRatio(double heightByWidth) {
    WithSelection([&](CutSelection& selection) { selection.SetRatio(heightByWidth); });
}

bool CCutWnd::CropToSelection() {
    if (!TakesInput()) return false;
    const QRect cut = Selection().Cut();
    if (cut.isEmpty() || !m_logic.Crop(cut.x(), cut.y(), cut.width(), cut.height())) return false;
    m_logic.CommitStep();
    TakeUpPicture();
    NotifyView(SelectionCode, 1);
    NotifyView(HistoryCode, 0);
    return true;
}

void CCutWnd::PaintOverlay(QPainter& painter) {
    PaintCutOverlay(painter, Selection(), m_logic.Geometry().ViewOffset(), PhysicalClient(), PixelRatio());
}

QCursor CCutWnd::ToolCursor() const {
    const std::lock_guard lock(m_lock);
    if (m_selection.IsDrawingNew()) return m_overPicture ? Qt::CrossCursor : Qt::ArrowCursor;
    return CursorOf(m_hover);
}

bool CCutWnd::TakesInput() const {
    return m_logic.HasPicture() && !Host().IsBusy();
}

QPointF CCutWnd::OnPicture(const QMouseEvent& event) const {
    const QPointF at = Physical(event.position());
    return QPointF(Truncate(at.x()), Truncate(at.y())) - QPointF(m_logic.Geometry().ViewOffset());
}

// The base looks first: Space and the middle button pan.
void CCutWnd::mousePressEvent(QMouseEvent* event) {
    CPictureWnd::mousePressEvent(event);
    if (event->button() != Qt::LeftButton || IsPanning() || !TakesInput()) return;
    const QPointF at = OnPicture(*event);
    WithSelection([&](CutSelection& selection) {
        m_hover = selection.HitTest(at);
        selection.Press(at);
    });
}

void CCutWnd::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = OnPicture(*event);
    const bool changed = WithSelection([&](CutSelection& selection) {
        m_overPicture = QRect(QPoint(0, 0), selection.Scaled()).contains(at.toPoint());
        if (!selection.IsDragging()) m_hover = selection.HitTest(at);
        return selection.MoveTo(at);
    });
    CPictureWnd::mouseMoveEvent(event);
    if (changed) ShowSelection();
}

void CCutWnd::mouseReleaseEvent(QMouseEvent* event) {
    const QPointF at = OnPicture(*event);
    const bool released = event->button() == Qt::LeftButton && WithSelection([&](CutSelection& selection) {
                              const bool held = selection.Release();
                              m_hover = selection.HitTest(at);
                              return held;
                          });
    CPictureWnd::mouseReleaseEvent(event);
    if (released) ShowSelection();
}

void CCutWnd::keyPressEvent(QKeyEvent* event) {
    if (!m_logic.HasPicture()) return CPictureWnd::keyPressEvent(event);
    switch (event->key()) {
        case Qt::Key_Escape:
            return PressEscape(event);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            CropToSelection();
            return;
        default:
            if (!PressArrow(*event)) CPictureWnd::keyPressEvent(event);
    }
}

// False without a selection: the arrows then pan.
bool CCutWnd::PressArrow(const QKeyEvent& event) {
    QPoint by;
    if (event.key() == Qt::Key_Left) by = {-1, 0};
    if (event.key() == Qt::Key_Right) by = {1, 0};
    if (event.key() == Qt::Key_Up) by = {0, -1};
    if (event.key() == Qt::Key_Down) by = {0, 1};
    if (by.isNull() || !TakesInput() || Selection().IsEmpty()) return false;
    const bool sizes = event.modifiers().testFlag(Qt::ShiftModifier);
    const bool changed = WithSelection([&](CutSelection& selection) {
        return sizes ? selection.GrowBy(by.x(), by.y()) : selection.MoveBy(by.x(), by.y());
    });
    if (changed) ShowSelection();
    return true;
}

void CCutWnd::PressEscape(QKeyEvent* event) {
    if (WithSelection([](CutSelection& selection) { return selection.CancelDrag(); })) return ShowSelection();
    if (Selection().IsDrawingNew()) return CPictureWnd::keyPressEvent(event);
    NotifyView(CancelCode, 0);
}
