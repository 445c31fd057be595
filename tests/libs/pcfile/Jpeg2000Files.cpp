// SPDX-License-Identifier: GPL-3.0-or-later
#include "CodecFiles.h"

#ifdef QUINCE_HAVE_OPENJPEG

#include <openjpeg.h>

#include <cstring>

namespace {

struct Sink {
    Bytes bytes;
    std::size_t at = 0;
};

OPJ_SIZE_T WriteSink(void* in, OPJ_SIZE_T count, void* handle) {
    Sink& sink = *static_cast<Sink*>(handle);
    if (sink.bytes.size() < sink.at + count) sink.bytes.resize(sink.at + count);
    std::memcpy(sink.bytes.data() + sink.at, in, count);
    sink.at += count;
    return count;
}

}  // namespace

Bytes MakeJpeg2000(const Bitmap& bitmap, bool stream) {
    opj_image_cmptparm_t parts[3] = {};
    for (opj_image_cmptparm_t& part : parts) {
        part.dx = part.dy = 1;
        part.w = static_cast<OPJ_UINT32>(bitmap.Width());
        part.h = static_cast<OPJ_UINT32>(bitmap.Height());
        part.prec = 8;
    }
    opj_image_t* image = opj_image_create(3, parts, OPJ_CLRSPC_SRGB);
    image->x1 = static_cast<OPJ_UINT32>(bitmap.Width());
    image->y1 = static_cast<OPJ_UINT32>(bitmap.Height());
    for (int c = 0; c < 3; ++c)
        for (std::size_t i = 0; i < bitmap.ByteCount() / 4; ++i)
            image->comps[c].data[i] = bitmap.Pixels()[4 * i + static_cast<std::size_t>(2 - c)];
    opj_cparameters_t parameters;
    opj_set_default_encoder_parameters(&parameters);
    parameters.tcp_numlayers = 1;
    parameters.cp_disto_alloc = 1;
    opj_codec_t* codec = opj_create_compress(stream ? OPJ_CODEC_J2K : OPJ_CODEC_JP2);
    opj_setup_encoder(codec, &parameters, image);
    Sink sink;
    opj_stream_t* out = opj_stream_create(1 << 16, OPJ_FALSE);
    opj_stream_set_user_data(out, &sink, nullptr);
    opj_stream_set_write_function(out, WriteSink);
    opj_stream_set_skip_function(out, [](OPJ_OFF_T count, void* handle) {
        static_cast<Sink*>(handle)->at += static_cast<std::size_t>(count);
        return count;
    });
    opj_stream_set_seek_function(out, [](OPJ_OFF_T place, void* handle) -> OPJ_BOOL {
        static_cast<Sink*>(handle)->at = static_cast<std::size_t>(place);
        return OPJ_TRUE;
    });
    opj_start_compress(codec, image, out);
    opj_encode(codec, out);
    opj_end_compress(codec, out);
    opj_stream_destroy(out);
    opj_destroy_codec(codec);
    opj_image_destroy(image);
    return sink.bytes;
}

#else

Bytes MakeJpeg2000(const Bitmap&, bool) {
    return {};
}

#endif
