// SPDX-License-Identifier: GPL-3.0-or-later
// Strip frames: any bytes may be one. One that is accepted can be put around a picture.
#include "CStripFrame.h"
#include "FrameFuzz.h"

namespace {

FrameFuzz::Bytes TrueFile() {
    FrameFuzz::Bytes file = FrameFuzz::Header(117, 12, "LUXUS");
    const unsigned numbers[] = {2, 1, 4, 3, 2, 1, 1, 1, 2, 1, 2, 2, 2, 2, 2, 1, 1, 1, 2, 1};
    for (std::size_t i = 0; i < 20; ++i) FrameFuzz::PutInt(file, 37 + 4 * i, numbers[i]);
    file.insert(file.end(), std::begin(FrameFuzz::Png), std::end(FrameFuzz::Png));
    return file;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    FrameFuzz::TrySimple<CStripFrame, FramePlan>(FrameFuzz::FileOf(data, size, TrueFile()));
    return 0;
}
