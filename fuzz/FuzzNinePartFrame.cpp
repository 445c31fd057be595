// SPDX-License-Identifier: GPL-3.0-or-later
// Nine-part frames: any bytes may be one. One that is accepted can be put around a picture.
#include "CNinePartFrame.h"
#include "FrameFuzz.h"

namespace {

FrameFuzz::Bytes TrueFile() {
    FrameFuzz::Bytes file = FrameFuzz::Header(96, 0, "VNBK");
    const unsigned numbers[] = {5, 4, 11, 9};
    for (std::size_t i = 0; i < 4; ++i) FrameFuzz::PutInt(file, 40 + 4 * i, numbers[i]);
    file[64] = 2;  // names of one and of no letter
    file[65] = 1;
    file.resize(file.size() + 2, 'x');
    for (int part = 0; part < 9; ++part) {
        const bool empty = part == 4 || part == 7;
        file.resize(file.size() + 4);
        FrameFuzz::PutInt(file, file.size() - 4, empty ? 0 : sizeof FrameFuzz::Png);
        if (!empty) file.insert(file.end(), std::begin(FrameFuzz::Png), std::end(FrameFuzz::Png));
    }
    return file;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    FrameFuzz::TrySimple<CNinePartFrame, FramePlan>(FrameFuzz::FileOf(data, size, TrueFile()));
    return 0;
}
