// SPDX-License-Identifier: GPL-3.0-or-later
#include "Metadata.h"

#include <exiv2/exiv2.hpp>

#include <cmath>
#include <cwctype>
#include <mutex>

#include "ExifFields.h"
#include "MetadataCarrier.h"
#include "ScaleBitmap.h"

struct Metadata::Data {
    Exiv2::ExifData exif;
    Exiv2::XmpData xmp;
    Exiv2::IptcData iptc;

    bool Empty() const { return exif.empty() && xmp.empty() && iptc.empty(); }
};

namespace {

// The XMP part of the library has global tables and wants a lock of the program's.
void LockXmp(void* mutex, bool lock) {
    auto* guard = static_cast<std::recursive_mutex*>(mutex);
    lock ? guard->lock() : guard->unlock();
}

void StartExiv2() {
    static std::once_flag once;
    static std::recursive_mutex mutex;
    std::call_once(once, [] {
        Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
        Exiv2::XmpParser::initialize(LockXmp, &mutex);
        Exiv2::enableBMFF(true);
    });
}

// The longest side of the thumbnail that Exif asks for.
constexpr int ThumbnailWidth = 160, ThumbnailHeight = 120;

ByteVector MakeThumbnail(const Bitmap& bitmap) {
    const double scale =
        std::min({1.0, double(ThumbnailWidth) / bitmap.Width(), double(ThumbnailHeight) / bitmap.Height()});
    const Bitmap small =
        ScaleBitmap(bitmap, TruncateSide(bitmap.Width() * scale), TruncateSide(bitmap.Height() * scale));
    ByteVector file;
    if (!EncodeJpeg(small, 80, Chroma::Halved, {}, {}, file)) file.clear();
    return file;
}

// Sets a tag only where the file had it, so that nothing is claimed that was not.
template <class Container, class Key, class Value>
void Correct(Container& data, const char* name, const Value& value) {
    const auto found = data.findKey(Key(name));
    if (found != data.end()) *found = value;
}

void CorrectExif(Exiv2::ExifData& exif, const Bitmap& bitmap, const std::string& software) {
    const auto width = static_cast<std::uint32_t>(bitmap.Width()), height = static_cast<std::uint32_t>(bitmap.Height());
    exif["Exif.Image.Orientation"] = std::uint16_t{1};
    exif["Exif.Image.Software"] = software;
    exif["Exif.Photo.ColorSpace"] = std::uint16_t{1};
    exif["Exif.Photo.PixelXDimension"] = width;
    exif["Exif.Photo.PixelYDimension"] = height;
    Correct<Exiv2::ExifData, Exiv2::ExifKey>(exif, "Exif.Image.ImageWidth", width);
    Correct<Exiv2::ExifData, Exiv2::ExifKey>(exif, "Exif.Image.ImageLength", height);
    Correct<Exiv2::ExifData, Exiv2::ExifKey>(exif, "Exif.Iop.InteroperabilityIndex", std::string("R98"));
    // A profile inside the directory would speak against the one that the saved file says.
    const auto profile = exif.findKey(Exiv2::ExifKey("Exif.Image.InterColorProfile"));
    if (profile != exif.end()) exif.erase(profile);
    Exiv2::ExifThumb thumbnail(exif);
    thumbnail.erase();
    const ByteVector jpeg = MakeThumbnail(bitmap);
    if (!jpeg.empty()) thumbnail.setJpegThumbnail(jpeg.data(), static_cast<long>(jpeg.size()));
}

void CorrectXmp(Exiv2::XmpData& xmp, const Bitmap& bitmap, const std::string& software) {
    const std::string width = std::to_string(bitmap.Width()), height = std::to_string(bitmap.Height());
    const auto correct = [&](const char* name, const std::string& value) {
        Correct<Exiv2::XmpData, Exiv2::XmpKey>(xmp, name, value);
    };
    correct("Xmp.tiff.Orientation", "1");
    correct("Xmp.tiff.ImageWidth", width);
    correct("Xmp.tiff.ImageLength", height);
    correct("Xmp.exif.PixelXDimension", width);
    correct("Xmp.exif.PixelYDimension", height);
    correct("Xmp.exif.ColorSpace", "1");
    correct("Xmp.photoshop.ICCProfile", "sRGB IEC61966-2.1");
    xmp["Xmp.xmp.CreatorTool"] = software;
}

}  // namespace

Metadata::Metadata() : m_data(std::make_unique<Data>()) {}
Metadata::~Metadata() = default;

std::unique_ptr<Metadata> Metadata::Read(const std::uint8_t* data, std::size_t size) {
    StartExiv2();
    auto metadata = std::make_unique<Metadata>();
    try {
        const Exiv2::Image::AutoPtr image = Exiv2::ImageFactory::open(data, static_cast<long>(size));
        if (image.get()) {
            image->readMetadata();
            metadata->m_data->exif = image->exifData();
            metadata->m_data->xmp = image->xmpData();
            metadata->m_data->iptc = image->iptcData();
        }
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        // A file whose metadata is damaged is a picture without.
    }
    return metadata;
}

void Metadata::FillInfo(const ExifWords& words, tag_ImageInfo& info) const {
    try {
        Exiv2::ExifData exif = m_data->exif;
        // Formats without Exif often say the same in XMP.
        if (exif.empty() && !m_data->xmp.empty()) Exiv2::copyXmpToExif(m_data->xmp, exif);
        if (!exif.empty()) FillExifFields(exif, words, info);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        // The fields that were read so far stand.
    }
}

ByteVector Metadata::JpegSegments(const Bitmap& bitmap, const std::string& software) const {
    if (m_data->Empty()) return {};
    try {
        Data corrected = *m_data;
        CorrectExif(corrected.exif, bitmap, software);
        if (!corrected.xmp.empty()) CorrectXmp(corrected.xmp, bitmap, software);
        return CarryInJpeg(corrected.exif, corrected.xmp, corrected.iptc);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return {};
    }
}

ByteVector Metadata::PngChunks(const Bitmap& bitmap, const std::string& software) const {
    if (m_data->Empty()) return {};
    try {
        Data corrected = *m_data;
        CorrectExif(corrected.exif, bitmap, software);
        if (!corrected.xmp.empty()) CorrectXmp(corrected.xmp, bitmap, software);
        return CarryInPng(corrected.exif, corrected.xmp, corrected.iptc);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return {};
    }
}
