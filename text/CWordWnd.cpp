// SPDX-License-Identifier: GPL-3.0-or-later
#include "CWordWnd.h"

#include <algorithm>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>

#include "PC_Dsp.h"
#include "RunTask.h"
#include "SkinIcons.h"
#include "Truncate.h"
#include "WithinMemory.h"

namespace {

constexpr int FarPixels = 10, FarDegrees = 15;
constexpr int CursorSide = 24;

QPoint WholePoint(const StrokePoint& at) {
    return {Truncate(at.client.x()), Truncate(at.client.y())};
}

QPoint ArrowOf(int key) {
    switch (key) {
        case Qt::Key_Left:
            return {-1, 0};
        case Qt::Key_Right:
            return {1, 0};
        case Qt::Key_Up:
            return {0, -1};
        case Qt::Key_Down:
            return {0, 1};
        default:
            return {};
    }
}

// An icon as a cursor, dark with a pale edge, so that it shows on every picture.
QCursor IconCursor(const QString& name) {
    QPixmap picture(CursorSide, CursorSide);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const QPixmap edge = SkinIcon(name, Qt::white).pixmap(CursorSide - 4, CursorSide - 4);
    for (const QPoint by : {QPoint(1, 2), QPoint(3, 2), QPoint(2, 1), QPoint(2, 3)}) painter.drawPixmap(by, edge);
    painter.drawPixmap(2, 2, SkinIcon(name, Qt::black).pixmap(CursorSide - 4, CursorSide - 4));
    painter.end();
    return QCursor(picture, CursorSide / 2, CursorSide / 2);
}

}  // namespace

CWordWnd::CWordWnd(ToolHost& host, QWidget* parent, CHistoryManager& history)
    : CPictureWnd(host, Facts, m_logic, parent), m_logic(history) {}

const WordOverlay& CWordWnd::Overlay() const {
    if (!m_overlay || m_overlay->Ratio() != PixelRatio()) m_overlay = std::make_unique<WordOverlay>(PixelRatio());
    return *m_overlay;
}

bool CWordWnd::TakesInput() const {
    return m_logic.HasPicture() && !Host().IsBusy();
}

void CWordWnd::OnPictureTaken() {
    m_over = WordHit::Nothing;
    m_panning = false;
}

// The picture below the texts is reduced once, by the plain mean of its pixels: the thumbnail is made of it once more.
Bitmap CWordWnd::NavigatorPicture() {
    const Bitmap& picture = m_logic.Picture();
    if (!picture) return {};
    if (!m_reducedOf.SharesPixelsWith(picture)) {
        const double most =
            2.0 * PixelRatio() * std::max(CImageNavigateCtrl::ThumbWidth, CImageNavigateCtrl::ThumbHeight);
        const double by = std::min(1.0, most / std::max(picture.Width(), picture.Height()));
        m_reduced = Bitmap::Uninitialised(TruncateSide(picture.Width() * by), TruncateSide(picture.Height() * by));
        PC_Dsp::ResampleRect(picture, 0, 0, picture.Width(), picture.Height(), m_reduced, ResampleQuality::Best);
        m_reducedOf = picture;
    }
    Bitmap overview = m_reduced;
    m_logic.DrawTexts(overview, double(overview.Width()) / picture.Width());
    return overview;
}

// ---- for the panel

bool CWordWnd::AddText(const QString& text, const WordStyle& style) {
    if (!TakesInput()) return false;
    WordStyle added = style;
    added.text = text;
    if (!Act([&] { return m_logic.AddText(added); })) return false;
    NotifyView(PanelNews(WordAddedNews{}));
    return true;
}

void CWordWnd::Change(const std::function<void(StringParams&)>& change) {
    const QRect before = SelectionArea();
    WithinMemory(Host(), [&] { m_logic.ChangeSelected(change); });
    RedrawSelection(before);
}

void CWordWnd::SetText(const QString& text) {
    Change([&](StringParams& params) { params.SetText(text); });
}

void CWordWnd::SetFontName(const QString& name) {
    Change([&](StringParams& params) { params.SetFontName(name); });
}

void CWordWnd::SetFontSize(int size) {
    Change([=](StringParams& params) { params.SetFontSize(static_cast<float>(size)); });
}

void CWordWnd::SetBold(bool bold) {
    Change([=](StringParams& params) { params.SetBold(bold); });
}

void CWordWnd::SetItalic(bool italic) {
    Change([=](StringParams& params) { params.SetItalic(italic); });
}

void CWordWnd::SetUnderline(bool underline) {
    Change([=](StringParams& params) { params.SetUnderline(underline); });
}

void CWordWnd::SetShadow(bool shadow) {
    Change([=](StringParams& params) { params.SetShadow(shadow); });
}

void CWordWnd::SetVertical(bool vertical) {
    Change([=](StringParams& params) { params.SetVertical(vertical); });
}

void CWordWnd::SetColor(QRgb colour) {
    Change([=](StringParams& params) { params.SetColor(colour); });
}

void CWordWnd::SetAlpha(double alpha) {
    Change([=](StringParams& params) { params.SetAlpha(static_cast<float>(alpha)); });
}

void CWordWnd::SettleChange() {
    if (m_logic.HasUnrecorded()) Act([&] { return m_logic.CommitStep(); });
}

// ---- acts

bool CWordWnd::Act(const std::function<bool()>& act) {
    m_logic.SetScreenScale(PixelRatio());
    return Perform(act);
}

// A deletion is taken back where it was the last act; everything else by the visit's step.
void CWordWnd::OnUndo() {
    if (!m_logic.MayRestoreDeleted()) return CPictureWnd::OnUndo();
    Act([&] { return m_logic.RestoreDeleted(); });
    NotifyView(PanelNews());
}

void CWordWnd::TellSelected() {
    if (const auto style = m_logic.SelectedStyle()) NotifyView(PanelNews(WordSelectedNews{*style}));
}

QRect CWordWnd::SelectionArea() const {
    const int selected = m_logic.Selected();
    if (selected == CWordLogic::None) return {};
    return m_logic.InkOnScreen(selected) | Overlay().Covers(m_logic.BoxOf(selected), m_logic.ButtonsOf(selected));
}

void CWordWnd::RedrawSelection(const QRect& before) {
    const QRect area = (before | SelectionArea()).intersected(QRect(QPoint(0, 0), PhysicalClient()));
    if (!area.isEmpty()) RedrawPart(area);
}

// ---- paint

void CWordWnd::paintEvent(QPaintEvent* event) {
    const QRect part = event->rect();
    m_painted = QRectF(Physical(part.topLeft()), QSizeF(part.size()) * PixelRatio()).toAlignedRect();
    CPictureWnd::paintEvent(event);
}

void CWordWnd::PaintOverlay(QPainter& painter, const QRect&) {
    m_logic.PaintTexts(painter, m_painted);
    // While a task runs its worker may take another picture up.
    if (IsTaskRunning()) return;
    m_logic.SetScreenScale(PixelRatio());
    if (m_logic.AtMiddleX() || m_logic.AtMiddleY()) {
        const ViewGeometry geometry = m_logic.Geometry();
        Overlay().PaintGuides(painter, QRect(geometry.ViewOffset(), geometry.Shown()), m_logic.AtMiddleX(),
                              m_logic.AtMiddleY());
    }
    if (const int hovered = m_logic.Hovered(); hovered != CWordLogic::None)
        Overlay().PaintHover(painter, m_logic.BoxOf(hovered));
    if (const int selected = m_logic.Selected(); selected != CWordLogic::None)
        Overlay().PaintSelected(painter, m_logic.BoxOf(selected), m_logic.ButtonsOf(selected),
                                m_logic.Held() == WordHit::RotateButton);
}

QCursor CWordWnd::ToolCursor() const {
    if (m_panning) return Qt::ClosedHandCursor;
    static const QCursor turn = IconCursor(QStringLiteral("rotate")), remove = IconCursor(QStringLiteral("trash"));
    switch (m_logic.Held() != WordHit::Nothing ? m_logic.Held() : m_over) {
        case WordHit::Body:
            return Qt::SizeAllCursor;
        case WordHit::RotateButton:
            return turn;
        case WordHit::DeleteButton:
            return remove;
        case WordHit::Nothing:
            break;
    }
    return Qt::ArrowCursor;
}

void CWordWnd::leaveEvent(QEvent* event) {
    m_over = WordHit::Nothing;
    if (m_logic.HoverAt({-1, -1})) Redraw(Paint::Later);
    CPictureWnd::leaveEvent(event);
}

// ---- mouse

bool CWordWnd::BeginStroke(const StrokePoint& at) {
    if (!m_logic.HasPicture()) return false;
    setFocus(Qt::MouseFocusReason);  // what was typed is settled before another text is taken hold of
    m_logic.SetScreenScale(PixelRatio());
    m_last = WholePoint(at);
    m_over = m_logic.Press(m_last);
    m_panning = m_over == WordHit::Nothing && Geometry().CanDrag();
    Redraw(Paint::Now);
    TellSelected();
    return true;
}

void CWordWnd::MoveStroke(const StrokePoint& at) {
    const QPoint point = WholePoint(at);
    if (m_panning) return PanTo(point);
    const QRect before = SelectionArea();
    const bool guided = m_logic.AtMiddleX() || m_logic.AtMiddleY();
    bool moved = false;
    if (!WithinMemory(Host(), [&] { moved = m_logic.MoveTo(point, at.modifiers.testFlag(Qt::ShiftModifier)); })) return;
    m_last = point;
    if (!moved) return;
    // A guide crosses the whole picture.
    if (guided || m_logic.AtMiddleX() || m_logic.AtMiddleY())
        Redraw(Paint::Now);
    else
        RedrawSelection(before);
    if (m_logic.Held() != WordHit::RotateButton) return;
    if (const auto style = m_logic.SelectedStyle()) NotifyView(PanelNews(WordSizeNews{style->fontSize}));
}

void CWordWnd::PanTo(QPoint at) {
    const QPoint by = at - m_last;
    m_last = at;
    const QPoint before = Geometry().Pan();
    Geometry().PanBy(by.x(), by.y());
    if (Geometry().Pan() != before) TakeUpPan(ViewChange::Panning);
}

void CWordWnd::EndStroke(StrokeEnd how) {
    if (m_panning) {
        m_panning = false;
        return TakeUpPan(ViewChange::Settled);
    }
    if (how == StrokeEnd::Cancelled) {
        m_logic.CancelPress();
        Redraw(Paint::Now);
        return TellSelected();
    }
    CWordLogic::Released released = CWordLogic::Released::Nothing;
    Act([&] {
        released = m_logic.Release(m_last);
        return released != CWordLogic::Released::Nothing;
    });
    m_over = m_logic.HitAt(m_last);
}

void CWordWnd::Hover(const StrokePoint& at) {
    if (!TakesInput()) return;
    m_logic.SetScreenScale(PixelRatio());
    const QPoint point = WholePoint(at);
    m_over = m_logic.HitAt(point);
    if (m_logic.HoverAt(point)) Redraw(Paint::Now);
}

void CWordWnd::mouseDoubleClickEvent(QMouseEvent* event) {
    CPictureWnd::mouseDoubleClickEvent(event);
    if (event->button() != Qt::LeftButton || m_logic.Held() != WordHit::Body) return;
    NotifyView(PanelNews(WordEditNews{}));
}

// ---- keys

void CWordWnd::keyPressEvent(QKeyEvent* event) {
    if (IsStroking() || !TakesInput() || !PressKey(*event)) CPictureWnd::keyPressEvent(event);
}

bool CWordWnd::PressKey(const QKeyEvent& event) {
    const bool pages = event.key() == Qt::Key_PageDown || event.key() == Qt::Key_PageUp;
    if (pages && m_logic.Count() > 0) {
        Act([&] { return m_logic.SelectNext(event.key() == Qt::Key_PageDown); });
        TellSelected();
        return true;
    }
    if (m_logic.Selected() == CWordLogic::None) return false;
    if (const QPoint arrow = ArrowOf(event.key()); !arrow.isNull()) {
        PressArrow(arrow, event.modifiers());
        return true;
    }
    switch (event.key()) {
        case Qt::Key_Escape:
            m_logic.Deselect();
            Redraw(Paint::Now);
            return true;
        case Qt::Key_Delete:
        case Qt::Key_Backspace:
            Act([&] { return m_logic.DeleteSelected(); });
            return true;
        case Qt::Key_D:
            if (event.modifiers() != Qt::ControlModifier) return false;
            Act([&] { return m_logic.DoubleSelected(); });
            TellSelected();
            return true;
        default:
            return false;
    }
}

void CWordWnd::PressArrow(QPoint by, Qt::KeyboardModifiers modifiers) {
    const bool far = modifiers.testFlag(Qt::ShiftModifier);
    if (modifiers.testFlag(Qt::ControlModifier)) {
        const int degrees = (by.x() + by.y()) * (far ? FarDegrees : 1);
        Act([&] { return m_logic.TurnSelected(degrees); });
        return;
    }
    by *= far ? FarPixels : 1;
    Act([&] { return m_logic.MoveSelected(by.x(), by.y()); });
}
