// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QBuffer>
#include <QtGui/QImage>

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "Bitmap.h"

// Frame files of tests, field by field, so that they can also lie.
namespace FrameBuilder {

using Bytes = std::vector<std::uint8_t>;

inline void PutInt(Bytes& bytes, std::size_t at, int value) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes.at(at + i) = static_cast<std::uint8_t>(static_cast<unsigned>(value) >> (8 * i));
}

inline void PutText(Bytes& bytes, std::size_t at, const char* text) {
    for (; *text; ++text) bytes.at(at++) = static_cast<std::uint8_t>(*text);
}

inline void Append(Bytes& bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

inline Bytes Png(const Bitmap& bitmap) {
    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    QImage(bitmap.Pixels(), bitmap.Width(), bitmap.Height(), QImage::Format_ARGB32).save(&buffer, "PNG");
    return {file.begin(), file.end()};
}

struct Size {
    int width = 0, height = 0;
};

// Pieces: top-left, top, top-right, left, right, bottom-left, bottom, bottom-right.
struct Strip {
    int pictureUnder = 1;
    int pictureX = 0, pictureY = 0;
    int extraWidth = 0, extraHeight = 0;
    std::array<Size, 8> pieces{};
    Bitmap strip;

    Bytes File() const {
        Bytes bytes(117, 0xA5);  // what is not read may be anything
        PutText(bytes, 12, "LUXUS");
        bytes[36] = static_cast<std::uint8_t>(pictureUnder);
        PutInt(bytes, 37, pictureX);
        PutInt(bytes, 41, pictureY);
        PutInt(bytes, 45, extraWidth);
        PutInt(bytes, 49, extraHeight);
        for (std::size_t i = 0; i < 8; ++i) {
            PutInt(bytes, 53 + 8 * i, pieces[i].width);
            PutInt(bytes, 57 + 8 * i, pieces[i].height);
        }
        Append(bytes, Png(strip));
        return bytes;
    }
};

// Parts: three rows of three.
struct NinePart {
    int pictureX = 0, pictureY = 0;
    int extraWidth = 0, extraHeight = 0;
    std::vector<std::uint8_t> nameLengths;
    std::array<Bitmap, 9> parts{};

    Bytes File() const {
        Bytes bytes(96, 0);
        PutText(bytes, 0, "VNBK");
        PutInt(bytes, 32, 0x7FFFFFFF);  // the origin, which nothing uses
        PutInt(bytes, 40, pictureX);
        PutInt(bytes, 44, pictureY);
        PutInt(bytes, 48, extraWidth);
        PutInt(bytes, 52, extraHeight);
        bytes[64] = static_cast<std::uint8_t>(nameLengths.size());
        std::size_t named = 0;
        for (std::size_t i = 0; i < nameLengths.size() && 65 + i < 96; ++i) bytes[65 + i] = nameLengths[i];
        for (const std::uint8_t length : nameLengths) named += 2u * length;
        bytes.resize(bytes.size() + named, 'n');
        for (const Bitmap& part : parts) {
            const Bytes png = part ? Png(part) : Bytes();
            bytes.resize(bytes.size() + 4);
            PutInt(bytes, bytes.size() - 4, static_cast<int>(png.size()));
            Append(bytes, png);
        }
        return bytes;
    }
};

struct Overlay {
    char mayRotate = '0', keepRatio = '0', stretch = '0';
    int blendMode = 0;
    const char* extension = "PNG";
    Bitmap picture;  // null: no overlay

    Bytes File() const {
        Bytes bytes(174, 0x5A);
        PutText(bytes, 12, "XCBK1");
        bytes[138] = static_cast<std::uint8_t>(mayRotate);
        bytes[139] = static_cast<std::uint8_t>(keepRatio);
        bytes[140] = static_cast<std::uint8_t>(stretch);
        bytes[141] = static_cast<std::uint8_t>(blendMode);
        PutText(bytes, 158, extension);
        const Bytes png = picture ? Png(picture) : Bytes();
        PutInt(bytes, 166, static_cast<int>(png.size()));
        Append(bytes, png);
        if (bytes.size() < 183) bytes.resize(183);
        return bytes;
    }
};

}  // namespace FrameBuilder
