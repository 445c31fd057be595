// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEffectListView.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtWidgets/QLabel>

#include "BitmapView.h"
#include "Style.h"

namespace {

constexpr double TileCorner = 6;
constexpr double RingWidth = 2;
// Between the tile and the ring around it.
constexpr double RingGap = 2;

}  // namespace

void CEffectThumb::SetThumbnail(const Bitmap& thumbnail) {
    m_thumbnail = QPixmap::fromImage(ViewOf(thumbnail, AlphaUse::Ignore));
    update();
}

void CEffectThumb::SetImage(const QString& attributes) {
    m_overlay.Set(attributes, devicePixelRatioF());
    update();
}

// The tile's upper corners are round; the name below has the lower ones.
void CEffectThumb::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    QPainterPath tile;
    tile.addRoundedRect(QRectF(rect()).adjusted(0, 0, 0, TileCorner), TileCorner, TileCorner);
    painter.setClipPath(tile);
    painter.drawPixmap(rect(), m_thumbnail);
    m_overlay.Paint(painter, rect());
}

CEffectListItem::CEffectListItem(const LookTile& tile, const QString& name, std::uint32_t colour,
                                 const QString& background, const Bitmap& thumbnail, QWidget* parent)
    : CXMLWnd(parent), m_thumbnail(tile.thumbnail), m_name(name) {
    Create(QLatin1String(tile.skin));
    // The list takes the clicks of its rows.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    if (auto* thumb = Find<CEffectThumb>(QStringLiteral("HorLayEffect"))) {
        thumb->SetThumbnail(thumbnail);
        thumb->setProperty("bkimage", background);
    }
    auto* label = Find<QLabel>(QStringLiteral("TxtEffectName"));
    if (!label) return;
    const QColor ground = QColor::fromRgb(colour);
    label->setStyleSheet(
        QStringLiteral("background: %1; color: %2; border-bottom-left-radius: %3px; border-bottom-right-radius: %3px;")
            .arg(ground.name(), TextColourOn(ground).name())
            .arg(TileCorner));
    label->ensurePolished();
    label->setText(label->fontMetrics().elidedText(name, Qt::ElideRight, tile.thumbnail.width()));
}

QColor CEffectListItem::TextColourOn(const QColor& colour) {
    constexpr int Light = 160;
    return qGray(colour.rgb()) > Light ? Style::Text : QColor(Qt::white);
}

QWidget* CEffectListItem::CreateControl(const QString& className, QWidget* parent, const QString&) {
    return className == u"CEffectThumb" ? new CEffectThumb(parent) : nullptr;
}

void CEffectListItem::SetSelected(bool selected) {
    m_selected = selected;
    update();
}

void CEffectListItem::SetFocused(bool focused) {
    if (focused == m_focused) return;
    m_focused = focused;
    update();
}

void CEffectListItem::paintEvent(QPaintEvent*) {
    if (!m_selected && !m_focused) return;
    const auto* thumb = Find<QWidget>(QStringLiteral("HorLayEffect"));
    if (!thumb) return;
    const QRectF tile(thumb->mapTo(this, QPoint()), QSizeF(m_thumbnail + QSize(0, NameHeight)));
    const double out = RingGap + RingWidth / 2;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(m_selected ? Style::Accent : Style::Disabled, RingWidth));
    painter.drawRoundedRect(tile.adjusted(-out, -out, out, out), TileCorner + out, TileCorner + out);
}

CEffectListView::CEffectListView(QWidget* parent, const LookTile& tile) : QListWidget(parent), m_tile(tile) {
    setViewMode(QListView::IconMode);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setFrameShape(QFrame::NoFrame);
    setGridSize(CEffectListItem::SizeOf(tile));
    setSelectionMode(QAbstractItemView::NoSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { emit ItemSelect(row(item)); });
    connect(this, &QListWidget::currentRowChanged, this, [this] { ShowFocus(); });
}

void CEffectListView::AddEffectItem(const QString& name, std::uint32_t colour, const QString& background,
                                    const Bitmap& thumbnail) {
    auto* item = new QListWidgetItem(this);
    item->setSizeHint(CEffectListItem::SizeOf(m_tile));
    item->setToolTip(name);
    item->setData(Qt::AccessibleTextRole, name);
    setItemWidget(item, new CEffectListItem(m_tile, name, colour, background, thumbnail, this));
}

void CEffectListView::SelectItem(int index) {
    const QListWidgetItem* wanted = index < 0 ? nullptr : item(index);
    if (!wanted || wanted->isHidden() || !wanted->flags().testFlag(Qt::ItemIsEnabled)) return;
    ClearSelected();
    m_selected = index;
    setCurrentRow(index);
    if (CEffectListItem* row = Row(index)) row->SetSelected(true);
}

void CEffectListView::ClearSelected() {
    if (CEffectListItem* row = Row(m_selected)) row->SetSelected(false);
    m_selected = -1;
}

void CEffectListView::Empty() {
    m_selected = -1;
    clear();
}

CEffectListItem* CEffectListView::Row(int row) const {
    return qobject_cast<CEffectListItem*>(itemWidget(item(row)));
}

void CEffectListView::ShowFocus() {
    for (int i = 0; i < count(); ++i)
        if (CEffectListItem* row = Row(i)) row->SetFocused(hasFocus() && i == currentRow());
}

void CEffectListView::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const bool chosen = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
    if (chosen && currentItem())
        emit ItemSelect(currentRow());
    else
        QListWidget::keyPressEvent(event);
}

void CEffectListView::focusInEvent(QFocusEvent* event) {
    QListWidget::focusInEvent(event);
    if (currentRow() < 0 && count() > 0 && event->reason() != Qt::MouseFocusReason) setCurrentRow(0);
    ShowFocus();
}

void CEffectListView::focusOutEvent(QFocusEvent* event) {
    QListWidget::focusOutEvent(event);
    ShowFocus();
}
