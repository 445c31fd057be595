// SPDX-License-Identifier: GPL-3.0-or-later
#include "CubeFile.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "TextFields.h"

namespace {

constexpr int SmallestSize = 2, LargestSize = 256;
constexpr std::size_t LongestTitle = 200;
constexpr double LargestValue = 1e6;

class CubeParser {
  public:
    CubeResult Run(std::string_view text) {
        if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
        while (!text.empty() && m_error.empty()) {
            ++m_line;
            Line(Trimmed(TakeLine(text)));
        }
        if (m_error.empty()) CheckWhole();
        if (!m_error.empty()) return {{}, m_error};
        return {std::move(m_table), {}};
    }

  private:
    void Fail(const std::string& what) { m_error = "line " + std::to_string(m_line) + ": " + what; }

    void Line(std::string_view line) {
        if (line.empty() || line.starts_with('#')) return;
        const char first = line.front();
        if ((first >= '0' && first <= '9') || first == '-' || first == '+' || first == '.') return Point(line);
        if (!m_table.points.empty()) return Fail("a keyword stands between the points");
        const std::string_view keyword = TakeWord(line);
        if (keyword == "TITLE") return Title(Trimmed(line));
        if (keyword == "LUT_1D_SIZE") return Size(1, line);
        if (keyword == "LUT_3D_SIZE") return Size(3, line);
        if (keyword == "DOMAIN_MIN") return Domain(m_table.domainLow, line);
        if (keyword == "DOMAIN_MAX") return Domain(m_table.domainHigh, line);
        if (keyword == "LUT_1D_INPUT_RANGE" || keyword == "LUT_3D_INPUT_RANGE") return Range(line);
        Fail("unknown keyword \"" + Printable(keyword) + "\"");
    }

    void Title(std::string_view text) {
        if (text.size() >= 2 && text.starts_with('"') && text.ends_with('"')) text = text.substr(1, text.size() - 2);
        m_table.title = Trimmed(text.substr(0, LongestTitle));
    }

    void Size(int dimensions, std::string_view line) {
        if (m_table.size != 0) return Fail("a second size");
        const auto size = NumberOf(TakeWord(line));
        if (!size || !Trimmed(line).empty() || *size != std::floor(*size)) return Fail("the size is one whole number");
        if (*size < SmallestSize || *size > LargestSize)
            return Fail("the size must be from " + std::to_string(SmallestSize) + " to " + std::to_string(LargestSize));
        m_table.dimensions = dimensions;
        m_table.size = static_cast<int>(*size);
    }

    bool Three(Triple& to, std::string_view line) {
        for (double& v : to) {
            const auto number = NumberOf(TakeWord(line));
            if (!number || std::abs(*number) > LargestValue) return false;
            v = *number;
        }
        return Trimmed(line).empty();
    }

    void Domain(Triple& to, std::string_view line) {
        if (!Three(to, line)) Fail("the domain takes three numbers");
    }

    void Range(std::string_view line) {
        const auto low = NumberOf(TakeWord(line)), high = NumberOf(TakeWord(line));
        if (!low || !high || !Trimmed(line).empty()) return Fail("the input range takes two numbers");
        m_table.domainLow = {*low, *low, *low};
        m_table.domainHigh = {*high, *high, *high};
    }

    std::size_t Wanted() const {
        const std::size_t n = std::size_t(m_table.size);
        return m_table.dimensions == 3 ? n * n * n : n;
    }

    void Point(std::string_view line) {
        if (m_table.size == 0) return Fail("points before a size");
        if (m_table.points.size() == Wanted()) return Fail("more points than the size says");
        Triple point{};
        if (!Three(point, line)) return Fail("a point is three numbers");
        m_table.points.push_back(
            {static_cast<float>(point[0]), static_cast<float>(point[1]), static_cast<float>(point[2])});
    }

    void CheckWhole() {
        if (m_table.size == 0) return Fail("no size");
        if (m_table.points.size() != Wanted())
            return Fail(std::to_string(m_table.points.size()) + " points instead of " + std::to_string(Wanted()));
        for (int i = 0; i < 3; ++i)
            if (!(m_table.domainHigh[i] - m_table.domainLow[i] > 1e-6) ||
                std::max(std::abs(m_table.domainLow[i]), std::abs(m_table.domainHigh[i])) > LargestValue)
                return Fail("the domain is empty");
    }

    CubeTable m_table;
    std::string m_error;
    int m_line = 0;
};

}  // namespace

Triple CubeTable::At(const Triple& colour) const {
    int index[3];
    double part[3];
    for (int i = 0; i < 3; ++i) {
        const double unit = (colour[i] - domainLow[i]) / (domainHigh[i] - domainLow[i]);
        const double place = std::clamp(unit, 0.0, 1.0) * (size - 1);
        index[i] = std::min(static_cast<int>(place), size - 2);
        part[i] = place - index[i];
    }
    Triple out{};
    if (dimensions == 1) {
        for (int i = 0; i < 3; ++i)
            out[i] = points[index[i]][i] + (double(points[index[i] + 1][i]) - points[index[i]][i]) * part[i];
        return out;
    }
    const std::size_t stride[3] = {1, std::size_t(size), std::size_t(size) * size};
    int order[3] = {0, 1, 2};
    std::stable_sort(order, order + 3, [&](int a, int b) { return part[a] > part[b]; });
    std::size_t at = index[0] * stride[0] + index[1] * stride[1] + index[2] * stride[2];
    double before = 1.0;
    for (int corner = 0; corner <= 3; ++corner) {
        const double after = corner < 3 ? part[order[corner]] : 0.0;
        for (int i = 0; i < 3; ++i) out[i] += (before - after) * points[at][i];
        if (corner < 3) at += stride[order[corner]];
        before = after;
    }
    return out;
}

CubeResult ParseCube(std::string_view text) {
    return CubeParser().Run(text);
}

CubeResult ReadCube(const std::filesystem::path& file) {
    const auto text = ReadWholeText(file, LargestCube);
    if (!text) return {{}, "cannot be read"};
    return ParseCube(*text);
}

std::string CubeText(const CubeTable& table) {
    std::string text = "TITLE \"" + table.title + "\"\n";
    text += (table.dimensions == 3 ? "LUT_3D_SIZE " : "LUT_1D_SIZE ") + std::to_string(table.size) + "\n";
    char line[120];
    const auto add = [&](const char* word, double r, double g, double b) {
        std::snprintf(line, sizeof line, "%s%.7f %.7f %.7f\n", word, r, g, b);
        // Whatever the locale of the program: the decimal sign is a point.
        for (char& c : line) c = c == ',' ? '.' : c;
        text += line;
    };
    add("DOMAIN_MIN ", table.domainLow[0], table.domainLow[1], table.domainLow[2]);
    add("DOMAIN_MAX ", table.domainHigh[0], table.domainHigh[1], table.domainHigh[2]);
    for (const auto& p : table.points) add("", p[0], p[1], p[2]);
    return text;
}
