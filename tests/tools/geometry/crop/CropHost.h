// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CCutWnd.h"
#include "CEditJianCai.h"
#include "CropPictures.h"
#include "EditHost.h"

class CropHost : public EditHost<CCutWnd, CEditJianCai> {
  public:
    using EditHost::EditHost;

    QRect Cut() const { return canvas->Selection().Cut(); }
    // Where a picture pixel's corner stands on the canvas.
    QPoint At(QPoint pixel) const {
        const ViewGeometry geometry = canvas->Logic().Geometry();
        return (QPointF(pixel) * geometry.Zoom() + QPointF(geometry.ViewOffset())).toPoint();
    }
    QPoint Grip(CropHit hit) const {
        const CropSelection selection = canvas->Selection();
        const QPointF at = selection.HitAreas()[static_cast<std::size_t>(hit)].center();
        return at.toPoint() + canvas->Logic().Geometry().ViewOffset();
    }
    // The canvas as it is painted, without the navigator.
    QImage Painted() const {
        QImage shown(canvas->size(), QImage::Format_RGB32);
        canvas->render(&shown, {}, {}, {});
        return shown;
    }
};
