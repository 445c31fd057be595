// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

// Where a decoder puts what it finds in a file. Every reader writes through this interface and knows nothing else of
// the library, so that readers of rare formats can live in a module that is loaded on first need: nothing here needs a
// symbol of the host. One target takes one picture and is for one thread.
class PictureTarget {
  public:
    // What the four bytes of a pixel are. Gray: blue, green and red are equal and a profile is a grey one. Cmyk: cyan,
    // magenta, yellow, black as ink (255 full ink) instead of blue, green, red, alpha.
    enum class Model { Rgb, Gray, Cmyk };

    virtual ~PictureTarget() = default;

    // Memory for the whole picture: height rows of 4 × width bytes, blue, green, red, straight alpha, all to be
    // written. Null when the size is not allowed, and then the reader gives up. Sizes come from the file, unchecked.
    virtual std::uint8_t* Begin(std::int64_t width, std::int64_t height) = 0;
    // The same with 16 bits a channel in the machine's order: red, green, blue, straight alpha. Worth its memory only
    // when a profile follows, where 8 bits would band.
    virtual std::uint16_t* BeginDeep(std::int64_t width, std::int64_t height) = 0;

    virtual void SetModel(Model model) = 0;
    // The embedded ICC profile, copied.
    virtual void SetProfile(const void* bytes, std::size_t size) = 0;
    // The colours of a picture that names them without a profile: x and y of white, red, green and blue, and the
    // exponent from stored values to light; 0 means the sRGB curve.
    virtual void SetChromaticities(const double (&xy)[8], double gamma) = 0;
    // Exif orientation, 1 to 8; other values count as 1.
    virtual void SetOrientation(int orientation) = 0;
    // The same from a whole Exif block.
    virtual void SetExif(const std::uint8_t* bytes, std::size_t size) = 0;
    // Reports the part done, 0 to 1; false asks to give up.
    virtual bool Report(double done) = 0;
    // For files that hold a JPEG picture as their only readable one: decodes it into this target.
    virtual bool DecodeEmbeddedJpeg(const std::uint8_t* data, std::size_t size) = 0;
};
