// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>

// What of a file is left when the process that writes it is killed at any moment.
namespace KillLoop {

struct Plan {
    int kills = 0;
    std::uint32_t seed = 1;
};

// For each kill: calls `write` with 0, 1, 2, ... in a process of its own until it is killed, and then `judge` with the
// number of the kill in this one. Two writes are always whole; the kill comes at a moment that the seed chooses within
// the time of the two that follow, as long as they take on this machine. `write` gives false when it could not write;
// that and a process that can't be started fail the test. Work in the writing process runs on one thread. Ends early
// once the test has failed fatally.
void Run(const Plan& plan, const std::function<bool(int round)>& write, const std::function<void(int kill)>& judge);

}  // namespace KillLoop
