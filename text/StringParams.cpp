// SPDX-License-Identifier: GPL-3.0-or-later
#include "StringParams.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "Graphics.h"
#include "PC_Dsp.h"
#include "Truncate.h"

namespace {

// The shadow of a text of 60 pixels falls that far, and is half as strong as the text.
constexpr double ShadowEm = 60.0, ShadowRight = 3.0, ShadowDown = 2.5;
constexpr double Hair = 1e-3;
constexpr double FullAlpha = 255.0, ShadowAlpha = 128.0;

double Divisor(float side) {
    return side > 1.0f ? side : 1.0;
}

}  // namespace

std::unique_ptr<CUndoRedoParams> StringParams::Clone() const {
    auto clone = std::make_unique<StringParams>(*this);
    clone->m_fontSize = static_cast<float>(Truncate(m_fontSize));
    return clone;
}

bool StringParams::operator==(const StringParams& other) const {
    const auto fields = [](const StringParams& p) {
        return std::tie(p.order, p.m_placement, p.m_gridCell, p.m_offsetX, p.m_offsetY, p.m_canvasWidth,
                        p.m_canvasHeight, p.m_x, p.m_y, p.m_savedX, p.m_savedY, p.m_relativeX, p.m_relativeY, p.m_alpha,
                        p.m_angle, p.m_tag, p.m_boxWidth, p.m_boxHeight, p.m_shadow, p.m_bold, p.m_italic,
                        p.m_underline, p.m_vertical, p.m_fontSize, p.m_colour, p.m_fontName, p.m_text);
    };
    return fields(*this) == fields(other);
}

// ---- place and size ----

void StringParams::UpdateRelative() {
    m_relativeX = static_cast<float>((m_x + m_boxWidth * 0.5) / Divisor(m_canvasWidth));
    m_relativeY = static_cast<float>((m_y + m_boxHeight * 0.5) / Divisor(m_canvasHeight));
}

void StringParams::SetBoxSize(int width, int height, int anchor) {
    const int oldWidth = Truncate(m_boxWidth), oldHeight = Truncate(m_boxHeight);
    const int centreX = Truncate(m_x + m_boxWidth * 0.5), centreY = Truncate(m_y + m_boxHeight * 0.5);
    const int newWidth = width == -1 ? oldWidth : width, newHeight = height == -1 ? oldHeight : height;
    switch (anchor) {
        case 1:
        case 7:
            break;
        case 8:
            m_y += static_cast<float>(oldHeight - newHeight);
            break;
        case 9:
        case 10:
            m_x += static_cast<float>(oldWidth - newWidth);
            break;
        default:
            m_x = static_cast<float>(centreX - newWidth * 0.5);
            m_y = static_cast<float>(centreY - newHeight * 0.5);
            break;
    }
    if (width != -1) m_boxWidth = width;
    if (height != -1) m_boxHeight = height;
    UpdateRelative();
}

void StringParams::SetOffset(int x, int y) {
    m_offsetX = x;
    m_offsetY = y;
}

void StringParams::GetPosition(float* x, float* y) const {
    *x = m_x;
    *y = m_y;
}

void StringParams::SetPosition(float x, float y) {
    m_x = x;
    m_y = y;
    UpdateRelative();
}

void StringParams::SavePosition() {
    m_savedX = m_x;
    m_savedY = m_y;
}

void StringParams::GetSavedPosition(float* x, float* y) const {
    *x = m_savedX;
    *y = m_savedY;
}

void StringParams::GetBoxSize(double* width, double* height) const {
    *width = m_boxWidth;
    *height = m_boxHeight;
}

void StringParams::SetCanvasSize(float width, float height) {
    const float old = std::min(m_canvasWidth, m_canvasHeight);
    const float ratio = old > 0 ? std::min(width, height) / old : 1.0f;
    if (ratio != 1.0f) {
        m_fontSize = std::max(LeastFontSize, m_fontSize * ratio);
        Fit();
    }
    m_canvasWidth = width;
    m_canvasHeight = height;
    if (m_placement == NineGrid) return SetPlacement(NineGrid);
    m_x = static_cast<float>(m_relativeX * width - m_boxWidth * 0.5);
    m_y = static_cast<float>(m_relativeY * height - m_boxHeight * 0.5);
}

void StringParams::SetPlacement(int mode) {
    m_placement = mode;
    if (mode == NineGrid) PlaceInGrid();
}

void StringParams::PlaceInGrid() {
    if (m_gridCell >= 0 && m_gridCell <= 8) {
        const auto along = [](int third, float canvas, double box) {
            if (third == 0) return GridMargin;
            if (third == 1) return static_cast<float>((canvas - box) * 0.5);
            return static_cast<float>(canvas - box - GridMargin);
        };
        m_x = along(m_gridCell % 3, m_canvasWidth, m_boxWidth);
        m_y = along(m_gridCell / 3, m_canvasHeight, m_boxHeight);
    }
    UpdateRelative();
}

// ---- text and font ----

TextLook StringParams::Look() const {
    return {m_fontName, m_bold != 0, m_italic != 0, m_underline != 0, m_vertical != 0};
}

bool StringParams::Measure(int* width, int* height) {
    *width = *height = 0;
    if (m_fontName.isEmpty() || m_text.isEmpty() || !(m_fontSize > 0)) return false;
    if (!m_shape) return false;
    m_fontSize = HeldSize(m_fontSize);
    const QSizeF size = m_shape->Size() * m_fontSize;
    *width = Truncate(size.width());
    *height = Truncate(size.height());
    return true;
}

float StringParams::HeldSize(float size) const {
    const double longest = std::max(m_shape->Size().width(), m_shape->Size().height());
    if (longest * size <= MostBoxSide) return size;
    return std::max(LeastFontSize, static_cast<float>(Truncate(MostBoxSide / longest)));
}

void StringParams::Fit() {
    int width = 0, height = 0;
    if (Measure(&width, &height)) SetBoxSize(width, height, 0);
}

// Before there is a picture nothing is taken. What changes the look of the glyphs lays the text out anew.
template <class Value>
void StringParams::Take(Value& field, const Value& value) {
    if (!(m_canvasWidth > 0 && m_canvasHeight > 0)) return;
    field = value;
    if (static_cast<const void*>(&field) != &m_fontSize) m_shape = TextShape::Make(m_text, Look(), m_shape.get());
    Fit();
}

void StringParams::SetText(const QString& text) {
    Take(m_text, text);
}

void StringParams::SetFontName(const QString& name) {
    QString plain = name;
    plain.remove(u'@');
    Take(m_fontName, plain.isEmpty() ? m_fontName : plain);
}

void StringParams::SetFontSize(float size) {
    Take(m_fontSize, std::max(LeastFontSize, size));
}

void StringParams::SetBold(int bold) {
    Take(m_bold, bold);
}

void StringParams::SetItalic(int italic) {
    Take(m_italic, italic);
}

void StringParams::SetUnderline(int underline) {
    Take(m_underline, underline);
}

void StringParams::SetVertical(int vertical) {
    Take(m_vertical, vertical);
}

void StringParams::SetColor(QRgb colour) {
    m_colour = static_cast<quint32>(qRed(colour) | qGreen(colour) << 8 | qBlue(colour) << 16);
}

QRgb StringParams::GetColor() const {
    return qRgb(m_colour & 0xFF, m_colour >> 8 & 0xFF, m_colour >> 16 & 0xFF) & 0xFFFFFF;
}

// ---- drawing ----

QPointF StringParams::Centre(double scale) const {
    return {m_offsetX + double(m_relativeX) * m_canvasWidth * scale,
            m_offsetY + double(m_relativeY) * m_canvasHeight * scale};
}

void StringParams::Draw(Graphics& graphics, double scale) {
    if (m_fontName.isEmpty() || m_text.isEmpty() || !m_shape) return;
    if (m_placement == Tiled) return DrawTiles(graphics, scale);
    if (m_placement == NineGrid) PlaceInGrid();
    // The whole pixel at which it is burnt, wherever that stands on the surface.
    const QPointF at(Truncate(m_x) * scale + m_offsetX, Truncate(m_y) * scale + m_offsetY);
    if (m_angle != 0) graphics.RotateAt(m_angle, Centre(scale));
    DrawAt(graphics, at, scale);
    graphics.ResetTransform();
}

void StringParams::DrawAt(Graphics& graphics, QPointF at, double scale) const {
    const double em = m_fontSize * scale;
    if (m_shadow) {
        const double unit = em / ShadowEm;
        graphics.DrawString(*m_shape, at + QPointF(unit * ShadowRight, unit * ShadowDown), em,
                            QColor(0, 0, 0, Truncate(m_alpha * ShadowAlpha)), TextShape::Colours::Silhouette);
    }
    QColor colour = QColor::fromRgb(GetColor());
    colour.setAlpha(Truncate(m_alpha * FullAlpha));
    graphics.DrawString(*m_shape, at, em, colour);
}

void StringParams::DrawTiles(Graphics& graphics, double scale) const {
    const int width = Truncate(m_boxWidth), height = Truncate(m_boxHeight);
    const int tileWidth = Truncate(width * scale), tileHeight = Truncate(height * scale);
    if (tileWidth < 1 || tileHeight < 1) return;
    Bitmap tile(width, height);
    {
        Graphics inTile(tile);
        DrawAt(inTile, {}, 1.0);
    }
    if (tileWidth != width || tileHeight != height) tile = PC_Dsp::Resample(tile, tileWidth, tileHeight);
    const QPointF centre = Centre(scale);
    // The relative centre has the precision of a float: what it misses by a hair is not lost.
    const int left = Truncate(centre.x() - m_boxWidth * 0.5 * scale + Hair);
    const int top = Truncate(centre.y() - m_boxHeight * 0.5 * scale + Hair);
    const QPointF pivot(m_offsetX + m_canvasWidth * 0.5 * scale - left, m_offsetY + m_canvasHeight * 0.5 * scale - top);
    QTransform brush = QTransform::fromTranslate(left, top);
    brush.translate(pivot.x(), pivot.y());
    brush.rotate(m_angle);
    brush.translate(-pivot.x(), -pivot.y());
    graphics.FillTiled({m_offsetX, m_offsetY, Truncate(m_canvasWidth * scale), Truncate(m_canvasHeight * scale)}, tile,
                       brush);
}

QRectF StringParams::Ink() const {
    if (m_placement == Tiled) return {0, 0, m_canvasWidth, m_canvasHeight};
    const double shadow = m_shadow ? m_fontSize / ShadowEm * ShadowRight : 0.0;
    // The box is truncated on both sides of the text.
    const QRectF box(m_x - 2, m_y - 2, m_boxWidth + shadow + 4, m_boxHeight + shadow + 4);
    if (m_angle == 0) return box;
    const QPointF centre(double(m_relativeX) * m_canvasWidth, double(m_relativeY) * m_canvasHeight);
    QTransform turn = QTransform::fromTranslate(centre.x(), centre.y());
    turn.rotate(m_angle);
    turn.translate(-centre.x(), -centre.y());
    return turn.mapRect(box);
}
