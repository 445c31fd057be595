// SPDX-License-Identifier: GPL-3.0-or-later
#include "CUndoListWnd.h"

#include <algorithm>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>

namespace {

// The list's frame and the skin's margins, above and below the rows.
constexpr int Border = 10;

}  // namespace

CHistoryListItem::CHistoryListItem(const QString& name, QWidget* parent) : CXMLWnd(parent) {
    Create(QStringLiteral("HistoryListItem.xml"));
    // The list takes the clicks of its rows.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    if (auto* text = Find<QLabel>(QStringLiteral("ItemText"))) text->setText(u' ' + name);
}

QString CHistoryListItem::Text() const {
    const auto* text = Find<QLabel>(QStringLiteral("ItemText"));
    return text ? text->text() : QString();
}

void CHistoryListItem::SetCurrent(bool current) {
    auto* text = Find<QLabel>(QStringLiteral("ItemText"));
    if (!text) return;
    text->setProperty("changed", current);
    text->style()->unpolish(text);
    text->style()->polish(text);
}

CHistoryList::CHistoryList(QWidget* parent) : QListWidget(parent) {
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void CHistoryList::Fill(const std::vector<QString>& names, int current) {
    const QSignalBlocker quiet(this);
    clear();
    for (const QString& name : names) {
        auto* item = new QListWidgetItem(this);
        item->setSizeHint({0, CHistoryListItem::Height});
        item->setData(Qt::AccessibleTextRole, name);
        auto* row = new CHistoryListItem(name, this);
        row->SetCurrent(count() - 1 == current);
        setItemWidget(item, row);
    }
    setCurrentRow(current);
}

CHistoryListItem* CHistoryList::Row(int row) const {
    return qobject_cast<CHistoryListItem*>(itemWidget(item(row)));
}

void CHistoryList::keyPressEvent(QKeyEvent* event) {
    const bool chosen = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (chosen && currentItem())
        emit itemClicked(currentItem());
    else
        QListWidget::keyPressEvent(event);
}

CUndoListWnd::CUndoListWnd(QAbstractButton* option) : CPopupWnd(option) {
    Create(QStringLiteral("UndoListWnd.xml"));
    m_list = Find<CHistoryList>(QStringLiteral("ListUndo"));
}

QWidget* CUndoListWnd::CreateControl(const QString& className, QWidget* parent, const QString&) {
    return className == u"CHistoryList" ? new CHistoryList(parent) : nullptr;
}

void CUndoListWnd::Open(const std::vector<QString>& names, int current) {
    if (!m_list || names.empty()) return;
    m_list->Fill(names, current);
    const int rows = std::min(static_cast<int>(names.size()), VisibleRows);
    m_height = rows * CHistoryListItem::Height + Border;
    OpenUnder({Width, m_height}, 100);
    // Only a list that has its size knows what is in view.
    m_list->scrollToItem(m_list->item(current), QAbstractItemView::EnsureVisible);
    m_list->setFocus();
}

void CUndoListWnd::OnNotify(const Notify& notify) {
    if (!notify.Is(u"itemclick", u"ListUndo")) return;
    hide();
    emit RowClicked(notify.value);
}
