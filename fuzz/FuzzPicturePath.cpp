// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureFuzz.h"

// Any bytes as a picture file that is opened by its path, from the start and at an offset.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    PictureFuzz::FromPath(data, size);
    return 0;
}
