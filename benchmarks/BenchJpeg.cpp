// SPDX-License-Identifier: GPL-3.0-or-later
#include "BenchJpeg.h"

#include <cstdio>
// The JPEG header needs size_t and FILE before it.
#include <jpeglib.h>

void DecodeByLibrary(const std::vector<unsigned char>& bytes, Bitmap& into) {
    jpeg_decompress_struct state = {};
    jpeg_error_mgr errors = {};
    state.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&state);
    jpeg_mem_src(&state, bytes.data(), bytes.size());
    jpeg_read_header(&state, TRUE);
    state.out_color_space = JCS_EXT_BGRA;
    jpeg_start_decompress(&state);
    std::uint8_t* pixels = into.MutablePixels();
    while (state.output_scanline < state.output_height) {
        JSAMPROW row = pixels + state.output_scanline * into.Stride();
        jpeg_read_scanlines(&state, &row, 1);
    }
    jpeg_finish_decompress(&state);
    jpeg_destroy_decompress(&state);
}
