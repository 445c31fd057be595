// SPDX-License-Identifier: GPL-3.0-or-later
#include "Resampler.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "Kernels.h"
#include "Rows.h"

namespace {

// `count` is above 0. A comparison with the neighbour, since that of memory is quicker than a loop.
bool AreZero(const std::int16_t* numbers, int count) {
    return numbers[0] == 0 && std::memcmp(numbers, numbers + 1, static_cast<std::size_t>(count - 1) * 2) == 0;
}

// One result row: first down the columns of the source, then across. Parts with translucent pixels take the slower way
// with colours times alpha; whether a part does depends on the source pixels it reads alone.
class RowMaker {
  public:
    RowMaker(const PixelView& source, const ResampleTaps& columns, const ResampleTaps& rows, FourthByte fourth)
        : m_source(source),
          m_fourth(fourth),
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
        const int count = static_cast<int>(m_starts.size());
        if (m_fourth == FourthByte::Channel) return MakeChannels(weights, count, out);
        if (MakeOpaque(weights, 0, count, out)) return;
        // Most of a row with translucent pixels may still be opaque.
        for (int n = 0; n < count; n += Block) {
            const int last = std::min(n + Block, count);
            std::uint8_t* part = out + std::ptrdiff_t{4} * n;
            if (!MakeOpaque(weights, n, last, part)) MakeTranslucent(weights, n, last, part);
        }
    }

  private:
    // Result pixels of a row that are made the same way.
    static constexpr int Block = 32;

    // The rows' pixels that the result pixels first to last - 1 read; from `begin` on.
    std::vector<const std::uint8_t*>& PointersFrom(int begin) {
        m_shifted.resize(m_pointers.size());
        for (std::size_t t = 0; t < m_pointers.size(); ++t) m_shifted[t] = m_pointers[t] + std::ptrdiff_t{4} * begin;
        return m_shifted;
    }
    int EndOf(int last) const { return std::min(m_starts[last - 1] + m_columns.taps, m_width); }

    // Most of an overlay is clear; what is 0 in all that is read needs no sum.
    void MakeChannels(const std::int16_t* weights, int count, std::uint8_t* out) {
        Kernels().sumRows(m_pointers.data(), weights, m_rows.taps, 4 * m_width, m_sums.data());
        for (int n = 0; n < count; n += Block) {
            const int last = std::min(n + Block, count);
            std::uint8_t* part = out + std::ptrdiff_t{4} * n;
            if (AreZero(m_sums.data() + std::ptrdiff_t{4} * m_starts[n], 4 * (EndOf(last) - m_starts[n])))
                std::memset(part, 0, 4 * static_cast<std::size_t>(last - n));
            else
                Kernels().sumColumns(m_sums.data(), &m_starts[n], &m_columns.weights[std::size_t(n) * m_columns.taps],
                                     m_columns.taps, last - n, part);
        }
    }

    // False when a pixel that is read is translucent; `out` is then not written.
    bool MakeOpaque(const std::int16_t* weights, int first, int last, std::uint8_t* out) {
        const int begin = m_starts[first], end = EndOf(last);
        const std::uint32_t all = Kernels().sumRows(PointersFrom(begin).data(), weights, m_rows.taps, 4 * (end - begin),
                                                    m_sums.data() + std::ptrdiff_t{4} * begin);
        if (all >> 24 != 255) return false;
        Kernels().sumColumns(m_sums.data(), &m_starts[first], &m_columns.weights[std::size_t(first) * m_columns.taps],
                             m_columns.taps, last - first, out);
        return true;
    }

    void MakeTranslucent(const std::int16_t* weights, int first, int last, std::uint8_t* out) {
        const int begin = m_starts[first], end = EndOf(last);
        m_premultiplied.resize(4 * (std::size_t(m_width) + m_columns.taps + 4));
        Kernels().sumRowsByAlpha(PointersFrom(begin).data(), weights, m_rows.taps, end - begin,
                                 m_premultiplied.data() + std::ptrdiff_t{4} * begin);
        Kernels().sumColumnsByAlpha(m_premultiplied.data(), &m_starts[first],
                                    &m_columns.weights[std::size_t(first) * m_columns.taps], m_columns.taps,
                                    last - first, out);
    }

    const PixelView& m_source;
    const FourthByte m_fourth;
    const ResampleTaps& m_columns;
    const ResampleTaps& m_rows;
    int m_width;
    std::vector<const std::uint8_t*> m_pointers;
    std::vector<const std::uint8_t*> m_shifted;
    std::vector<std::int16_t> m_sums;
    std::vector<int> m_starts;
    std::vector<int> m_premultiplied;
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
        RowMaker maker(source, columns, rows, FourthByte::Alpha);
        for (int y = first; y < last; ++y) maker.Make(y, out + std::ptrdiff_t{4} * width * y);
    });
}

void ResampleRows(const PixelView& source, const ResampleTaps& columns, const ResampleTaps& rows, int first, int last,
                  FourthByte fourth, const std::function<void(int y, std::uint8_t* row)>& use) {
    RowMaker maker(source, columns, rows, fourth);
    std::vector<std::uint8_t> row(4 * columns.starts.size());
    for (int y = first; y < last; ++y) {
        maker.Make(y, row.data());
        use(y, row.data());
    }
}
