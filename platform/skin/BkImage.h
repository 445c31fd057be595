// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

// A background attribute text "file='...' dest='l,t,r,b' ": which picture, and where in the control (logical pixels).
struct BkImage {
    QString file;
    QRect dest;  // null: the whole control

    // An attribute that is not there leaves its field empty.
    static BkImage Parse(const QString& attributes);
};

// A control that shows its `bkimage` property as its background. Setting the property reads the file again, so that a
// file written anew under the same name shows.
class CImageBox : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString bkimage READ Image WRITE SetImage)

  public:
    explicit CImageBox(QWidget* parent = nullptr);
    QString Image() const { return m_attributes; }
    void SetImage(const QString& attributes);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString m_attributes;
    QRect m_dest;
    QPixmap m_pixmap;
};
