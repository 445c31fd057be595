// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureFormat.h"

#include <algorithm>
#include <cstring>

#include "ByteReader.h"

namespace {

struct Head {
    const std::uint8_t* data;
    std::size_t size;
    std::uint64_t fileSize;

    bool Has(std::size_t at, const char* bytes, std::size_t count) const {
        return size >= at + count && std::memcmp(data + at, bytes, count) == 0;
    }
    template <std::size_t N>
    bool Has(std::size_t at, const char (&bytes)[N]) const {
        return Has(at, bytes, N - 1);
    }
};

// Brands of the ISO base media container that libheif reads.
bool IsHeif(const Head& h) {
    if (!h.Has(4, "ftyp")) return false;
    static const char* const brands[] = {"heic", "heix", "heim", "heis", "hevc",
                                         "hevx", "mif1", "msf1", "avif", "avis"};
    const std::size_t box = std::min<std::size_t>(BigEndian32(h.data), std::min<std::size_t>(h.size, 256));
    for (std::size_t at = 8; at + 4 <= box; at += at == 8 ? 8 : 4)
        for (const char* brand : brands)
            if (h.Has(at, brand, 4)) return true;
    return false;
}

bool IsCameraRaw(const Head& h) {
    return h.Has(0, "FUJIFILMCCD-RAW ") || h.Has(0, "IIU\0") || h.Has(0, "IIRO") || h.Has(0, "IIRS") ||
           h.Has(0, "MMOR") || h.Has(0, "FOVb") || (h.Has(0, "II") && h.Has(6, "HEAPCCDR")) || h.Has(4, "ftypcrx ") ||
           h.Has(0, "\0MRM");
}

bool IsPcx(const Head& h) {
    if (h.size < 128 || h.data[0] != 0x0A || h.data[1] > 5 || h.data[2] > 1) return false;
    const int bits = h.data[3];
    const bool box = LittleEndian16(h.data + 8) >= LittleEndian16(h.data + 4) &&
                     LittleEndian16(h.data + 10) >= LittleEndian16(h.data + 6);
    return (bits == 1 || bits == 2 || bits == 4 || bits == 8) && box && h.data[64] == 0 && h.data[65] >= 1 &&
           h.data[65] <= 4;
}

// Reads a multi-byte number of a WBMP header; false when it is longer than 31 bits.
bool WbmpNumber(const Head& h, std::size_t& at, std::uint64_t& value) {
    value = 0;
    for (int i = 0; i < 5 && at < h.size; ++i) {
        const int byte = h.data[at++];
        value = value << 7 | (byte & 127);
        if (!(byte & 128)) return true;
    }
    return false;
}

bool IsWbmp(const Head& h) {
    std::size_t at = 2;
    std::uint64_t width = 0, height = 0;
    if (!h.Has(0, "\0\0") || !WbmpNumber(h, at, width) || !WbmpNumber(h, at, height)) return false;
    return width > 0 && height > 0 && h.fileSize == at + (width + 7) / 8 * height;
}

bool IsTga(const Head& h) {
    if (h.size < 18) return false;
    const int mapType = h.data[1], type = h.data[2], mapBits = h.data[7], bits = h.data[16];
    const bool palette = type == 1 || type == 9;
    const bool colour = type == 2 || type == 10;
    const bool grey = type == 3 || type == 11;
    if (!palette && !colour && !grey) return false;
    if (mapType > 1 || (palette && mapType != 1)) return false;
    if (mapType == 1 && mapBits != 15 && mapBits != 16 && mapBits != 24 && mapBits != 32) return false;
    if (mapType == 0 && (LittleEndian16(h.data + 3) != 0 || LittleEndian16(h.data + 5) != 0 || mapBits != 0))
        return false;
    if (palette && bits != 8) return false;
    if (colour && bits != 15 && bits != 16 && bits != 24 && bits != 32) return false;
    if (grey && bits != 8 && bits != 16) return false;
    if (h.data[17] & 0xC0) return false;
    return LittleEndian16(h.data + 12) > 0 && LittleEndian16(h.data + 14) > 0;
}

bool IsJbig(const Head& h) {
    if (h.size < 20) return false;
    const int first = h.data[0], last = h.data[1], planes = h.data[2];
    const std::uint32_t width = BigEndian32(h.data + 4), height = BigEndian32(h.data + 8),
                        stripe = BigEndian32(h.data + 12);
    return first <= last && last <= 6 && planes >= 1 && planes <= 8 && h.data[3] == 0 && width > 0 &&
           width < 1u << 20 && height > 0 && height < 1u << 20 && stripe > 0 && stripe <= height && h.data[16] <= 127 &&
           (h.data[18] & 0xF0) == 0 && (h.data[19] & 0x80) == 0;
}

bool IsWmf(const Head& h) {
    return h.Has(0, "\xD7\xCD\xC6\x9A") || h.Has(0, "\x01\0\x09\0\0\x03") || h.Has(0, "\x02\0\x09\0\0\x03");
}

}  // namespace

PictureFormat SniffPicture(const std::uint8_t* head, std::size_t headSize, std::uint64_t fileSize) {
    const Head h{head, headSize, fileSize};
    if (h.Has(0, "\xFF\xD8\xFF")) return PictureFormat::Jpeg;
    if (h.Has(0, "\x89PNG\r\n\x1A\n")) return PictureFormat::Png;
    if (h.Has(0, "\x8AMNG\r\n\x1A\n")) return PictureFormat::Mng;
    if (h.Has(0, "\x8BJNG\r\n\x1A\n")) return PictureFormat::Jng;
    if (h.Has(0, "GIF87a") || h.Has(0, "GIF89a")) return PictureFormat::Gif;
    if (h.Has(0, "RIFF") && h.Has(8, "WEBP")) return PictureFormat::Webp;
    if (IsCameraRaw(h)) return PictureFormat::Raw;
    if (IsHeif(h)) return PictureFormat::Heif;
    if (h.Has(0, "\xFF\x0A") || h.Has(0, "\0\0\0\x0CJXL \r\n\x87\n")) return PictureFormat::Jxl;
    if (h.Has(0, "\0\0\0\x0CjP  \r\n\x87\n")) return PictureFormat::Jp2;
    if (h.Has(0, "\xFF\x4F\xFF\x51")) return PictureFormat::J2k;
    if (h.Has(0, "II*\0") || h.Has(0, "MM\0*") || h.Has(0, "II+\0") || h.Has(0, "MM\0+")) return PictureFormat::Tiff;
    if (h.Has(0, "8BPS\0\1") || h.Has(0, "8BPS\0\2")) return PictureFormat::Psd;
    if (h.Has(0, "\x59\xA6\x6A\x95")) return PictureFormat::Ras;
    if (h.Has(0, "PG ML ") || h.Has(0, "PG LM ") || h.Has(0, "PG ML+") || h.Has(0, "PG LM+") || h.Has(0, "PG ML-") ||
        h.Has(0, "PG LM-"))
        return PictureFormat::Pgx;
    if (headSize > 2 && head[0] == 'P' && head[1] >= '1' && head[1] <= '7' && std::strchr(" \t\r\n#", head[2]) &&
        head[2])
        return PictureFormat::Pnm;
    if (h.Has(0, "BM") && headSize >= 26) return PictureFormat::Bmp;
    if (IsWmf(h)) return PictureFormat::Wmf;
    if (h.Has(0, "\0\0\1\0") && headSize >= 22 && head[4] != 0 && head[9] == 0) return PictureFormat::Ico;
    if (IsPcx(h)) return PictureFormat::Pcx;
    if (IsWbmp(h)) return PictureFormat::Wbmp;
    if (IsTga(h)) return PictureFormat::Tga;
    if (IsJbig(h)) return PictureFormat::Jbig;
    return PictureFormat::Unknown;
}

const wchar_t* FormatName(PictureFormat format) {
    switch (format) {
        case PictureFormat::Unknown:
            return L"";
        case PictureFormat::Jpeg:
            return L"JPEG";
        case PictureFormat::Png:
            return L"PNG";
        case PictureFormat::Bmp:
            return L"BMP";
        case PictureFormat::Gif:
            return L"GIF";
        case PictureFormat::Ico:
            return L"ICO";
        case PictureFormat::Wbmp:
            return L"WBMP";
        case PictureFormat::Tiff:
            return L"TIFF";
        case PictureFormat::Webp:
            return L"WebP";
        case PictureFormat::Heif:
            return L"HEIF";
        case PictureFormat::Jxl:
            return L"JPEG XL";
        case PictureFormat::Raw:
            return L"RAW";
        case PictureFormat::Mng:
            return L"MNG";
        case PictureFormat::Jng:
            return L"JNG";
        case PictureFormat::Jp2:
            return L"JPEG 2000";
        case PictureFormat::J2k:
            return L"JPEG 2000";
        case PictureFormat::Pgx:
            return L"PGX";
        case PictureFormat::Pcx:
            return L"PCX";
        case PictureFormat::Ras:
            return L"RAS";
        case PictureFormat::Pnm:
            return L"PNM";
        case PictureFormat::Jbig:
            return L"JBIG";
        case PictureFormat::Tga:
            return L"TGA";
        case PictureFormat::Psd:
            return L"PSD";
        case PictureFormat::Wmf:
            return L"WMF";
    }
    return L"";
}
