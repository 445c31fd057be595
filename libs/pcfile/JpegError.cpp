// SPDX-License-Identifier: GPL-3.0-or-later
#include "JpegError.h"

#include <jerror.h>

jpeg_error_mgr* JpegErrorManager::Attach() {
    jpeg_std_error(&base);
    base.error_exit = [](j_common_ptr codec) { longjmp(reinterpret_cast<JpegErrorManager*>(codec->err)->jump, 1); };
    base.output_message = [](j_common_ptr) {};
    base.emit_message = [](j_common_ptr codec, int level) {
        if (level >= 0) return;
        ++codec->err->num_warnings;
        if (codec->err->msg_code == JWRN_HIT_MARKER)
            reinterpret_cast<JpegErrorManager*>(codec->err)->missingData = true;
    };
    return &base;
}
