// SPDX-License-Identifier: GPL-3.0-or-later
#include "Bench.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <random>
#include <string_view>

#include "BenchWindows.h"
#include "InstructionSets.h"

namespace {

struct Case {
    std::string name;
    std::function<void(BenchReport&)> body;
};

std::vector<Case>& Cases() {
    static std::vector<Case> cases;
    return cases;
}

struct CopyPair {
    explicit CopyPair(const Bitmap& picture) : from(picture.Clone()), to(picture.Clone()) {
        from.MutablePixels();  // of its own, and mapped
        to.MutablePixels();
    }
    Bitmap from;
    Bitmap to;
};

// So many pairs that none is in a cache when its turn comes again.
std::size_t PairsBeyondCaches(const BenchSize& size) {
    constexpr double LargestCaches = 256e6;
    return static_cast<std::size_t>(LargestCaches / (2 * size.Megapixels() * 4e6)) + 1;
}

void WriteJson(const BenchReport& report, const char* path) {
    std::ofstream out(path);
    out << "[\n";
    const char* separator = "";
    for (const BenchReport::Row& row : report.Rows()) {
        char line[512];
        std::snprintf(line, sizeof line,
                      "%s  {\"name\": \"%s\", \"set\": \"%s\", \"megapixels\": %.3f, \"median_ms\": %.3f, "
                      "\"reference\": \"%s\", \"ratio\": %.3f}",
                      separator, row.name.c_str(), KernelSetName(SelectedKernelSet()).data(), row.megapixels,
                      row.medianMs, row.reference.c_str(), row.ratio);
        out << line;
        separator = ",\n";
    }
    out << "\n]\n";
}

// Grain as a sensor leaves it: nearly normal, partly shared by the channels of a pixel, and a little by neighbours.
// Grain of a few even levels, the same in the three channels, would repeat itself, which no photograph does and which
// would tell nothing about the time and size of compression.
class Grain {
  public:
    // The grain of the next pixel's channels, about 4 levels in the mean square.
    std::array<double, 3> Next() {
        const double shared = 0.6 * Normal();
        for (double& channel : m_last) channel = 0.3 * channel + 3.8 * (shared + 0.8 * Normal());
        return m_last;
    }

  private:
    // The sum of a word's bytes, of mean 0 and variance 1: quicker than std::normal_distribution and near enough.
    double Normal() {
        const std::uint_fast32_t word = m_random();
        const auto sum = int((word & 255) + (word >> 8 & 255) + (word >> 16 & 255) + (word >> 24 & 255));
        return (sum - 510) / 147.8;
    }
    std::mt19937 m_random{7};
    std::array<double, 3> m_last = {};
};

}  // namespace

BenchCase::BenchCase(const char* name, std::function<void(BenchReport&)> body) {
    Cases().push_back({name, std::move(body)});
}

void BenchReport::Add(const std::string& name, double megapixels, double medianMs, const std::string& reference,
                      double referenceMs) {
    m_rows.push_back({name, megapixels, medianMs, reference, medianMs / referenceMs});
    std::printf("%-28s %8.2f MP %11.3f  %8.2f x %s\n", name.c_str(), megapixels, medianMs, medianMs / referenceMs,
                reference.c_str());
    std::fflush(stdout);
}

double MedianMs(int runs, const std::function<void()>& body, const std::function<void()>& before) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> times;
    for (int i = 0; i <= runs; ++i) {
        if (before) before();
        const auto start = Clock::now();
        body();
        const std::chrono::duration<double, std::milli> took = Clock::now() - start;
        if (i > 0) times.push_back(took.count());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

double CopyMs(const BenchSize& size) {
    static std::map<std::pair<int, int>, double> known;
    double& ms = known[{size.width, size.height}];
    if (ms == 0) {
        const std::size_t count = PairsBeyondCaches(size);
        std::vector<CopyPair> pairs;
        while (pairs.size() < count) pairs.emplace_back(BenchPicture(size));
        std::size_t next = 0;
        ms = MedianMs(15, [&] {
            CopyPair& pair = pairs[next++ % pairs.size()];
            std::memcpy(pair.to.MutablePixels(), pair.from.Pixels(), pair.from.ByteCount());
        });
    }
    return ms;
}

const Bitmap& BenchPicture(const BenchSize& size) {
    static std::map<std::pair<int, int>, Bitmap> pictures;
    Bitmap& picture = pictures[{size.width, size.height}];
    if (!picture) {
        picture = Bitmap::Uninitialised(size.width, size.height);
        Grain grain;
        std::uint8_t* out = picture.MutablePixels();
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x) {
                const double u = double(x) / size.width, v = double(y) / size.height;
                const double light = 0.5 + 0.35 * std::sin(9 * u + 4 * v) * std::cos(7 * v - 3 * u);
                const std::array<double, 3> added = grain.Next();
                const double channels[3] = {150 * light + 40, 190 * light + 20, 235 * light + 10};
                for (int i = 0; i < 3; ++i)
                    *out++ = static_cast<std::uint8_t>(std::clamp(channels[i] + added[i], 0.0, 255.0));
                *out++ = 255;
            }
    }
    return picture;
}

namespace {

// What the command line asks for.
struct Wish {
    std::string filter;
    std::string set;  // empty: the widest that the machine runs
    bool understood = true;

    Wish(int argc, char** argv) {
        bool filtered = false;
        for (int i = 1; i < argc; ++i) {
            const std::string_view word = argv[i];
            if (word == "--set" && i + 1 < argc) {
                set = argv[++i];
            } else if (!filtered && !word.starts_with("-")) {
                filter = word;
                filtered = true;
            } else {
                understood = false;
            }
        }
    }
};

// Makes the pixel libraries run with a set; false, said on standard error, when that is not possible here.
bool UseSet(const std::string& name) {
    const int set = KernelSetByName(name);
    if (set < 0) {
        std::fprintf(stderr, "bench: there is no instruction set \"%s\"; it is one of", name.c_str());
        for (int i = 0; !KernelSetName(i).empty(); ++i) std::fprintf(stderr, " %s", KernelSetName(i).data());
        std::fputs("\n", stderr);
        return false;
    }
    if (set >= KernelSetCount()) {
        std::fprintf(stderr, "bench: this machine cannot run %s; the widest that it runs is %s\n", name.c_str(),
                     KernelSetName(KernelSetCount() - 1).data());
        return false;
    }
    SelectKernelSet(set);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    const Wish wish(argc, argv);
    if (!wish.understood) {
        std::fputs("usage: bench [--set baseline|avx2|avx512] [name-filter]\n", stderr);
        return 2;
    }
    if (!wish.set.empty() && !UseSet(wish.set)) return 2;
    BenchReport report;
    std::printf("instruction set: %s\n", KernelSetName(SelectedKernelSet()).data());
    std::printf("%-28s %11s %11s  %8s\n", "row", "size", "median ms", "ratio");
    for (const Case& entry : Cases())
        if (entry.name.find(wish.filter) != std::string::npos) entry.body(report);
    EndWindows();
    WriteJson(report, "bench.json");
    return 0;
}
