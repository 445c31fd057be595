// SPDX-License-Identifier: GPL-3.0-or-later
#include "CurvePieces.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <utility>
#include <vector>

namespace {

constexpr int Terms = 4;
constexpr double Near = 0.02;  // levels: nothing better is looked for
constexpr double Good = 0.1;
// How much more than another level the ends count: what is black or white stays so through several curves in a row.
constexpr double WeightOfEnds = 1e4;

struct Sample {
    double level, value;
};

std::vector<Sample> SamplesOf(const PointCurve& curve, CurveReading reading) {
    const int parts = reading == CurveReading::WholeLevels ? 1 : 4;
    std::vector<Sample> samples;
    samples.reserve(255 * parts + 1);
    for (int i = 0; i <= 255 * parts; ++i) {
        const int level = i / parts;
        const double part = double(i % parts) / parts;
        samples.push_back({level + part, (curve.value[level] + part * curve.rise[level]) / 256.0});
    }
    return samples;
}

// A way to divide the levels: 2^fine pieces to each power of 2, over 2^(3 - fine) powers times `reach`.
struct Division {
    int fine;
    double reach;
};
constexpr Division Divisions[] = {{3, 1.0}, {2, 1.0}, {1, 1.0}, {0, 1.0}, {0, 0.9}, {0, 0.6}, {0, 0.8}, {0, 0.7}};

CurvePieces Divided(const Division& division) {
    CurvePieces pieces;
    const int powers = CurvePieces::Count >> division.fine;
    pieces.scale = static_cast<float>((std::ldexp(1.0, powers) - 1.0) / 256.0 * division.reach);
    pieces.shift = 23 - division.fine;
    return pieces;
}

// In the arithmetic of the kernels, so that both name the same piece.
int PieceOf(const CurvePieces& pieces, float level) {
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(std::fma(pieces.scale, level, 1.0f));
    return static_cast<int>(bits >> pieces.shift) % CurvePieces::Count;
}

double ValueAt(const CurvePieces& pieces, float level) {
    const int piece = PieceOf(pieces, level);
    float value = 0.0f;
    for (int power = Terms - 1; power >= 0; --power) value = std::fma(value, level, pieces.terms[power][piece]);
    return value;
}

// The symmetric system of the least squares, by elimination; `terms` numbers are asked for, the rest are 0.
using System = std::array<std::array<double, Terms + 1>, Terms>;
std::array<double, Terms> Solved(System system, int terms) {
    for (int i = 0; i < terms; ++i)
        for (int row = i + 1; row < terms; ++row) {
            const double share = system[row][i] / system[i][i];
            for (int column = i; column < terms; ++column) system[row][column] -= share * system[i][column];
            system[row][Terms] -= share * system[i][Terms];
        }
    std::array<double, Terms> solution{};
    for (int i = terms - 1; i >= 0; --i) {
        double rest = system[i][Terms];
        for (int column = i + 1; column < terms; ++column) rest -= system[i][column] * solution[column];
        solution[i] = rest / system[i][i];
    }
    return solution;
}

// The cubic through `count` samples (of lower degree where they are few), as terms of the level itself.
std::array<double, Terms> Cubic(const Sample* samples, int count) {
    // About the middle and in units of half the length the system is well conditioned.
    const double middle = 0.5 * (samples[0].level + samples[count - 1].level);
    const double half = std::max(0.5, 0.5 * (samples[count - 1].level - samples[0].level));
    System system{};
    for (int i = 0; i < count; ++i) {
        const bool end = samples[i].level == 0.0 || samples[i].level == 255.0;
        std::array<double, Terms> powers = {end ? WeightOfEnds : 1.0};
        const double at = (samples[i].level - middle) / half;
        for (int power = 1; power < Terms; ++power) powers[power] = powers[power - 1] * at;
        for (int row = 0; row < Terms; ++row) {
            for (int column = 0; column < Terms; ++column)
                system[row][column] += powers[row] * powers[column] / powers[0];
            system[row][Terms] += powers[row] * samples[i].value;
        }
    }
    const std::array<double, Terms> local = Solved(system, std::min(count, Terms));
    // local[0] + u (local[1] + u (...)) with u = (level - middle) / half, multiplied out.
    std::array<double, Terms> terms{};
    for (int power = Terms - 1; power >= 0; --power) {
        for (int i = Terms - 1; i > 0; --i) terms[i] = (terms[i - 1] - middle * terms[i]) / half;
        terms[0] = -middle * terms[0] / half + local[power];
    }
    return terms;
}

void Fit(CurvePieces& pieces, const std::vector<Sample>& samples) {
    for (std::size_t first = 0; first < samples.size();) {
        const int piece = PieceOf(pieces, static_cast<float>(samples[first].level));
        std::size_t end = first + 1;
        while (end < samples.size() && PieceOf(pieces, static_cast<float>(samples[end].level)) == piece) ++end;
        const std::array<double, Terms> terms = Cubic(&samples[first], static_cast<int>(end - first));
        for (int power = 0; power < Terms; ++power) pieces.terms[power][piece] = static_cast<float>(terms[power]);
        first = end;
    }
}

double LargestError(const CurvePieces& pieces, const std::vector<Sample>& samples) {
    double largest = 0.0;
    for (const Sample& sample : samples)
        largest = std::max(largest, std::abs(ValueAt(pieces, static_cast<float>(sample.level)) - sample.value));
    return largest;
}

bool NeverFalls(const CurvePieces& pieces) {
    for (int level = 1; level < 256; ++level)
        if (ValueAt(pieces, static_cast<float>(level)) < ValueAt(pieces, static_cast<float>(level - 1))) return false;
    return true;
}

}  // namespace

CurvePieces FitPieces(const PointCurve& curve, CurveReading reading) {
    const std::vector<Sample> samples = SamplesOf(curve, reading);
    CurvePieces best;
    double smallest = 1e9;
    for (const Division& division : Divisions) {
        CurvePieces pieces = Divided(division);
        Fit(pieces, samples);
        const double error = LargestError(pieces, samples);
        if (error < smallest && NeverFalls(pieces)) {
            smallest = error;
            best = pieces;
        }
        if (smallest <= Near) break;
    }
    best.good = smallest <= Good;
    return best;
}
