// SPDX-License-Identifier: GPL-3.0-or-later
#include "Resampler.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "Kernels.h"
#include "Rows.h"

namespace {

// One result row: first down the columns of the source, then across. Rows with translucent pixels take the slower way
// with premultiplied colour in floating point; whether a row does depends on the source rows it reads alone.
class RowMaker {
  public:
    RowMaker(const PixelView& source, const ResampleTaps& columns, const ResampleTaps& rows)
        : m_source(source),
          m_columns(columns),
          m_rows(rows),
          m_width(columns.last - columns.first),
          m_pointers(rows.taps),
          // The last windows may reach past the picture with weight 0.
          m_sums(4 * (std::size_t(m_width) + columns.taps + 4)),
          m_starts(columns.starts) {
        for (int& start : m_starts) start -= columns.first;
    }

    void Make(int y, std::uint8_t* out) {
        for (int t = 0; t < m_rows.taps; ++t) {
            const int row = std::min(m_rows.starts[y] + t, m_source.height - 1);
            m_pointers[t] = m_source.pixels + row * m_source.stride + std::ptrdiff_t{4} * m_columns.first;
        }
        const std::int16_t* weights = &m_rows.weights[std::size_t(y) * m_rows.taps];
        const std::uint32_t all =
            Kernels().sumRows(m_pointers.data(), weights, m_rows.taps, 4 * m_width, m_sums.data());
        if (all >> 24 == 255)
            Kernels().sumColumns(m_sums.data(), m_starts.data(), m_columns.weights.data(), m_columns.taps,
                                 static_cast<int>(m_starts.size()), out);
        else
            MakeTranslucent(weights, out);
    }

  private:
    void MakeTranslucent(const std::int16_t* weights, std::uint8_t* out) {
        m_premultiplied.assign(4 * (std::size_t(m_width) + m_columns.taps + 4), 0.0f);
        for (int t = 0; t < m_rows.taps; ++t) {
            if (weights[t] == 0) continue;
            const std::uint8_t* in = m_pointers[t];
            for (int x = 0; x < m_width; ++x, in += 4) {
                float* sum = &m_premultiplied[4 * std::size_t(x)];
                const float alpha = static_cast<float>(in[3] * weights[t]);
                for (int c = 0; c < 3; ++c) sum[c] += in[c] * alpha;
                sum[3] += alpha;
            }
        }
        for (std::size_t n = 0; n < m_starts.size(); ++n, out += 4) {
            const std::int16_t* w = &m_columns.weights[n * m_columns.taps];
            double sum[4] = {};
            for (int t = 0; t < m_columns.taps; ++t)
                for (int c = 0; c < 4; ++c)
                    sum[c] += double(w[t]) * m_premultiplied[4 * std::size_t(m_starts[n] + t) + c];
            const double alpha = sum[3] / (16384.0 * 16384.0);
            // Rounded to the nearest level, as the kernels do.
            const auto level = [](double v) { return static_cast<std::uint8_t>(std::clamp(v, 0.0, 255.0) + 0.5); };
            for (int c = 0; c < 3; ++c) out[c] = alpha > 1e-4 ? level(sum[c] / sum[3]) : 0;
            out[3] = level(alpha);
        }
    }

    const PixelView& m_source;
    const ResampleTaps& m_columns;
    const ResampleTaps& m_rows;
    int m_width;
    std::vector<const std::uint8_t*> m_pointers;
    std::vector<std::int16_t> m_sums;
    std::vector<int> m_starts;
    std::vector<float> m_premultiplied;
};

// A part of the source as it is.
void CopyPart(const PixelView& source, const ResampleTaps& columns, const ResampleTaps& rows, std::uint8_t* out) {
    const auto begin = [](const ResampleTaps& axis) {
        const auto whole = std::find(axis.weights.begin(), axis.weights.begin() + axis.taps, std::int16_t{16384});
        return axis.starts[0] + static_cast<int>(whole - axis.weights.begin());
    };
    const std::size_t width = columns.starts.size();
    const std::uint8_t* from = source.pixels + begin(rows) * source.stride + std::ptrdiff_t{4} * begin(columns);
    ForEachBand(static_cast<int>(rows.starts.size()), GrainOf(static_cast<int>(width)), [&](int first, int last) {
        for (int y = first; y < last; ++y)
            std::copy_n(from + y * source.stride, 4 * width, out + 4 * width * std::size_t(y));
    });
}

}  // namespace

bool ResampleInto(const PixelView& source, const ResampleTaps& columns, const ResampleTaps& rows, std::uint8_t* out,
                  const ProgressSpan& span) {
    const int width = static_cast<int>(columns.starts.size()), height = static_cast<int>(rows.starts.size());
    if (columns.IsCopy() && rows.IsCopy()) {
        if (!span.CanContinue()) return false;
        CopyPart(source, columns, rows, out);
        span.Report(1, 1);
        return true;
    }
    // A band carries buffers of a row's size, so that a few rows pay for them.
    return RunRows(span, height, std::max(4, GrainOf(width)), [&](int first, int last) {
        RowMaker maker(source, columns, rows);
        for (int y = first; y < last; ++y) maker.Make(y, out + std::ptrdiff_t{4} * width * y);
    });
}
