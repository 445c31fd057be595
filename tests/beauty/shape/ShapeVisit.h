// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

#include "CShouLianSSLogic.h"
#include "CYanJingFDLogic.h"
#include "PlainWarp.h"

// Where a hand is in picture pixels, by the numbers: the corner of the brush's rectangle, cut off one brush beyond the
// picture's left and upper edge, divided by the zoom; at the very edge five pixels outwards; and half a brush from it.
inline std::optional<QPoint> PlainPlace(QPoint client, const ViewGeometry& geometry, int brush) {
    const QSize picture = geometry.Image();
    const double zoom = geometry.Zoom();
    const int half = brush / 2;
    const auto along = [&](int at, int side) -> std::optional<int> {
        const int from = std::max(at - half, -brush);
        const int to = std::min(at + half, static_cast<int>(side * zoom));
        if (from >= to) return std::nullopt;
        const int corner = static_cast<int>(from / zoom);
        return (corner == 0 ? -5 : corner) + static_cast<int>(half / zoom);
    };
    const QPoint at = client - geometry.ViewOffset();
    auto x = along(at.x(), picture.width()), y = along(at.y(), picture.height());
    if (!x || !y) return std::nullopt;
    if (geometry.ScreenRect().contains(client))
        return QPoint(std::clamp(*x, 0, picture.width() - 1), std::clamp(*y, 0, picture.height() - 1));
    return QPoint(*x, *y);
}

// A visit of a tool beside the scalar twin of its picture: the same strokes go to both.
class ShapeVisit {
  public:
    ShapeVisit(WarpLogic& tool, bool drags) : m_tool(tool), m_drags(drags) {}

    void Take(const Bitmap& picture) { m_plain = std::make_unique<Plain::WarpField>(picture); }
    const Bitmap& Expected() const { return m_plain->output; }

    // The hand at a place of the client, while it is held. Whether it did something.
    bool PressTwin(QPoint client) {
        m_last.reset();
        if (m_drags) return false;
        const auto at = PlainPlace(client, m_tool.Geometry(), m_tool.PenSize());
        if (at) Push(*at, {0, 0}, CWarpField::Grow);
        return at.has_value();
    }
    bool MoveTwin(QPoint client) {
        if (!m_drags) return false;
        const auto at = PlainPlace(client, m_tool.Geometry(), m_tool.PenSize());
        const QPoint from = at ? m_last.value_or(*at) : QPoint();
        m_last = at;
        if (at) Push(*at, from, CWarpField::Move);
        return at.has_value();
    }

    // A whole stroke, through both. Whether it did something.
    bool Stroke(const std::vector<QPoint>& places) {
        EXPECT_TRUE(m_tool.BeginStroke(places.front()));
        bool did = PressTwin(places.front());
        for (std::size_t i = 1; i < places.size(); ++i) {
            m_tool.MoveStroke(places[i]);
            did = MoveTwin(places[i]) || did;
        }
        EXPECT_EQ(m_tool.EndStroke({}), did);
        return did;
    }

  private:
    void Push(QPoint to, QPoint from, int mode) {
        m_plain->SetRadius(std::max(2, static_cast<int>((m_tool.PenSize() + 10) / m_tool.Geometry().Zoom() + 0.5)));
        m_plain->amount = m_tool.Strength() / 100.0;
        m_plain->Deform(to.x(), to.y(), from.x(), from.y(), mode);
    }

    WarpLogic& m_tool;
    const bool m_drags;
    std::unique_ptr<Plain::WarpField> m_plain;
    std::optional<QPoint> m_last;
};
