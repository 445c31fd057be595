// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <exiv2/exiv2.hpp>

#include "Writers.h"

// The metadata library writes whole files only. So it writes into a picture of one pixel, and the parts that it put
// there are taken out to stand in the real file: pixels are never copied about, and the real file is written once. A
// kind of metadata that the format cannot take (an XMP packet above 64 KiB in JPEG, for example) is left out.
// Exceptions of the library may pass.
ByteVector CarryInJpeg(const Exiv2::ExifData& exif, const Exiv2::XmpData& xmp, const Exiv2::IptcData& iptc);
ByteVector CarryInPng(const Exiv2::ExifData& exif, const Exiv2::XmpData& xmp, const Exiv2::IptcData& iptc);
