// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

class QPainter;

// A background attribute text "file='...' dest='l,t,r,b' ": which picture, and where in the control (logical pixels).
struct BkImage {
    QString file;
    QRect dest;  // null: the whole control

    // An attribute that is not there leaves its field empty.
    static BkImage Parse(const QString& attributes);
};

// What a background attribute shows: the picture and its place. Setting reads the file again, so that a file written
// anew under the same name shows. Main thread.
class BkPicture {
  public:
    // On a screen of a scale above 1 "name@2x.ext" beside the file is taken when it is there.
    void Set(const QString& attributes, double scale);
    const QString& Attributes() const { return m_attributes; }
    bool IsNull() const { return m_pixmap.isNull(); }
    // Where it stands in a control of this rectangle: all of it unless the attributes say another place.
    QRect Place(const QRect& control) const { return m_dest.isNull() ? control : m_dest; }
    // Draws the picture at its place.
    void Paint(QPainter& painter, const QRect& control) const;

  private:
    QString m_attributes;
    QRect m_dest;
    QPixmap m_pixmap;
};

// A control that shows its `bkimage` property as its background.
class CImageBox : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString bkimage READ Image WRITE SetImage)

  public:
    explicit CImageBox(QWidget* parent = nullptr);
    QString Image() const { return m_picture.Attributes(); }
    void SetImage(const QString& attributes);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    BkPicture m_picture;
};
