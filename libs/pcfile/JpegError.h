// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdio>
// The JPEG headers need size_t and FILE before them.
#include <jpeglib.h>
#include <setjmp.h>

// libjpeg's errors as a jump back to the caller, its messages swallowed. The object must outlive the codec object.
struct JpegErrorManager {
    jpeg_error_mgr base = {};  // first, so that libjpeg's pointer is also this object's
    jmp_buf jump = {};
    bool missingData = false;  // a segment ended before its picture did

    // Fills the table; the result goes into the codec's `err` before it is created.
    jpeg_error_mgr* Attach();
};
