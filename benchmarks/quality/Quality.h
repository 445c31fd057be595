// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "Subject.h"

// The quality of retouches in numbers. A retouch is one file here: it registers a QualityCase, which adds a row of
// figures for the program's own function and, beside it, rows for what other libraries offer for the same end.

// A number with the range that it is meant to have.
struct Figure {
    static constexpr double None = std::numeric_limits<double>::infinity();

    std::string name;
    double value = 0;
    const char* unit = "";
    double least = -None;
    double most = None;
    int decimals = 0;

    bool Holds() const { return value >= least && value <= most; }
    // Value, unit and range as text, for example "edges 98 % (>= 95)".
    std::string Text() const;
};

struct QualityRow {
    std::string subject;
    std::string retouch;
    std::string maker;  // Own, or another library's function
    std::vector<Figure> figures;
};

class QualityReport {
  public:
    static constexpr const char* Own = "QUINCE";

    // Which rows of other libraries are wanted, and the folder into which crops go (empty for none).
    explicit QualityReport(bool others, std::string crops = {}) : m_others(others), m_crops(std::move(crops)) {}

    bool WantsOthers() const { return m_others; }
    void Add(const Subject& subject, std::string retouch, std::string maker, std::vector<Figure> figures);
    // Writes a part of both pictures side by side, `name`-subject.png.
    void Crop(const Subject& subject, const std::string& name, const Bitmap& after, const cv::Rect& part) const;
    const std::vector<QualityRow>& Rows() const { return m_rows; }

  private:
    bool m_others;
    std::string m_crops;
    std::vector<QualityRow> m_rows;
};

// Registers a retouch:
//     static const QualityCase teeth("teeth", [](const Subject& subject, QualityReport& report) { ... });
// A case adds nothing for a subject that does not show what it needs.
struct QualityCase {
    using Body = std::function<void(const Subject&, QualityReport&)>;
    QualityCase(const char* name, Body body);

    std::string name;
    Body body;
    static const std::vector<QualityCase>& All();
};
