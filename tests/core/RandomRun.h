// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

// A seeded run of random moves that are played to the real thing and to a naive model. The moves are made beforehand,
// so that a failing run can be played again: it stops at the first move after which the two differ, and prints the seed
// and the moves up to there, the shortest prefix that shows the difference.
namespace RandomRun {

struct Move {
    int kind;
    unsigned argument;
};

// `weights` of the kinds of moves. QUINCE_SEED in the environment replaces `seed`.
inline std::vector<Move> Make(unsigned& seed, int count, const std::vector<double>& weights) {
    if (const char* wanted = std::getenv("QUINCE_SEED"))
        seed = static_cast<unsigned>(std::strtoul(wanted, nullptr, 10));
    std::mt19937 random(seed);
    std::discrete_distribution<int> kind(weights.begin(), weights.end());
    std::vector<Move> moves;
    for (int i = 0; i < count; ++i) moves.push_back({kind(random), static_cast<unsigned>(random())});
    return moves;
}

// Plays until `play` says what differs (an empty text when nothing does).
inline void Play(unsigned seed, const std::vector<Move>& moves, const std::vector<std::string>& names,
                 const std::function<std::string(const Move&)>& play) {
    for (std::size_t i = 0; i < moves.size(); ++i) {
        const std::string difference = play(moves[i]);
        if (difference.empty()) continue;
        std::ostringstream prefix;
        for (std::size_t k = 0; k <= i; ++k) prefix << names[moves[k].kind] << '(' << moves[k].argument % 1000 << ") ";
        FAIL() << "seed " << seed << ", after " << i + 1 << " moves: " << difference << "\n" << prefix.str();
    }
}

}  // namespace RandomRun
