// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <exiv2/exiv2.hpp>

#include "ExifWords.h"
#include "ImageInfo.h"

// Turns Exif values into the texts of the record: maker, lens, model, copyright, date, exposure, software and flash.
// Numbers that make no sense (a zero divisor, a negative time) leave their field empty.
void FillExifFields(const Exiv2::ExifData& exif, const ExifWords& words, tag_ImageInfo& info);
