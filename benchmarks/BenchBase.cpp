// SPDX-License-Identifier: GPL-3.0-or-later
#include "Bench.h"

static const BenchCase bitmapClone("bitmap.clone", [](BenchReport& report) {
    for (const BenchSize& size : BenchSizes) {
        const Bitmap source = BenchPicture(size);
        const double ms = MedianMs(15, [&] {
            Bitmap copy = source.Clone();
            copy.MutablePixels()[0] ^= 1;
        });
        report.Add("bitmap.clone", size.Megapixels(), ms, "copy", CopyMs(size));
    }
});
