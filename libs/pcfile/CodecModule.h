// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "PictureFormat.h"
#include "PictureTarget.h"

// The readers of the less common formats live in a module of their own, quince_codecs: the libraries beneath them cost
// as much time to load as the rest of the program together, and most runs need none of them. The module is loaded when
// the first such file is opened, and stays.

// Each reads a whole file in memory into the target; false when it is damaged, cut or not of this kind.
bool ReadHeif(const std::uint8_t* data, std::size_t size, PictureTarget& target);
bool ReadJxl(const std::uint8_t* data, std::size_t size, PictureTarget& target);
bool ReadWebp(const std::uint8_t* data, std::size_t size, PictureTarget& target);
bool ReadTiff(const std::uint8_t* data, std::size_t size, PictureTarget& target);
bool ReadRaw(const std::uint8_t* data, std::size_t size, PictureTarget& target);
bool ReadJpeg2000(PictureFormat format, const std::uint8_t* data, std::size_t size, PictureTarget& target);
bool ReadJbig(const std::uint8_t* data, std::size_t size, PictureTarget& target);
bool ReadPgx(const std::uint8_t* data, std::size_t size, PictureTarget& target);
bool ReadTga(const std::uint8_t* data, std::size_t size, PictureTarget& target);
// The merged picture behind the layers.
bool ReadPsd(const std::uint8_t* data, std::size_t size, PictureTarget& target);
// PCX, Sun raster, PNM, JNG, MNG and WMF through GraphicsMagick.
bool ReadByMagick(PictureFormat format, const std::uint8_t* data, std::size_t size, PictureTarget& target);

// The module's one entry, found by name.
extern "C" {
using QuinceReadPictureFunction = bool (*)(PictureFormat format, const std::uint8_t* data, std::size_t size,
                                           PictureTarget* target);
}
constexpr const char* CodecEntryName = "QuinceReadPicture";

// In the library: reads by the module, loading it first when needed; false also when it cannot be loaded. Any thread.
bool ReadByModule(PictureFormat format, const std::uint8_t* data, std::size_t size, PictureTarget& target);
