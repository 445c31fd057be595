// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExifFields.h"

#include <cmath>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <optional>

#include "WideText.h"

namespace {

// No camera says more, and a hostile file shall not fill a window.
constexpr std::size_t LongestText = 128;

constexpr long MostIso = 100000000;

using Found = Exiv2::ExifData::const_iterator;

std::wstring Cleaned(const std::wstring& text) {
    std::wstring clean;
    for (const wchar_t c : text) {
        if (c == 0 || clean.size() >= LongestText) break;
        clean += std::iswcntrl(static_cast<wint_t>(c)) || c < 32 ? L' ' : c;
    }
    const std::size_t first = clean.find_first_not_of(L' '), last = clean.find_last_not_of(L' ');
    return first == std::wstring::npos ? std::wstring() : clean.substr(first, last - first + 1);
}

std::wstring Text(const Exiv2::ExifData& exif, Found found) {
    return found == exif.end() ? std::wstring() : Cleaned(WideText(found->toString()));
}

std::wstring Text(const Exiv2::ExifData& exif, const char* key) {
    return Text(exif, exif.findKey(Exiv2::ExifKey(key)));
}

// The first number of a tag; of one that is stored as text, what the text says.
Exiv2::Rational Fraction(Found found) {
    bool good = false;
    return found->typeId() == Exiv2::asciiString ? Exiv2::parseRational(found->toString(), good) : found->toRational();
}

std::optional<double> Number(const Exiv2::ExifData& exif, Found found) {
    if (found == exif.end() || found->count() < 1) return std::nullopt;
    const Exiv2::Rational value = Fraction(found);
    if (value.second == 0) return std::nullopt;
    // Unsigned rationals come through a signed pair.
    const bool isUnsigned = found->typeId() == Exiv2::unsignedRational;
    const double above = isUnsigned ? static_cast<std::uint32_t>(value.first) : value.first;
    const double below = isUnsigned ? static_cast<std::uint32_t>(value.second) : value.second;
    return above / below;
}

std::optional<double> Number(const Exiv2::ExifData& exif, const char* key) {
    return Number(exif, exif.findKey(Exiv2::ExifKey(key)));
}

std::optional<long> Whole(const Exiv2::ExifData& exif, const char* key) {
    const Found found = exif.findKey(Exiv2::ExifKey(key));
    if (found == exif.end() || found->count() < 1) return std::nullopt;
    return found->toLong();
}

std::wstring Format(const wchar_t* pattern, double value) {
    wchar_t buffer[64];
    const int written = std::swprintf(buffer, 64, pattern, value);
    return written > 0 ? std::wstring(buffer, written) : std::wstring();
}

// With one decimal where that says something.
std::wstring Short(double value) {
    const bool whole = std::abs(value - std::round(value)) < 0.05;
    return Format(whole ? L"%.0f" : L"%.1f", value);
}

std::wstring Aperture(const Exiv2::ExifData& exif) {
    std::optional<double> stop = Number(exif, "Exif.Photo.FNumber");
    if (!stop) {
        // The APEX value: twice the logarithm of the number.
        const std::optional<double> apex = Number(exif, "Exif.Photo.ApertureValue");
        if (apex && std::abs(*apex) < 30) stop = std::exp2(*apex / 2);
    }
    return stop && *stop > 0 && *stop < 1000 ? Short(*stop) : std::wstring();
}

std::wstring Shutter(const Exiv2::ExifData& exif) {
    std::optional<double> seconds = Number(exif, "Exif.Photo.ExposureTime");
    if (!seconds) {
        const std::optional<double> apex = Number(exif, "Exif.Photo.ShutterSpeedValue");
        if (apex && std::abs(*apex) < 30) seconds = std::exp2(-*apex);
    }
    if (!seconds || !(*seconds > 0) || *seconds > 1e6) return {};
    if (*seconds >= 0.3) return Short(*seconds);
    return Format(L"1/%.0f", 1 / *seconds);
}

// The first value of the tag that is a sensitivity: some cameras write a 0 before or behind it.
std::optional<long> Iso(const Exiv2::ExifData& exif, const char* key) {
    const Found found = exif.findKey(Exiv2::ExifKey(key));
    if (found == exif.end()) return std::nullopt;
    const bool text = found->typeId() == Exiv2::asciiString;
    for (long i = 0; i < (text ? 1 : found->count()); ++i) {
        const long iso = text ? std::strtol(found->toString().c_str(), nullptr, 10) : found->toLong(i);
        if (iso > 0 && iso < MostIso) return iso;
    }
    return std::nullopt;
}

// What the standard's tags say. The first two have 16 bits, and what is above them stands in one of the others.
std::optional<long> StandardIso(const Exiv2::ExifData& exif) {
    constexpr long tooLarge = 65535;
    std::optional<long> most;
    for (const char* key : {"Exif.Photo.ISOSpeedRatings", "Exif.Image.ISOSpeedRatings", "Exif.Photo.ISOSpeed",
                            "Exif.Photo.RecommendedExposureIndex", "Exif.Photo.StandardOutputSensitivity"}) {
        const std::optional<long> iso = Iso(exif, key);
        if (iso && *iso != tooLarge) return iso;
        if (iso) most = iso;
    }
    return most;
}

// The maker's own note counts only where the standard's tags are silent. Its number is often a code, which the
// metadata library spells out.
std::wstring Sensitivity(const Exiv2::ExifData& exif) {
    if (const auto iso = StandardIso(exif)) return std::to_wstring(*iso);
    const Found found = Exiv2::isoSpeed(exif);
    const long iso = found == exif.end() ? 0 : std::strtol(found->print(&exif).c_str(), nullptr, 10);
    return iso > 0 && iso < MostIso ? std::to_wstring(iso) : std::wstring();
}

// The tag is a signed fraction, but some cameras call it unsigned; read as such a negative one would be thousands of
// millions. Nothing over nothing is how others write no compensation.
std::optional<double> Bias(const Exiv2::ExifData& exif) {
    const Found found = exif.findKey(Exiv2::ExifKey("Exif.Photo.ExposureBiasValue"));
    if (found == exif.end() || found->count() < 1) return std::nullopt;
    const Exiv2::Rational value = Fraction(found);
    if (value.first == 0) return 0.0;
    if (value.second == 0) return std::nullopt;
    return static_cast<double>(value.first) / value.second;
}

std::wstring Compensation(const Exiv2::ExifData& exif) {
    const std::optional<double> stops = Bias(exif);
    if (!stops || std::abs(*stops) > 100) return {};
    return std::abs(*stops) < 0.05 ? L"0" : Format(L"%+.1f", *stops);
}

std::wstring FocalLength(const Exiv2::ExifData& exif) {
    const std::optional<double> length = Number(exif, "Exif.Photo.FocalLength");
    return length && *length > 0 && *length < 1e5 ? Short(*length) : std::wstring();
}

// "2024:05:31 18:02:11" with the date's colons as dashes, as people write it.
std::wstring DateTaken(const Exiv2::ExifData& exif) {
    std::wstring date = Text(exif, "Exif.Photo.DateTimeOriginal");
    if (date.empty()) date = Text(exif, "Exif.Photo.DateTimeDigitized");
    if (date.empty()) date = Text(exif, "Exif.Image.DateTime");
    if (date.size() >= 10 && date[4] == L':' && date[7] == L':') date[4] = date[7] = L'-';
    return date.find_first_of(L"123456789") == std::wstring::npos ? std::wstring() : date;
}

}  // namespace

void FillExifFields(const Exiv2::ExifData& exif, const ExifWords& words, tag_ImageInfo& info) {
    info.Maker = Text(exif, "Exif.Image.Make");
    info.Model = Text(exif, "Exif.Image.Model");
    info.Lens = Text(exif, "Exif.Photo.LensModel");
    info.Copyright = Text(exif, "Exif.Image.Copyright");
    info.DateTaken = DateTaken(exif);
    info.Software = Text(exif, "Exif.Image.Software");
    info.Aperture = words.Pattern("Aperture", L"f/%s", Aperture(exif));
    info.ShutterSpeed = words.Pattern("ShutterSpeed", L"%s s", Shutter(exif));
    info.Sensitivity = words.Pattern("Sensitivity", L"ISO %s", Sensitivity(exif));
    info.ExposureCompensation = words.Pattern("ExposureCompensation", L"%s EV", Compensation(exif));
    info.FocalLength = words.Pattern("FocalLength", L"%s mm", FocalLength(exif));
    if (const auto value = Whole(exif, "Exif.Photo.ExposureProgram"))
        info.ExposureProgramme = words.Word("ExposureProgram", *value);
    if (const auto value = Whole(exif, "Exif.Photo.MeteringMode"))
        info.MeteringMode = words.Word("MeteringMode", *value);
    if (const auto value = Whole(exif, "Exif.Photo.Flash")) info.Flash = words.FlashWord(*value);
}
