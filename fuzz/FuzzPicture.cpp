// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureFuzz.h"

// Any bytes as a picture in memory.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    PictureFuzz::FromMemory(data, size);
    return 0;
}
