// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

// The kinds of picture file that are told apart by their first bytes.
enum class PictureFormat {
    Unknown,
    Jpeg,
    Png,
    Bmp,
    Gif,
    Ico,
    Wbmp,
    Tiff,
    Webp,
    Heif,  // HEIC, HEIF and AVIF
    Jxl,
    Raw,  // camera raw that is told by its own magic; raw files in TIFF form are found while reading TIFF
    Mng,
    Jng,
    Jp2,
    J2k,  // JPEG 2000 code stream
    Pgx,
    Pcx,
    Ras,
    Pnm,
    Jbig,
    Tga,
    Psd,
    Wmf,
};

// The format of a file by content alone. `head` is the start of the file, `headSize` its length (64 KiB are enough for
// every format), `fileSize` that of the whole file: WBMP, TGA and JBIG have no magic and are known by headers that make
// sense for a file of this size. Raw files that are TIFF inside are given as Tiff.
PictureFormat SniffPicture(const std::uint8_t* head, std::size_t headSize, std::uint64_t fileSize);

// Short English name, such as "JPEG"; empty for Unknown.
const wchar_t* FormatName(PictureFormat format);
