// SPDX-License-Identifier: GPL-3.0-or-later
#include "CFontCombo.h"

#include <QtCore/QStringListModel>
#include <QtGui/QFocusEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyledItemDelegate>

#include "Families.h"
#include "Messages.h"

namespace {

constexpr int RowHeight = 28, SampleSize = 15;
constexpr int PopupWidth = 280;

// A row's name in its own face; only rows on show are drawn, so only their fonts are loaded.
class FaceDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return {PopupWidth, RowHeight}; }

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const QStringList own = option->font.families();
        QFont face = option->font;
        face.setFamilies(QStringList(FamilyFor(index.data().toString())) + own);
        face.setPixelSize(SampleSize);
        // A face without letters (signs, another script) keeps its name readable.
        if (QFontMetrics(face).inFont(u'a')) option->font = face;
    }
};

}  // namespace

CFontCombo::CFontCombo(QWidget* parent) : QComboBox(parent), m_families(new QStringListModel(this)) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setModel(m_families);
    setMaxVisibleItems(12);
    view()->setItemDelegate(new FaceDelegate(view()));
    view()->setMinimumWidth(PopupWidth);
    auto* completer = new QCompleter(m_families, this);
    completer->setFilterMode(Qt::MatchContains);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    setCompleter(completer);
    completer->popup()->setItemDelegate(new FaceDelegate(completer->popup()));
    completer->popup()->setMinimumWidth(PopupWidth);
}

void CFontCombo::showEvent(QShowEvent* event) {
    QComboBox::showEvent(event);
    if (!m_filled) Fill();
}

void CFontCombo::Fill() {
    m_filled = false;
    m_thread.Start({[this] {
        const QStringList families = TextFamilies();
        PostToMain(this, [this, families] { Take(families); });
    }});
}

void CFontCombo::Take(const QStringList& families) {
    const QString typed = lineEdit()->hasFocus() ? lineEdit()->text() : QString();
    m_families->setStringList(families);
    m_filled = true;
    ShowFamily(m_shown);
    if (!typed.isEmpty()) lineEdit()->setText(typed);
}

void CFontCombo::ShowFamily(const QString& family) {
    m_shown = family;
    if (!m_filled) m_families->setStringList({family});
    const int row = findText(family, Qt::MatchFixedString);
    setCurrentIndex(row);
    setEditText(row < 0 ? QString() : itemText(row));
    lineEdit()->setCursorPosition(0);
}

// What was typed and not chosen gives way to the selected family.
void CFontCombo::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) setEditText(currentIndex() < 0 ? QString() : itemText(currentIndex()));
}
