// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "Bitmap.h"
#include "CObjProgress.h"
#include "ImageInfo.h"

// Format values of loading hints and of saving.
enum VN_IMAGE_FORMAT { VN_IMAGE_FORMAT_JPEG = 1, VN_IMAGE_FORMAT_PNG = 2, VN_IMAGE_FORMAT_BMP = 3 };

// Picture files: reading, writing, snapshots, and what is known about a picture. docs/formats.md lists the formats.
//
// An object remembers its last successful load: the information record and the metadata that its saves carry on. There
// is no other state, so objects are independent; one object is for one thread at a time. Nothing is thrown but
// std::bad_alloc; failures are the null bitmap, 0 or false.
//
// Loading decides by content, never by the file's name. The result is upright (orientation applied), in sRGB (embedded
// profile converted), 8 bits a channel with straight alpha; of an animation the first frame. Files that are damaged,
// cut in their pixel data, larger than Bitmap::Allowed, or whose stated size their bytes cannot hold are refused before
// their memory is taken. The progress sink may be null; when it asks to stop, the result is null.
class PC_File {
  public:
    PC_File();
    ~PC_File();
    PC_File(PC_File&&) noexcept;
    PC_File& operator=(PC_File&&) noexcept;

    // The picture in a file. `extra` is kept for callers and not used.
    Bitmap OnLoadImage(const wchar_t* path, CObjProgress* progress, int start, int end, const wchar_t* extra);
    // The picture that begins at byte `offset` inside a file and takes `length` bytes; length 0: to the end of the
    // file.
    Bitmap OnLoadImage(const wchar_t* path, long offset, int length, CObjProgress* progress, int start, int end);
    // The picture in memory. `formatHint` is a VN_IMAGE_FORMAT or 0; it is a hint only: content wins.
    Bitmap OnLoadImage(const unsigned char* data, int size, int formatHint, CObjProgress* progress, int start, int end);

    // What the last successful load of this object found; null before. Valid until the next load.
    const tag_ImageInfo* GetImageInfo() const;
    // The dictionary of the words for flash, metering and programme: an INI file in UTF-8. It is read here; a missing
    // file or word leaves the numbers of the file in the record. Records made before do not change.
    void SetExifXml(const std::wstring& iniFile);

    // Writes the picture whole or not at all. format: VN_IMAGE_FORMAT; quality 1 to 100 for JPEG, not used otherwise.
    // JPEG: chroma in full from quality 90 on, halved both ways below; translucent pictures are laid on white.
    // PNG: with alpha when the picture has any. BMP: 24 bits, or 32 with alpha when the picture has any.
    // JPEG and PNG carry on the Exif, XMP and IPTC of the last load with orientation reset, sizes, thumbnail and
    // software (this program) made true; all three say that they are sRGB. Non-zero is success.
    int OnSaveQuick(const wchar_t* path, const Bitmap& bitmap, int format, int quality);
    // The same, scaled to width × height first (sides below 1: as the picture is).
    int OnSaveQuick(const wchar_t* path, const Bitmap& bitmap, int width, int height, int format, int quality);
    // A JPEG with full chroma and no metadata. `reserved` is not used. Non-zero is success.
    int OnSaveHDJpeg(const wchar_t* path, const Bitmap& bitmap, int quality, int reserved, CObjProgress* progress,
                     int start, int end);

    // Snapshots: the bitmap's bytes behind a header with a checksum. They are working files, overwritten in place and
    // not flushed to the disk; a file that is damaged or half written is refused when read. Writes `bitmap` to a file
    // that ImageReadFrombinary gives back byte for byte. True on success; null bitmaps fail.
    static bool ImageSaveTobinary(const Bitmap& bitmap, const std::wstring& path);
    // The bitmap of a snapshot file; null when it is missing or damaged.
    static Bitmap ImageReadFrombinary(const std::wstring& path);

  private:
    struct State;
    std::unique_ptr<State> m_state;
};
