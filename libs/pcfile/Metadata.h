// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "Bitmap.h"
#include "ExifWords.h"
#include "ImageInfo.h"
#include "Writers.h"

// Exif, XMP and IPTC of a picture, through Exiv2. Nothing here fails a load or a save: what cannot be read or carried
// on is left out.
class Metadata {
  public:
    Metadata();
    ~Metadata();

    // What the file holds; empty when it holds none or is damaged.
    static std::unique_ptr<Metadata> Read(const std::uint8_t* data, std::size_t size);

    // Fills the camera fields of the record.
    void FillInfo(const ExifWords& words, tag_ImageInfo& info) const;

    // The application segments (JPEG) or chunks (PNG) that carry this metadata with a saved `bitmap`: orientation
    // upright, sizes and colour space those of the bitmap, thumbnail made from it, `software` as the writer. Empty
    // without metadata.
    ByteVector JpegSegments(const Bitmap& bitmap, const std::string& software) const;
    ByteVector PngChunks(const Bitmap& bitmap, const std::string& software) const;

  private:
    struct Data;
    std::unique_ptr<Data> m_data;
};
