// SPDX-License-Identifier: GPL-3.0-or-later
// Loading of click counts: any bytes may be the file. What is saved must load as the same counts, unless a code is so
// long that its line is taken in pieces.
#include <algorithm>
#include <cstdlib>

#include "ClickCount.h"

namespace {

constexpr qsizetype SafeLength = 240;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    CClickCount first;
    first.LoadBytes(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    const auto counts = first.Counts();
    CClickCount second;
    second.LoadBytes(first.SaveBytes());
    const bool whole =
        std::all_of(counts.begin(), counts.end(), [](const auto& entry) { return entry.first.size() <= SafeLength; });
    if (whole && second.Counts() != counts) std::abort();
    return 0;
}
