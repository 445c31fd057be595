// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QToolButton>

#include "BkImage.h"

// Button of a category: its cover, which the background attribute names, above its text.
class CCoverButton : public QToolButton {
    Q_OBJECT
    Q_PROPERTY(QString bkimage READ Image WRITE SetImage)

  public:
    using QToolButton::QToolButton;
    QString Image() const { return m_cover.Attributes(); }
    // Reads the file anew, also under the same name.
    void SetImage(const QString& attributes);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    BkPicture m_cover;
};
