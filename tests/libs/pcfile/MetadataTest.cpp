// SPDX-License-Identifier: GPL-3.0-or-later
#include <exiv2/exiv2.hpp>
#include <QtCore/QString>

#include "PictureFolder.h"
#include "TestPictures.h"

using Information = PictureFolder;

namespace {

// The picture as a JPEG with what a camera writes.
Bytes CameraJpeg(const Bitmap& bitmap, int orientation = 6) {
    const Bytes plain = MakeJpeg(bitmap);
    Exiv2::Image::AutoPtr image = Exiv2::ImageFactory::open(plain.data(), static_cast<long>(plain.size()));
    Exiv2::ExifData exif;
    exif["Exif.Image.Make"] = "Maker & Sons  ";
    exif["Exif.Image.Model"] = "M-1";
    exif["Exif.Image.Orientation"] = static_cast<std::uint16_t>(orientation);
    exif["Exif.Image.Software"] = "Firmware 2";
    exif["Exif.Image.Copyright"] = "Somebody";
    exif["Exif.Photo.LensModel"] = "50mm F1.8";
    exif["Exif.Photo.DateTimeOriginal"] = "2024:05:31 18:02:11";
    exif["Exif.Photo.FNumber"] = Exiv2::URational(28, 10);
    exif["Exif.Photo.ExposureTime"] = Exiv2::URational(1, 125);
    exif["Exif.Photo.ISOSpeedRatings"] = std::uint16_t{200};
    exif["Exif.Photo.ExposureProgram"] = std::uint16_t{3};
    exif["Exif.Photo.MeteringMode"] = std::uint16_t{5};
    exif["Exif.Photo.ExposureBiasValue"] = Exiv2::Rational(1, 3);
    exif["Exif.Photo.FocalLength"] = Exiv2::URational(50, 1);
    exif["Exif.Photo.Flash"] = std::uint16_t{25};
    exif["Exif.Photo.PixelXDimension"] = std::uint32_t{9999};
    exif["Exif.GPSInfo.GPSLatitudeRef"] = "N";
    const Bytes old = MakeJpeg(TestPictures::Plain(32, 32, 0xFF00FF00u));
    Exiv2::ExifThumb(exif).setJpegThumbnail(old.data(), static_cast<long>(old.size()));
    image->setExifData(exif);
    Exiv2::XmpData xmp;
    xmp["Xmp.dc.title"] = "A title";
    xmp["Xmp.tiff.Orientation"] = "6";
    image->setXmpData(xmp);
    Exiv2::IptcData iptc;
    iptc["Iptc.Application2.Caption"] = "A caption";
    image->setIptcData(iptc);
    image->writeMetadata();
    Exiv2::BasicIo& io = image->io();
    Bytes bytes(io.size());
    io.seek(0, Exiv2::BasicIo::beg);
    io.read(bytes.data(), static_cast<long>(bytes.size()));
    return bytes;
}

// A small JPEG with these values.
Bytes JpegWithExif(const Exiv2::ExifData& exif) {
    const Bytes plain = MakeJpeg(TestPictures::Ramp(20, 20));
    Exiv2::Image::AutoPtr image = Exiv2::ImageFactory::open(plain.data(), static_cast<long>(plain.size()));
    image->setExifData(exif);
    image->writeMetadata();
    Bytes bytes(image->io().size());
    image->io().seek(0, Exiv2::BasicIo::beg);
    image->io().read(bytes.data(), static_cast<long>(bytes.size()));
    return bytes;
}

// A value of a type that the tag should not have.
template <class Type, class Value>
void PutAs(Exiv2::ExifData& exif, const char* key, const std::vector<Value>& values) {
    Type value;
    for (const Value& one : values) value.value_.push_back(one);
    const Exiv2::ExifKey exifKey(key);
    exif.add(exifKey, &value);
}

struct Read {
    Exiv2::Image::AutoPtr image;
    explicit Read(const Bytes& bytes)
        : image(Exiv2::ImageFactory::open(bytes.data(), static_cast<long>(bytes.size()))) {
        image->readMetadata();
    }
    std::string Exif(const char* key) const {
        const auto found = image->exifData().findKey(Exiv2::ExifKey(key));
        return found == image->exifData().end() ? "none" : found->toString();
    }
    std::string Xmp(const char* key) const {
        const auto found = image->xmpData().findKey(Exiv2::XmpKey(key));
        return found == image->xmpData().end() ? "none" : found->toString();
    }
};

std::wstring Dictionary(const char* name) {
    return QString::fromUtf8(QUINCE_RESOURCES).toStdWString() + L"/" + QString::fromLatin1(name).toStdWString();
}

}  // namespace

TEST_F(Information, NamesTheFileItsSizesAndTheCameraInEnglish) {
    files.SetExifXml(Dictionary("Exif_en.ini"));
    Put("IMG_1.JPG", CameraJpeg(TestPictures::Face(90, 60)));
    ASSERT_FALSE(OpenPath("IMG_1.JPG").IsNull());
    const tag_ImageInfo& info = *files.GetImageInfo();
    EXPECT_EQ(info.FileName, L"IMG_1.JPG");
    EXPECT_EQ(info.Format, L"JPEG");
    EXPECT_EQ(info.Dimensions, L"60 x 90");
    EXPECT_EQ(info.Maker, L"Maker & Sons");
    EXPECT_EQ(info.Lens, L"50mm F1.8");
    EXPECT_EQ(info.Model, L"M-1");
    EXPECT_EQ(info.Copyright, L"Somebody");
    EXPECT_EQ(info.DateTaken, L"2024-05-31 18:02:11");
    EXPECT_EQ(info.Aperture, L"f/2.8");
    EXPECT_EQ(info.ShutterSpeed, L"1/125 s");
    EXPECT_EQ(info.Sensitivity, L"ISO 200");
    EXPECT_EQ(info.ExposureProgramme, L"Aperture priority");
    EXPECT_EQ(info.MeteringMode, L"Pattern");
    EXPECT_EQ(info.ExposureCompensation, L"+0.3 EV");
    EXPECT_EQ(info.FocalLength, L"50 mm");
    EXPECT_EQ(info.Software, L"Firmware 2");
    EXPECT_EQ(info.Flash, L"Auto, fired");
}

TEST_F(Information, SpeaksChineseWithTheOtherDictionaryAndNumbersWithNone) {
    const Bytes bytes = CameraJpeg(TestPictures::Face(90, 60));
    files.SetExifXml(Dictionary("Exif_cn.ini"));
    Open(bytes);
    EXPECT_EQ(files.GetImageInfo()->ExposureProgramme, L"光圈优先");
    EXPECT_EQ(files.GetImageInfo()->MeteringMode, L"评价测光");
    EXPECT_EQ(files.GetImageInfo()->Flash, L"自动，已闪光");
    EXPECT_EQ(files.GetImageInfo()->ShutterSpeed, L"1/125 秒");
    files.SetExifXml(Wide("missing.ini"));
    Open(bytes);
    EXPECT_EQ(files.GetImageInfo()->MeteringMode, L"5");
    EXPECT_EQ(files.GetImageInfo()->ShutterSpeed, L"1/125 s");
}

TEST_F(Information, FileSizeIsAWholeNumberAndAUnit) {
    for (const std::size_t padding : {std::size_t{0}, std::size_t{300} << 10, std::size_t{25} << 20}) {
        Bytes bytes = MakePng(TestPictures::Ramp(8, 8));
        bytes.resize(bytes.size() + padding);
        ASSERT_FALSE(Open(bytes).IsNull());
        const std::wstring text = files.GetImageInfo()->FileSize;
        const std::wstring unit = text.substr(text.size() - 2);
        EXPECT_EQ(unit, padding > 10u << 20 ? L"MB" : L"KB");
        EXPECT_EQ(text.substr(0, text.size() - 2).find_first_not_of(L"0123456789"), std::wstring::npos);
        EXPECT_GT(std::stoi(text), 0);
    }
}

TEST_F(Information, APictureWithoutExifHasEmptyCameraFields) {
    ASSERT_FALSE(Open(MakePng(TestPictures::Ramp(8, 8))).IsNull());
    EXPECT_EQ(files.GetImageInfo()->Maker, L"");
    EXPECT_EQ(files.GetImageInfo()->Flash, L"");
    EXPECT_EQ(files.GetImageInfo()->Aperture, L"");
}

TEST_F(Information, SenselessNumbersLeaveTheirFieldsEmpty) {
    Exiv2::ExifData exif;
    exif["Exif.Photo.FNumber"] = Exiv2::URational(28, 0);
    exif["Exif.Photo.ExposureTime"] = Exiv2::URational(0, 5);
    exif["Exif.Photo.FocalLength"] = Exiv2::URational(0, 0);
    exif["Exif.Photo.ExposureBiasValue"] = Exiv2::Rational(5, 0);
    exif["Exif.Photo.ISOSpeedRatings"] = std::uint16_t{0};
    exif["Exif.Image.Make"] = std::string(5000, 'x') + "\n";
    ASSERT_FALSE(Open(JpegWithExif(exif)).IsNull());
    EXPECT_EQ(files.GetImageInfo()->Aperture, L"");
    EXPECT_EQ(files.GetImageInfo()->ShutterSpeed, L"");
    EXPECT_EQ(files.GetImageInfo()->FocalLength, L"");
    EXPECT_EQ(files.GetImageInfo()->ExposureCompensation, L"");
    EXPECT_EQ(files.GetImageInfo()->Sensitivity, L"");
    EXPECT_LE(files.GetImageInfo()->Maker.size(), 200u);
}

TEST_F(Information, CompensationOfAnyFractionIsTold) {
    const std::pair<Exiv2::Rational, const wchar_t*> signedOnes[] = {{{-10, 30}, L"-0.3 EV"},
                                                                     {{66, 100}, L"+0.7 EV"},
                                                                     {{1, -3}, L"-0.3 EV"},
                                                                     {{-256, 384}, L"-0.7 EV"},
                                                                     {{0, 0}, L"0 EV"},
                                                                     {{0, -1}, L"0 EV"},
                                                                     {{-3333, 10000}, L"-0.3 EV"},
                                                                     {{715827883, 2147483647}, L"+0.3 EV"},
                                                                     {{-2, 1}, L"-2.0 EV"},
                                                                     {{1431655765, -2147483647}, L"-0.7 EV"}};
    for (const auto& [fraction, text] : signedOnes) {
        Exiv2::ExifData exif;
        exif["Exif.Photo.ExposureBiasValue"] = fraction;
        ASSERT_FALSE(Open(JpegWithExif(exif)).IsNull());
        EXPECT_EQ(files.GetImageInfo()->ExposureCompensation, text) << fraction.first << "/" << fraction.second;
    }
    // Some call the fraction unsigned and store a negative one all the same.
    const std::pair<Exiv2::URational, const wchar_t*> unsignedOnes[] = {
        {{1, 3}, L"+0.3 EV"}, {{4294967295u, 3}, L"-0.3 EV"}, {{2, 4294967293u}, L"-0.7 EV"}};
    for (const auto& [fraction, text] : unsignedOnes) {
        Exiv2::ExifData exif;
        PutAs<Exiv2::URationalValue, Exiv2::URational>(exif, "Exif.Photo.ExposureBiasValue", {fraction});
        ASSERT_FALSE(Open(JpegWithExif(exif)).IsNull());
        EXPECT_EQ(files.GetImageInfo()->ExposureCompensation, text) << fraction.first << "/" << fraction.second;
    }
}

TEST_F(Information, NumbersThatAreStoredAsTextAreRead) {
    Exiv2::ExifData exif;
    const std::pair<const char*, const char*> texts[] = {
        {"Exif.Photo.ExposureBiasValue", "-1/3"}, {"Exif.Photo.ISOSpeedRatings", "320"}, {"Exif.Photo.FNumber", "5.6"}};
    for (const auto& [key, text] : texts) {
        const Exiv2::AsciiValue value(text);
        exif.add(Exiv2::ExifKey(key), &value);
    }
    ASSERT_FALSE(Open(JpegWithExif(exif)).IsNull());
    EXPECT_EQ(files.GetImageInfo()->ExposureCompensation, L"-0.3 EV");
    EXPECT_EQ(files.GetImageInfo()->Sensitivity, L"ISO 320");
    EXPECT_EQ(files.GetImageInfo()->Aperture, L"f/5.6");
}

TEST_F(Information, SensitivityComesFromTheStandardsTagsBeforeTheMakersNote) {
    const auto iso = [&](const Exiv2::ExifData& exif) {
        EXPECT_FALSE(Open(JpegWithExif(exif)).IsNull());
        return files.GetImageInfo()->Sensitivity;
    };
    const auto withNote = [] {
        Exiv2::ExifData exif;
        exif["Exif.Image.Make"] = "NIKON CORPORATION";
        PutAs<Exiv2::UShortValue, std::uint16_t>(exif, "Exif.Nikon3.ISOSpeed", {0, 800});
        return exif;
    };
    // Alone, the note counts.
    EXPECT_EQ(iso(withNote()), L"ISO 800");
    Exiv2::ExifData exif = withNote();
    exif["Exif.Photo.ISOSpeedRatings"] = std::uint16_t{200};
    EXPECT_EQ(iso(exif), L"ISO 200");
    // The older tag is silent or full, and one of the newer speaks.
    for (const int ratings : {-1, 0, 65535})
        for (const char* key :
             {"Exif.Photo.RecommendedExposureIndex", "Exif.Photo.ISOSpeed", "Exif.Photo.StandardOutputSensitivity"}) {
            exif = withNote();
            if (ratings >= 0) exif["Exif.Photo.ISOSpeedRatings"] = static_cast<std::uint16_t>(ratings);
            exif[key] = std::uint32_t{102400};
            EXPECT_EQ(iso(exif), L"ISO 102400") << ratings << key;
        }
    exif = withNote();
    exif["Exif.Photo.ISOSpeedRatings"] = std::uint16_t{65535};
    EXPECT_EQ(iso(exif), L"ISO 65535");
    exif = Exiv2::ExifData();
    PutAs<Exiv2::UShortValue, std::uint16_t>(exif, "Exif.Photo.ISOSpeedRatings", {0, 400});
    EXPECT_EQ(iso(exif), L"ISO 400");
}

TEST_F(Information, DamagedMetadataNeverFailsTheLoad) {
    const Bytes good = CameraJpeg(TestPictures::Face(90, 60), 1);
    for (std::size_t at = 30; at < 600; at += 7) {
        Bytes bad = good;
        bad[at] ^= 0x5A;
        // Lengths of segments are part of the picture; everything inside them is not.
        const Bitmap picture = OpenMemory(bad);
        EXPECT_TRUE(picture.IsNull() || picture.Width() * picture.Height() == 90 * 60) << at;
    }
}

TEST_F(Information, SavedPicturesCarryItOnMadeTrue) {
    const Bytes source = CameraJpeg(TestPictures::Face(900, 600));
    const Bitmap picture = Open(source);
    ASSERT_EQ(picture.Height(), 900);
    for (const int format : {1, 2}) {
        ASSERT_NE(files.OnSaveQuick(Wide("out").c_str(), picture, format, 92), 0);
        const Read read(Get("out"));
        EXPECT_EQ(read.Exif("Exif.Image.Make"), "Maker & Sons  ");
        EXPECT_EQ(read.Exif("Exif.Photo.DateTimeOriginal"), "2024:05:31 18:02:11");
        EXPECT_EQ(read.Exif("Exif.GPSInfo.GPSLatitudeRef"), "N");
        EXPECT_EQ(read.Exif("Exif.Image.Orientation"), "1") << format;
        EXPECT_EQ(read.Exif("Exif.Image.Software").find("QUINCE "), 0u);
        EXPECT_EQ(read.Exif("Exif.Photo.PixelXDimension"), "600");
        EXPECT_EQ(read.Exif("Exif.Photo.PixelYDimension"), "900");
        EXPECT_EQ(read.Exif("Exif.Photo.ColorSpace"), "1");
        EXPECT_EQ(read.Xmp("Xmp.dc.title"), "lang=\"x-default\" A title") << format;
        EXPECT_EQ(read.Xmp("Xmp.tiff.Orientation"), "1");
        EXPECT_EQ(read.image->iptcData()["Iptc.Application2.Caption"].toString(), "A caption");
        const Exiv2::DataBuf thumbnail = Exiv2::ExifThumbC(read.image->exifData()).copy();
        ASSERT_GT(thumbnail.size_, 0);
        const Bitmap small =
            PC_File().OnLoadImage(thumbnail.pData_, static_cast<int>(thumbnail.size_), 1, nullptr, 0, 100);
        EXPECT_EQ(small.Width(), 80);
        EXPECT_EQ(small.Height(), 120);
        EXPECT_NE(TestPictures::PixelAt(small, 40, 60) & 0xFFFFFF, 0x00FF00u);
        EXPECT_EQ(OpenPath("out").Height(), 900);
        Open(source);
    }
}

TEST_F(Information, APictureWithoutMetadataGetsNoneFromAnotherObject) {
    PC_File other;
    const Bytes source = CameraJpeg(TestPictures::Face(90, 60));
    other.OnLoadImage(source.data(), static_cast<int>(source.size()), 1, nullptr, 0, 100);
    const Bitmap picture = Open(MakePng(TestPictures::Ramp(30, 20)));
    files.OnSaveQuick(Wide("out").c_str(), picture, 1, 92);
    EXPECT_TRUE(Read(Get("out")).image->exifData().empty());
}
