// SPDX-License-Identifier: GPL-3.0-or-later
#include "MarkGroups.h"

#include <numeric>

namespace {

int RootOf(std::vector<int>& parents, int i) {
    while (parents[i] != i) i = parents[i] = parents[parents[i]];
    return i;
}

// Joins each run with those of the row above that it touches; the first run of a group becomes its root.
std::vector<int> JoinedRuns(const std::vector<MarkRun>& runs) {
    std::vector<int> parents(runs.size());
    std::iota(parents.begin(), parents.end(), 0);
    std::size_t above = 0;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const MarkRun& run = runs[i];
        while (above < i && (runs[above].y < run.y - 1 || (runs[above].y == run.y - 1 && runs[above].right < run.left)))
            ++above;
        for (std::size_t k = above; k < i && runs[k].y == run.y - 1 && runs[k].left <= run.right; ++k) {
            const int a = RootOf(parents, static_cast<int>(i)), b = RootOf(parents, static_cast<int>(k));
            parents[std::max(a, b)] = std::min(a, b);
        }
    }
    return parents;
}

}  // namespace

std::vector<MarkGroup> GroupsOf(const std::vector<MarkRun>& runs) {
    std::vector<int> parents = JoinedRuns(runs);
    std::vector<MarkGroup> groups;
    std::vector<int> indexOf(runs.size());
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const int root = RootOf(parents, static_cast<int>(i));
        const MarkRun& run = runs[i];
        if (root == static_cast<int>(i)) {
            indexOf[i] = static_cast<int>(groups.size());
            groups.push_back({{run.left, run.y, run.right, run.y + 1}, {}});
        }
        MarkGroup& group = groups[indexOf[root]];
        group.box.left = std::min(group.box.left, run.left);
        group.box.right = std::max(group.box.right, run.right);
        group.box.bottom = run.y + 1;
        group.runs.push_back(run);
    }
    return groups;
}
