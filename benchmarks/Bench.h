// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "Bitmap.h"

// Benchmarks: what an operation costs as a ratio to a reference measured in the same run, so that numbers compare
// across machines.

struct BenchSize {
    int width, height;
    double Megapixels() const { return width * double(height) / 1e6; }
};
constexpr BenchSize Size24{6000, 4000};
constexpr BenchSize BenchSizes[] = {{1200, 800}, {3000, 2000}, Size24};

// Milliseconds that `body` takes: the median of `runs` after one unmeasured run. `before` runs unmeasured each time.
double MedianMs(int runs, const std::function<void()>& body, const std::function<void()>& before = {});

// One copy of a bitmap of this size between two mapped buffers that no cache holds, on one thread; measured once a run
// and size.
double CopyMs(const BenchSize& size);

// write() of the bytes of a bitmap of this size into a file that is not there yet.
double NewFileMs(const BenchSize& size);

class BenchReport {
  public:
    // A row whose ratio is median / referenceMs; `reference` names what that is, for example "copy".
    void Add(const std::string& name, double megapixels, double medianMs, const std::string& reference,
             double referenceMs);

    struct Row {
        std::string name;
        double megapixels;
        double medianMs;
        std::string reference;
        double ratio;
    };
    const std::vector<Row>& Rows() const { return m_rows; }

  private:
    std::vector<Row> m_rows;
};

// Registers a benchmark under its row name (or the common start of its rows' names, which a filter is compared with):
//     static const BenchCase usm("adjust.usm", [](BenchReport& report) { ... });
struct BenchCase {
    BenchCase(const char* name, std::function<void(BenchReport&)> body);
};

// A photograph-like opaque picture of this size, the same for every run.
const Bitmap& BenchPicture(const BenchSize& size);
