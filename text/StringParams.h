// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <QtCore/QRectF>
#include <QtGui/QColor>

#include "RenderParams.h"
#include "TextShape.h"

// A text on the picture: the record that a step keeps of it, and the object that draws it.
//
// The box is what the text takes, measured anew whenever text, font or style change; it then grows about its centre.
// The centre as a fraction of the picture is what a change of the picture's size leaves alone, and follows every change
// of position or box.
//
// It is drawn as it is burnt: at any scale the same shape stands in the same place of the picture, so that what is seen
// is the picture to come. A value; of one thread at a time. Setting text, font or style needs a QGuiApplication.
struct StringParams final : ParamsOf<StringParams, 7, RenderParams> {
    // Where the text stands.
    enum Placement { Custom = 0, NineGrid = 1, Tiled = 2 };
    // Distance of the nine-grid's outer cells from the picture's edge, picture pixels.
    static constexpr float GridMargin = 2.0f;
    static constexpr float LeastFontSize = 1.0f;
    // The most that a side of the box may have; a font size beyond is held where the box has it.
    static constexpr double MostBoxSide = 30000.0;

    // A copy whose font size has lost its fraction.
    std::unique_ptr<CUndoRedoParams> Clone() const override;

    void SetBoxSize(int width, int height, int anchor) override;
    void Draw(Graphics& graphics, double scale) override;
    void SetOffset(int x, int y) override;
    void GetPosition(float* x, float* y) const override;
    void SetPosition(float x, float y) override;
    void SavePosition() override;
    void GetSavedPosition(float* x, float* y) const override;
    void GetBoxSize(double* width, double* height) const override;
    void SetAngle(double degrees) override { m_angle = degrees; }
    double GetAngle() const override { return m_angle; }
    void SetAlpha(float alpha) override { m_alpha = alpha; }
    float GetAlpha() const override { return m_alpha; }
    void SetCanvasSize(float width, float height) override;
    float GetCanvasWidth() const override { return m_canvasWidth; }
    float GetCanvasHeight() const override { return m_canvasHeight; }
    int GetPlacement() const override { return m_placement; }
    // The nine-grid places the box at once.
    void SetPlacement(int mode) override;
    // 0 to 8, row by row; nothing is placed by it.
    void SetGridCell(int cell) override { m_gridCell = cell; }
    int GetGridCell() const override { return m_gridCell; }
    void SetTag(int tag) override { m_tag = tag; }
    int GetTag() const override { return m_tag; }
    // The text, shortened, and its placement.
    QString GetStepName() const override;

    // Each takes its value, measures and fits the box; nothing at all before there is a picture's size.
    void SetText(const QString& text);
    // Without its "@"s; an empty name leaves the font as it is.
    void SetFontName(const QString& name);
    void SetFontSize(float size);
    void SetBold(int bold);
    void SetItalic(int italic);
    void SetUnderline(int underline);
    void SetVertical(int vertical);

    QString GetText() const { return m_text; }
    QString GetFontName() const { return m_fontName; }
    float GetFontSize() const { return m_fontSize; }
    int GetBold() const { return m_bold; }
    int GetItalic() const { return m_italic; }
    int GetUnderline() const { return m_underline; }
    int GetVertical() const { return m_vertical; }

    void SetShadow(int shadow) { m_shadow = shadow; }
    int GetShadow() const { return m_shadow; }
    // 0xRRGGBB.
    void SetColor(QRgb colour);
    QRgb GetColor() const;

    // The centre of the box as a fraction of the picture.
    QPointF RelativeCentre() const { return {m_relativeX, m_relativeY}; }
    // The upright rectangle of picture pixels outside of which the text draws nothing; all of the picture when tiled.
    QRectF Ink() const;

    // Every field but what is derived from the others.
    bool operator==(const StringParams& other) const;

  private:
    TextLook Look() const;
    template <class Value>
    void Take(Value& field, const Value& value);
    bool Measure(int* width, int* height);
    void Fit();
    void UpdateRelative();
    void PlaceInGrid();
    float HeldSize(float size) const;
    void DrawAt(Graphics& graphics, QPointF at, double scale) const;
    void DrawTiles(Graphics& graphics, double scale) const;
    QPointF Centre(double scale) const;

    int m_placement = Custom;
    int m_gridCell = 4;
    int m_offsetX = 0, m_offsetY = 0;
    float m_canvasWidth = 0, m_canvasHeight = 0;
    float m_x = 0, m_y = 0;
    float m_savedX = 0, m_savedY = 0;
    float m_relativeX = 0, m_relativeY = 0;
    float m_alpha = 1.0f;
    double m_angle = 0;
    int m_tag = 0;
    double m_boxWidth = 0, m_boxHeight = 0;
    int m_shadow = 0;
    int m_bold = 0, m_italic = 0, m_underline = 0;
    int m_vertical = 0;
    float m_fontSize = 26.0f;
    // Bytes in the order red, green, blue.
    quint32 m_colour = 0;
    QString m_fontName = QStringLiteral("Arial");
    QString m_text;

    // The text laid out; null when it can't be measured. Copies share it, since it never changes.
    std::shared_ptr<const TextShape> m_shape;
};
