// SPDX-License-Identifier: GPL-3.0-or-later
#include "PC_File.h"

#include <algorithm>

#include "CodecModule.h"
#include "FileBytes.h"
#include "MemoryTarget.h"
#include "Metadata.h"
#include "PictureFormat.h"
#include "Readers.h"
#include "ScaleBitmap.h"
#include "WideText.h"
#include "Writers.h"

struct PC_File::State {
    ExifWords words;
    std::unique_ptr<tag_ImageInfo> info;
    std::unique_ptr<Metadata> metadata;

    // Decodes a whole file in memory and remembers what it said of itself.
    Bitmap Load(const std::uint8_t* data, std::size_t size, const std::wstring& name, const ProgressSpan& span);
};

namespace {

// JPEGs of this quality and above keep their chroma in full.
constexpr int FullChromaFrom = 90;

// What saved files name as the software that wrote them.
constexpr const char* Software = "QUINCE " QUINCE_VERSION;

bool Read(PictureFormat format, const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    switch (format) {
        case PictureFormat::Unknown:
            return false;
        case PictureFormat::Jpeg:
            return ReadJpeg(data, size, target);
        case PictureFormat::Png:
            return ReadPng(data, size, target);
        case PictureFormat::Bmp:
            return ReadBmp(data, size, target);
        case PictureFormat::Gif:
            return ReadGif(data, size, target);
        case PictureFormat::Ico:
        case PictureFormat::Wbmp:
            return ReadByQt(format, data, size, target);
        default:
            return ReadByModule(format, data, size, target);
    }
}

// A whole number of KB, from 10 MB on of MB; never 0.
std::wstring SizeText(std::uint64_t bytes) {
    const std::uint64_t kilobytes = std::max<std::uint64_t>(1, (bytes + 512) / 1024);
    if (kilobytes < 10240) return std::to_wstring(kilobytes) + L"KB";
    return std::to_wstring((kilobytes + 512) / 1024) + L"MB";
}

}  // namespace

PC_File::PC_File() : m_state(std::make_unique<State>()) {}
PC_File::~PC_File() = default;
PC_File::PC_File(PC_File&&) noexcept = default;
PC_File& PC_File::operator=(PC_File&&) noexcept = default;

Bitmap PC_File::State::Load(const std::uint8_t* data, std::size_t size, const std::wstring& name,
                            const ProgressSpan& span) {
    const PictureFormat format = SniffPicture(data, size, size);
    MemoryTarget target(span);
    if (!Read(format, data, size, target)) return {};
    const Bitmap picture = target.Finish();
    if (!picture) return {};
    auto record = std::make_unique<tag_ImageInfo>();
    record->FileName = name;
    record->Format = FormatName(format);
    record->Dimensions = std::to_wstring(picture.Width()) + L" x " + std::to_wstring(picture.Height());
    record->FileSize = SizeText(size);
    auto found = Metadata::Read(data, size);
    found->FillInfo(words, *record);
    info = std::move(record);
    metadata = std::move(found);
    span.Report(1, 1);
    return picture;
}

Bitmap PC_File::OnLoadImage(const wchar_t* path, CObjProgress* progress, int start, int end, const wchar_t*) {
    return OnLoadImage(path, 0L, 0, progress, start, end);
}

Bitmap PC_File::OnLoadImage(const wchar_t* path, long offset, int length, CObjProgress* progress, int start, int end) {
    const std::filesystem::path file = FilePath(path);
    FileBytes bytes;
    if (length < 0 || !bytes.Open(file, offset)) return {};
    const std::uint64_t wanted = length > 0 ? static_cast<std::uint64_t>(length) : bytes.TotalSize();
    if (wanted > bytes.TotalSize()) return {};
    const std::size_t head = std::min<std::uint64_t>(bytes.Size(), wanted);
    // Files that are no pictures are not read whole.
    if (SniffPicture(bytes.Data(), head, wanted) == PictureFormat::Unknown || !bytes.ReadAll()) return {};
    return m_state->Load(bytes.Data(), wanted, WideText(file.filename().string()), {progress, start, end});
}

Bitmap PC_File::OnLoadImage(const unsigned char* data, int size, int, CObjProgress* progress, int start, int end) {
    if (!data || size < 1) return {};
    return m_state->Load(data, static_cast<std::size_t>(size), {}, {progress, start, end});
}

const tag_ImageInfo* PC_File::GetImageInfo() const {
    return m_state->info.get();
}

void PC_File::SetExifXml(const std::wstring& iniFile) {
    m_state->words.Load(iniFile);
}

int PC_File::OnSaveQuick(const wchar_t* path, const Bitmap& bitmap, int format, int quality) {
    const std::filesystem::path file = FilePath(path);
    if (!bitmap || file.empty()) return 0;
    ByteVector bytes;
    if (format == VN_IMAGE_FORMAT_JPEG) {
        ByteVector segments;
        if (m_state->metadata) segments = m_state->metadata->JpegSegments(bitmap, Software);
        AppendProfileSegments(SrgbProfile(), segments);
        const Chroma chroma = quality >= FullChromaFrom ? Chroma::Full : Chroma::Halved;
        if (!EncodeJpeg(bitmap, quality, chroma, segments, {}, bytes)) return 0;
    } else if (format == VN_IMAGE_FORMAT_PNG) {
        ByteVector chunks;
        if (m_state->metadata) chunks = m_state->metadata->PngChunks(bitmap, Software);
        if (!EncodePng(bitmap, chunks, {}, bytes)) return 0;
    } else if (format == VN_IMAGE_FORMAT_BMP) {
        bytes = EncodeBmp(bitmap);
    }
    return !bytes.empty() && WriteWhole(file, bytes) ? 1 : 0;
}

int PC_File::OnSaveQuick(const wchar_t* path, const Bitmap& bitmap, int width, int height, int format, int quality) {
    if (width < 1 || height < 1) return OnSaveQuick(path, bitmap, format, quality);
    return OnSaveQuick(path, ScaleBitmap(bitmap, width, height), format, quality);
}

int PC_File::OnSaveHDJpeg(const wchar_t* path, const Bitmap& bitmap, int quality, int, CObjProgress* progress,
                          int start, int end) {
    const std::filesystem::path file = FilePath(path);
    if (!bitmap || file.empty()) return 0;
    ByteVector segments, bytes;
    AppendProfileSegments(SrgbProfile(), segments);
    return EncodeJpeg(bitmap, quality, Chroma::Full, segments, {progress, start, end}, bytes) && WriteWhole(file, bytes)
               ? 1
               : 0;
}
