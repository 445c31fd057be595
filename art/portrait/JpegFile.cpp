// SPDX-License-Identifier: GPL-3.0-or-later
#include "JpegFile.h"

// jpeglib.h wants these first.
#include <jpeglib.h>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "WholeFile.h"

namespace {

// Compresses into memory; the library's own errors (out of memory) end the process, which a build step may.
std::vector<unsigned char> Compress(const PortraitPixels& picture, int quality) {
    jpeg_compress_struct coder{};
    jpeg_error_mgr errors{};
    coder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&coder);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&coder, &bytes, &size);
    coder.image_width = static_cast<JDIMENSION>(picture.width);
    coder.image_height = static_cast<JDIMENSION>(picture.height);
    coder.input_components = 3;
    coder.in_color_space = JCS_RGB;
    jpeg_set_defaults(&coder);
    jpeg_set_quality(&coder, quality, TRUE);
    coder.comp_info[0].h_samp_factor = 1;
    coder.comp_info[0].v_samp_factor = 1;
    coder.optimize_coding = TRUE;
    coder.dct_method = JDCT_ISLOW;
    coder.density_unit = 1;
    coder.X_density = 300;
    coder.Y_density = 300;
    jpeg_start_compress(&coder, TRUE);
    while (coder.next_scanline < coder.image_height) {
        const std::size_t at = static_cast<std::size_t>(coder.next_scanline) * picture.width * 3;
        JSAMPROW row = const_cast<JSAMPROW>(&picture.rgb[at]);
        jpeg_write_scanlines(&coder, &row, 1);
    }
    jpeg_finish_compress(&coder);
    jpeg_destroy_compress(&coder);
    std::vector<unsigned char> file(bytes, bytes + size);
    std::free(bytes);
    return file;
}

}  // namespace

bool WriteJpeg(const std::filesystem::path& path, const PortraitPixels& picture, int quality) {
    const std::vector<unsigned char> bytes = Compress(picture, quality);
    WholeFile file(path);
    return file.Open() && file.Write(bytes.data(), bytes.size()) && file.Commit();
}
