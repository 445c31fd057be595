// SPDX-License-Identifier: GPL-3.0-or-later
#include "CCompareWnd.h"

#include <algorithm>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QPushButton>

#include "Language.h"
#include "PC_Dsp.h"
#include "Truncate.h"
#include "ViewGeometry.h"

namespace {

// Logical pixels around and between the two pictures.
constexpr int Gap = 16;

QPushButton* MakeButton(QWidget* parent, const QString& name, const QString& key, QSize size) {
    auto* button = new QPushButton(LanguageText(key), parent);
    button->setObjectName(name);
    button->setAccessibleName(button->text());
    button->setFixedSize(size);
    QFont font = button->font();
    if (LanguageId() == u"2052") font.setFamilies({QStringLiteral("微软雅黑"), QStringLiteral("Noto Sans CJK SC")});
    button->setFont(font);
    button->hide();
    return button;
}

QSize SizeOf(const Bitmap& bitmap) {
    return {bitmap.Width(), bitmap.Height()};
}

}  // namespace

CCompareWnd::CCompareWnd(ToolHost& host, QWidget* parent)
    : CBaseWnd(host, 0, parent),
      m_save(MakeButton(this, QStringLiteral("BtnCompareSave"), QStringLiteral("ids_comparesave"), SaveSize)),
      m_cancel(MakeButton(this, QStringLiteral("BtnCompareCancel"), QStringLiteral("ids_comparecancel"), CancelSize)) {
    m_save->setProperty("role", QStringLiteral("primary"));
    connect(m_save, &QPushButton::clicked, this, [this] { Host().SendFrame(OpenSaveMessage{m_after}); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { Host().SetCompareMode(0); });
}

void CCompareWnd::ShowOriginal(const Bitmap& original, const QRectF& imageRect, const QRect& screenRect) {
    m_nMode = 1;
    m_before = original;
    m_after = {};
    m_imageRect = imageRect;
    m_screenRect = screenRect;
    ArrangePictures();
}

void CCompareWnd::ShowSideBySide(const Bitmap& before, const Bitmap& after) {
    m_nMode = 2;
    m_before = before;
    m_after = after;
    ArrangePictures();
}

void CCompareWnd::Clear() {
    m_nMode = 0;
    m_before = {};
    m_after = {};
    ArrangePictures();
}

void CCompareWnd::LayoutChildren(int cx, int cy) {
    m_save->move(cx / 2 - 150, cy - ButtonRise);
    m_cancel->move(cx / 2 + 50, cy - ButtonRise);
    ArrangePictures();
}

void CCompareWnd::ArrangePictures() {
    m_beforeView = {};
    m_afterView = {};
    if (!PhysicalClient().isEmpty() && m_before) {
        if (m_nMode == 1 && !m_imageRect.isEmpty() && !m_screenRect.isEmpty())
            m_beforeView = Draw(m_before, m_imageRect, m_screenRect);
        else if (m_nMode == 1)
            ArrangeFit();
        else if (m_nMode == 2)
            ArrangeSideBySide();
    }
    for (QPushButton* button : {m_save, m_cancel}) button->setVisible(m_nMode == 2);
    Redraw(Paint::Later);
}

void CCompareWnd::ArrangeFit() {
    ViewGeometry geometry;
    geometry.SetClient(PhysicalClient());
    geometry.SetImage(SizeOf(m_before));
    geometry.Fit();
    m_beforeView = Draw(m_before, geometry.ImageRect(), geometry.ScreenRect());
}

void CCompareWnd::ArrangeSideBySide() {
    if (!m_after) return;
    const QSize before = SizeOf(m_before), after = SizeOf(m_after);
    const int gap = Truncate(Gap * PixelRatio());
    const int width = PhysicalClient().width();
    const int height = PhysicalClient().height() - Truncate(AreaRise * PixelRatio());
    const int widths = before.width() + after.width();
    const int tallest = std::max(before.height(), after.height());
    // Not above actual size: a small picture is compared sharp.
    const double factor =
        std::min({1.0, static_cast<double>(width - 3 * gap) / widths, static_cast<double>(height - 2 * gap) / tallest});
    if (factor <= 0.0) return;
    const QSize beforeSize(TruncateSide(before.width() * factor), TruncateSide(before.height() * factor));
    const QSize afterSize(TruncateSide(after.width() * factor), TruncateSide(after.height() * factor));
    const int left = (width - beforeSize.width() - gap - afterSize.width()) / 2;
    const auto place = [&](int x, QSize size) { return QRect(QPoint(x, (height - size.height()) / 2), size); };
    m_beforeView = Draw(m_before, QRectF(QPointF(0, 0), QSizeF(before)), place(left, beforeSize));
    m_afterView =
        Draw(m_after, QRectF(QPointF(0, 0), QSizeF(after)), place(left + beforeSize.width() + gap, afterSize));
}

ViewPicture CCompareWnd::Draw(const Bitmap& picture, const QRectF& source, const QRect& place) {
    ViewPicture view;
    view.place = place;
    view.bitmap = Bitmap::Uninitialised(place.width(), place.height());
    PC_Dsp::ResampleRect(picture, source.x(), source.y(), source.width(), source.height(), view.bitmap,
                         ResampleQuality::Best);
    view.opaque = view.bitmap.IsOpaque();
    return view;
}

void CCompareWnd::paintEvent(QPaintEvent*) {
    SettleLayout();
    QPainter painter(this);
    UsePhysicalPixels(painter);
    PaintPictures(painter, {m_beforeView, m_afterView});
    // None over the original alone, where the eye is to see only the change.
    if (m_nMode != 2 || m_beforeView.place.isEmpty()) return;
    PaintLabel(painter, m_beforeView.place, LanguageText(QStringLiteral("ids_comparebefore")));
    PaintLabel(painter, m_afterView.place, LanguageText(QStringLiteral("ids_compareafter")));
}

void CCompareWnd::PaintLabel(QPainter& painter, const QRect& place, const QString& text) const {
    QFont labelFont = font();
    labelFont.setPixelSize(TruncateSide(12 * PixelRatio()));
    labelFont.setWeight(QFont::Medium);
    painter.setFont(labelFont);
    const int unit = TruncateSide(4 * PixelRatio());
    QRect pill = painter.fontMetrics().boundingRect(text).marginsAdded({2 * unit, unit, 2 * unit, unit});
    pill.moveTopLeft(place.topLeft() + QPoint(2 * unit, 2 * unit));
    if (text.isEmpty() || !place.contains(pill)) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(32, 38, 46, 165));
    painter.drawRoundedRect(pill, pill.height() / 2.0, pill.height() / 2.0);
    painter.setPen(Qt::white);
    painter.drawText(pill, Qt::AlignCenter, text);
}

void CCompareWnd::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && m_nMode == 2)
        Host().SetCompareMode(0);
    else
        CBaseWnd::keyPressEvent(event);
}
