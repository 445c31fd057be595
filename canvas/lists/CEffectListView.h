// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <QtWidgets/QListWidget>

#include "Bitmap.h"
#include "BkImage.h"
#include "CXMLWnd.h"
#include "LookTable.h"

// The thumbnail of a row with what the row's background attribute lays over it: a child of the row under the name
// HorLayEffect.
class CEffectThumb : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString bkimage READ Image WRITE SetImage)

  public:
    using QWidget::QWidget;
    void SetThumbnail(const Bitmap& thumbnail);
    QString Image() const { return m_overlay.Attributes(); }
    void SetImage(const QString& attributes);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QPixmap m_thumbnail;
    BkPicture m_overlay;
};

// Row of a list of looks: the thumbnail with its overlay, below it the name on its colour.
class CEffectListItem : public CXMLWnd {
    Q_OBJECT

  public:
    // Logical pixels: of the name below the thumbnail, and of a whole row with the room around the tile.
    static constexpr int NameHeight = 20;
    static constexpr QSize SizeOf(const LookTile& tile) {
        return {tile.thumbnail.width() + 7, tile.thumbnail.height() + NameHeight + 10};
    }

    CEffectListItem(const LookTile& tile, const QString& name, std::uint32_t colour, const QString& background,
                    const Bitmap& thumbnail, QWidget* parent);
    // The whole name, of which the row shows what fits.
    QString Name() const { return m_name; }
    // The look in force; the row that the keyboard stands on.
    void SetSelected(bool selected);
    bool IsSelected() const { return m_selected; }
    void SetFocused(bool focused);

    // A text on this colour is well readable in the one that is given: white, or dark on light colours.
    static QColor TextColourOn(const QColor& colour);

  protected:
    QWidget* CreateControl(const QString& className, QWidget* parent, const QString& name) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    const QSize m_thumbnail;
    QString m_name;
    bool m_selected = false;
    bool m_focused = false;
};

// List of looks, three tiles side by side. One row at most is selected, by SelectItem alone: a click or the keyboard
// (arrows, Enter, blank) only tells which row the user wants. Main thread.
class CEffectListView : public QListWidget {
    Q_OBJECT

  public:
    explicit CEffectListView(QWidget* parent, const LookTile& tile = {});

    // Appends a row from the tile's skin. `colour` is 0xAARRGGBB; `thumbnail` is of the row's thumbnail
    // size times the screen's scale.
    void AddEffectItem(const QString& name, std::uint32_t colour, const QString& background, const Bitmap& thumbnail);
    // Selects a row in place of the present one; a negative index and a row that is hidden or disabled are ignored.
    void SelectItem(int index);
    // Selects none.
    void ClearSelected();
    // The selected row; -1 for none.
    int SelectedItem() const { return m_selected; }
    // Takes all rows out.
    void Empty();
    CEffectListItem* Row(int row) const;

  signals:
    // The user chose a row.
    void ItemSelect(int row);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void ShowFocus();

    const LookTile m_tile;
    int m_selected = -1;
};
