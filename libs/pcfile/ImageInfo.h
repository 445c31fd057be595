// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

// What is known about an opened picture, as texts that are ready to be shown. Windows read the fields by their place,
// so the order is part of the interface. A field that the file does not tell is empty.
struct tag_ImageInfo {
    std::wstring FileName;              // 1: without folder; empty for a picture from memory
    std::wstring Format;                // 2: "JPEG"
    std::wstring Dimensions;            // 3: "6000 x 4000", as the picture stands upright
    std::wstring FileSize;              // 4: a whole number and "KB" or "MB"
    std::wstring Maker;                 // 5
    std::wstring Lens;                  // 6
    std::wstring Model;                 // 7
    std::wstring Copyright;             // 8
    std::wstring DateTaken;             // 9: "2024-05-31 18:02:11"
    std::wstring Aperture;              // 10: "f/2.8"
    std::wstring ShutterSpeed;          // 11: "1/125 s"
    std::wstring Sensitivity;           // 12: "ISO 200"
    std::wstring ExposureProgramme;     // 13: a word of the dictionary
    std::wstring MeteringMode;          // 14: a word of the dictionary
    std::wstring ExposureCompensation;  // 15: "+0.3 EV"
    std::wstring FocalLength;           // 16: "50 mm"
    std::wstring Software;              // 17
    std::wstring Flash;                 // 18: a word of the dictionary
};
