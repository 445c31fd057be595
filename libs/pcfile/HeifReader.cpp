// SPDX-License-Identifier: GPL-3.0-or-later
#include <libheif/heif.h>

#include <memory>
#include <vector>

#include "CodecModule.h"
#include "PixelRows.h"

namespace {

template <auto release>
struct Release {
    template <class T>
    void operator()(T* object) const {
        release(object);
    }
};
using Context = std::unique_ptr<heif_context, Release<heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, Release<heif_image_handle_release>>;
using Image = std::unique_ptr<heif_image, Release<heif_image_release>>;
using Options = std::unique_ptr<heif_decoding_options, Release<heif_decoding_options_free>>;
using Nclx = std::unique_ptr<heif_color_profile_nclx, Release<heif_nclx_color_profile_free>>;

bool Good(const heif_error& error) {
    return error.code == heif_error_Ok;
}

// The exponent of a transfer function; 0 for those that are, or are shown as, the sRGB curve.
double Gamma(heif_transfer_characteristics transfer) {
    switch (transfer) {
        case heif_transfer_characteristic_ITU_R_BT_470_6_System_M:
            return 2.2;
        case heif_transfer_characteristic_ITU_R_BT_470_6_System_B_G:
            return 2.8;
        case heif_transfer_characteristic_linear:
            return 1.0;
        default:
            return 0;
    }
}

// An ICC profile counts before the numbers of an nclx box.
void ReadColours(const heif_image_handle* handle, PictureTarget& target) {
    const std::size_t size = heif_image_handle_get_raw_color_profile_size(handle);
    if (size > 0 && size < (1u << 28)) {
        std::vector<std::uint8_t> profile(size);
        if (Good(heif_image_handle_get_raw_color_profile(handle, profile.data())))
            target.SetProfile(profile.data(), size);
        return;
    }
    heif_color_profile_nclx* found = nullptr;
    if (!Good(heif_image_handle_get_nclx_color_profile(handle, &found)) || !found) return;
    const Nclx nclx(found);
    const bool known = nclx->color_primaries != heif_color_primaries_unspecified;
    const double gamma = Gamma(nclx->transfer_characteristics);
    if (!known || (nclx->color_primaries == heif_color_primaries_ITU_R_BT_709_5 && gamma == 0)) return;
    const double xy[8] = {nclx->color_primary_white_x, nclx->color_primary_white_y, nclx->color_primary_red_x,
                          nclx->color_primary_red_y,   nclx->color_primary_green_x, nclx->color_primary_green_y,
                          nclx->color_primary_blue_x,  nclx->color_primary_blue_y};
    target.SetChromaticities(xy, gamma);
}

}  // namespace

bool ReadHeif(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    const Context context(heif_context_alloc());
    if (!context || !Good(heif_context_read_from_memory_without_copy(context.get(), data, size, nullptr))) return false;
    heif_image_handle* primary = nullptr;
    if (!Good(heif_context_get_primary_image_handle(context.get(), &primary))) return false;
    const Handle handle(primary);
    // Orientation boxes are applied by the library, and these are the sizes after that.
    const int width = heif_image_handle_get_width(primary), height = heif_image_handle_get_height(primary);
    std::uint8_t* out = target.Begin(width, height);
    if (!out) return false;
    const Options options(heif_decoding_options_alloc());
    options->convert_hdr_to_8bit = 1;
    heif_image* decoded = nullptr;
    if (!Good(heif_decode_image(primary, &decoded, heif_colorspace_RGB, heif_chroma_interleaved_RGBA, options.get())))
        return false;
    const Image image(decoded);
    int stride = 0;
    const std::uint8_t* plane = heif_image_get_plane_readonly(decoded, heif_channel_interleaved, &stride);
    if (!plane || heif_image_get_width(decoded, heif_channel_interleaved) != width ||
        heif_image_get_height(decoded, heif_channel_interleaved) != height)
        return false;
    const bool premultiplied = heif_image_handle_is_premultiplied_alpha(primary) != 0;
    for (int y = 0; y < height; ++y) {
        std::uint8_t* row = out + std::size_t{4} * width * y;
        RgbaToBgra(plane + std::ptrdiff_t{stride} * y, width, row);
        if (premultiplied) Unpremultiply(row, width);
    }
    ReadColours(primary, target);
    return target.Report(1);
}
