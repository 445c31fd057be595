// SPDX-License-Identifier: GPL-3.0-or-later
#include "CCutWnd.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>

#include "CropOverlay.h"
#include "Truncate.h"

namespace {

// Side of the corner squares in logical pixels.
constexpr double HandleSide = 10.0;

Qt::CursorShape CursorOf(CropHit hit) {
    switch (hit) {
        case CropHit::TopLeft:
        case CropHit::BottomRight:
            return Qt::SizeFDiagCursor;
        case CropHit::TopRight:
        case CropHit::BottomLeft:
            return Qt::SizeBDiagCursor;
        case CropHit::Top:
        case CropHit::Bottom:
            return Qt::SizeVerCursor;
        case CropHit::Left:
        case CropHit::Right:
            return Qt::SizeHorCursor;
        case CropHit::Inside:
            return Qt::SizeAllCursor;
        case CropHit::None:
            break;
    }
    return Qt::ArrowCursor;
}

}  // namespace

template <class Act>
auto CCutWnd::WithSelection(Act act) const {
    const ViewGeometry geometry = m_logic.Geometry();
    const std::lock_guard lock(m_lock);
    m_selection.SetGeometry(geometry);
    m_selection.SetHandleSide(HandleSide * PixelRatio());
    return act(m_selection);
}

CropSelection CCutWnd::Selection() const {
    return WithSelection([](const CropSelection& selection) { return selection; });
}

void CCutWnd::SetShowBitmap(const Bitmap& picture) {
    WithSelection([](CropSelection& selection) { selection.StartDrawing(); });
    CPictureWnd::SetShowBitmap(picture);
}

bool CCutWnd::OnEnter() {
    WithSelection([](CropSelection& selection) { selection.StartDrawing(); });
    return CPictureWnd::OnEnter();
}

// After a move in the history the selection is the whole picture, unless there was none.
void CCutWnd::OnPictureTaken() {
    WithSelection([](CropSelection& selection) {
        if (!selection.IsEmpty()) selection.SelectAll();
    });
}

QSize CCutWnd::SelectionSize() const {
    return Selection().Cut().size();
}

void CCutWnd::ShowSelection() {
    Redraw(Paint::Now);
    NotifyView(CropSelectionNews{});
}

void CCutWnd::StartDrawing() {
    WithSelection([](CropSelection& selection) { selection.StartDrawing(); });
    Redraw(Paint::Now);
}

void CCutWnd::SetDefaultSelection() {
    WithSelection([](CropSelection& selection) { selection.SelectDefault(); });
    ShowSelection();
}

void CCutWnd::SetSelectionSize(int w, int h) {
    WithSelection([&](CropSelection& selection) { selection.SetSize({w, h}); });
    Redraw(Paint::Now);
}

void CCutWnd::SetRatio(double heightByWidth) {
    WithSelection([&](CropSelection& selection) { selection.SetRatio(heightByWidth); });
}

bool CCutWnd::CropToSelection() {
    if (!TakesInput()) return false;
    const QRect cut = Selection().Cut();
    if (cut.isEmpty()) return false;
    const bool done = Perform([&] {
        if (!m_logic.Crop(cut.x(), cut.y(), cut.width(), cut.height())) return false;
        m_logic.CommitStep();
        return true;
    });
    if (done) NotifyView(CropSelectionNews{});
    return done;
}

void CCutWnd::PaintOverlay(QPainter& painter, const QRect&) {
    PaintCropOverlay(painter, Selection(), m_logic.Geometry().ViewOffset(), PhysicalClient(), PixelRatio());
}

QCursor CCutWnd::ToolCursor() const {
    const std::lock_guard lock(m_lock);
    if (m_selection.IsDrawingNew()) return m_overPicture ? Qt::CrossCursor : Qt::ArrowCursor;
    return CursorOf(m_hover);
}

bool CCutWnd::TakesInput() const {
    return m_logic.HasPicture() && !Host().IsBusy();
}

QPointF CCutWnd::OnPicture(const StrokePoint& at) const {
    return QPointF(Truncate(at.client.x()), Truncate(at.client.y())) - QPointF(m_logic.Geometry().ViewOffset());
}

bool CCutWnd::BeginStroke(const StrokePoint& at) {
    const QPointF point = OnPicture(at);
    return WithSelection([&](CropSelection& selection) {
        m_hover = selection.HitTest(point);
        selection.Press(point);
        return selection.IsDragging();
    });
}

void CCutWnd::MoveStroke(const StrokePoint& at) {
    const QPointF point = OnPicture(at);
    if (WithSelection([&](CropSelection& selection) { return selection.MoveTo(point); })) ShowSelection();
}

void CCutWnd::EndStroke(StrokeEnd how) {
    WithSelection([&](CropSelection& selection) {
        if (how == StrokeEnd::Cancelled)
            selection.CancelDrag();
        else
            selection.Release();
    });
    ShowSelection();
}

void CCutWnd::Hover(const StrokePoint& at) {
    const QPointF point = OnPicture(at);
    WithSelection([&](CropSelection& selection) {
        m_overPicture = QRect(QPoint(0, 0), selection.Scaled()).contains(point.toPoint());
        m_hover = selection.HitTest(point);
    });
}

void CCutWnd::keyPressEvent(QKeyEvent* event) {
    if (!m_logic.HasPicture() || IsStroking()) return CPictureWnd::keyPressEvent(event);
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
    const bool changed = WithSelection([&](CropSelection& selection) {
        return sizes ? selection.GrowBy(by.x(), by.y()) : selection.MoveBy(by.x(), by.y());
    });
    if (changed) ShowSelection();
    return true;
}

void CCutWnd::PressEscape(QKeyEvent* event) {
    if (Selection().IsDrawingNew()) return CPictureWnd::keyPressEvent(event);
    NotifyView(CropGivenUpNews{});
}
