// SPDX-License-Identifier: GPL-3.0-or-later
#include "HuffmanTable.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace {

constexpr int LongestCode = 16;

// An item of package-merge: a weight and the symbols in it.
struct Package {
    std::uint64_t weight;
    std::vector<std::uint16_t> symbols;
};

bool Lighter(const Package& a, const Package& b) {
    return a.weight < b.weight;
}

// Code lengths by package-merge (Larmore and Hirschberg 1990), optimal under the limit.
std::vector<int> CodeLengths(const std::vector<std::uint64_t>& weights) {
    std::vector<Package> leaves(weights.size());
    for (std::size_t i = 0; i < weights.size(); ++i) leaves[i] = {weights[i], {static_cast<std::uint16_t>(i)}};
    std::stable_sort(leaves.begin(), leaves.end(), Lighter);
    std::vector<Package> row = leaves;
    for (int level = 1; level < LongestCode; ++level) {
        std::vector<Package> pairs;
        for (std::size_t i = 0; i + 1 < row.size(); i += 2) {
            Package pair{row[i].weight + row[i + 1].weight, row[i].symbols};
            pair.symbols.insert(pair.symbols.end(), row[i + 1].symbols.begin(), row[i + 1].symbols.end());
            pairs.push_back(std::move(pair));
        }
        row.clear();
        std::merge(leaves.begin(), leaves.end(), pairs.begin(), pairs.end(), std::back_inserter(row), Lighter);
    }
    std::vector<int> lengths(weights.size(), 0);
    for (std::size_t i = 0; i + 2 < 2 * weights.size(); ++i)
        for (const std::uint16_t symbol : row[i].symbols) ++lengths[symbol];
    return lengths;
}

bool IsSymbol(int symbol, HuffmanTable::Kind kind) {
    if (kind == HuffmanTable::Kind::Dc) return symbol <= 11;
    const int run = symbol >> 4, size = symbol & 15;
    return (size >= 1 && size <= 10) || symbol == 0x00 || (run == 15 && size == 0);
}

}  // namespace

HuffmanTable HuffmanTable::WithAllSymbols(Kind kind) const {
    std::array<std::uint64_t, 256> weights = {};
    for (int symbol = 0; symbol < 256; ++symbol)
        if (IsSymbol(symbol, kind)) weights[symbol] = 1;
    int at = 0;
    for (int length = 1; length <= LongestCode; ++length)
        for (int i = 0; i < bits[length]; ++i) weights[values[at++]] = std::uint64_t{1} << (LongestCode + 4 - length);
    return MakeHuffmanTable(weights);
}

HuffmanTable MakeHuffmanTable(const std::array<std::uint64_t, 256>& weights) {
    std::vector<int> symbols;
    // The reserved all-ones code goes to a symbol that does not exist and weighs least of all.
    std::vector<std::uint64_t> present{0};
    for (int symbol = 0; symbol < 256; ++symbol)
        if (weights[symbol] > 0) {
            symbols.push_back(symbol);
            present.push_back(weights[symbol]);
        }
    HuffmanTable table;
    if (symbols.empty()) return table;
    const std::vector<int> lengths = CodeLengths(present);
    std::vector<int> order(symbols.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return lengths[a + 1] < lengths[b + 1]; });
    for (std::size_t i = 0; i < order.size(); ++i) {
        ++table.bits[lengths[order[i] + 1]];
        table.values[i] = static_cast<std::uint8_t>(symbols[order[i]]);
    }
    return table;
}
