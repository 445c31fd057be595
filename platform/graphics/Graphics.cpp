// SPDX-License-Identifier: GPL-3.0-or-later
#include "Graphics.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>

namespace {

// What is opaque stays so, and is drawn into several times faster when that is known.
bool IsOpaque(const std::uint8_t* first, std::ptrdiff_t stride, QSize size) {
    for (int y = 0; y < size.height(); ++y, first += stride)
        for (int x = 0; x < size.width(); ++x)
            if (first[4 * x + 3] != 0xFF) return false;
    return true;
}

std::unique_ptr<QImage> ViewOfPart(Bitmap& target, const QRect& part) {
    std::uint8_t* first = target.MutablePixels() + part.y() * target.Stride() + std::ptrdiff_t{4} * part.x();
    const auto format = IsOpaque(first, target.Stride(), part.size()) ? QImage::Format_RGB32 : QImage::Format_ARGB32;
    return std::make_unique<QImage>(first, part.width(), part.height(), target.Stride(), format);
}

}  // namespace

Graphics::Graphics(Bitmap& target, const QRect& part)
    : m_image(ViewOfPart(target, part)), m_own(std::make_unique<QPainter>(m_image.get())), m_painter(m_own.get()) {
    m_painter->translate(-part.topLeft());
    m_initial = m_painter->worldTransform();
}

Graphics::Graphics(QPainter& painter) : m_painter(&painter), m_initial(painter.worldTransform()) {}

Graphics::~Graphics() {
    if (!m_own) ResetTransform();
}

void Graphics::RotateAt(double degrees, QPointF centre) {
    m_painter->translate(centre);
    m_painter->rotate(degrees);
    m_painter->translate(-centre);
}

void Graphics::ResetTransform() {
    m_painter->setWorldTransform(m_initial);
}

void Graphics::DrawString(const TextShape& text, QPointF at, double em, const QColor& colour,
                          TextShape::Colours colours) {
    text.Draw(*m_painter, at, em, colour, colours);
}

void Graphics::FillTiled(const QRect& rect, const Bitmap& tile, const QTransform& transform) {
    const QImage picture(tile.Pixels(), tile.Width(), tile.Height(), tile.Stride(), QImage::Format_ARGB32);
    QBrush brush(picture);
    brush.setTransform(transform);
    m_painter->save();
    m_painter->setRenderHint(QPainter::SmoothPixmapTransform);
    m_painter->setBrushOrigin(0, 0);
    m_painter->fillRect(rect, brush);
    m_painter->restore();
}
