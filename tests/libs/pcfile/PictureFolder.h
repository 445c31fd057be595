// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "PC_File.h"

using Bytes = std::vector<std::uint8_t>;

// A fresh folder for each test, and the few moves that all picture tests make.
class PictureFolder : public testing::Test {
  protected:
    void SetUp() override;

    // Where a file of this name would stand.
    std::filesystem::path At(const std::string& name) const { return folder / name; }
    std::wstring Wide(const std::string& name) const;

    void Put(const std::string& name, const Bytes& bytes) const;
    Bytes Get(const std::string& name) const;

    // Writes the bytes under a name that tells nothing and opens it.
    Bitmap Open(const Bytes& bytes);
    Bitmap OpenPath(const std::string& name);
    Bitmap OpenMemory(const Bytes& bytes, int hint = 0);

    PC_File files;
    std::filesystem::path folder;
};

// The largest difference of a colour channel or alpha of two bitmaps of one size, and the mean one; 256 when sizes
// differ.
int Largest(const Bitmap& a, const Bitmap& b);
double Mean(const Bitmap& a, const Bitmap& b);

// Encoders of the tests' own.
enum class JpegKind { Colour, Grey, Progressive, Cmyk, AdobeCmyk };
Bytes MakeJpeg(const Bitmap& bitmap, int quality = 95, JpegKind kind = JpegKind::Colour, const Bytes& profile = {},
               const Bytes& exif = {});
// PNG by libpng. `bits` 8 or 16; `type` is the PNG colour type 0, 2, 4 or 6; `level` is zlib's, -1 for libpng's own.
Bytes MakePng(const Bitmap& bitmap, int bits = 8, int type = 6, const Bytes& profile = {}, int level = -1);
// An Exif block ("Exif\0\0" first) with nothing but an orientation.
Bytes MakeOrientationExif(int orientation);
// A file by one of Qt's writers.
Bytes MakeByQt(const Bitmap& bitmap, const char* format);
// An RGB profile with the primaries of Adobe RGB and this gamma; a grey one.
Bytes MakeRgbProfile(double gamma);
Bytes MakeGreyProfile(double gamma);
Bytes MakeSrgbProfile();
// A CMYK profile in which ink only darkens by its amount, as a lookup table.
Bytes MakeInkProfile();
