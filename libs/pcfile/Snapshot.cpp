// SPDX-License-Identifier: GPL-3.0-or-later
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "FileBytes.h"
#include "Parallel.h"
#include "PC_File.h"

// A snapshot is one page of header, then the pixels as they lie in memory. The header's sums make the file valid: one
// over the header, one over the sums of the pixel chunks. A write that ends halfway leaves pixels that do not fit the
// sum.

namespace {

constexpr std::size_t PixelOffset = 4096;
constexpr std::size_t ChunkBytes = 1 << 20;

struct Header {
    std::array<char, 8> magic = {'Q', 'U', 'I', 'N', 'S', 'N', 'A', 'P'};
    std::uint32_t version = 2;
    std::uint32_t pixelFormat = 0x26200A;  // 32-bit straight ARGB
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint64_t pixelBytes = 0;
    std::uint64_t pixelSum = 0;
    std::uint64_t headerSum = 0;  // over everything before it
};
static_assert(sizeof(Header) == 48);

// A sum of eight lanes, each a chain of steps that can be undone, so that a change of any single word shows for
// certain. The lanes are independent, which lets the processor run them side by side faster than memory delivers.
std::uint64_t SumOf(const std::uint8_t* bytes, std::size_t count) {
    constexpr std::uint64_t multiplier = 0x9E3779B97F4A7C15u;
    std::array<std::uint64_t, 8> lanes;
    for (std::size_t i = 0; i < lanes.size(); ++i) lanes[i] = count + multiplier * i;
    std::array<std::uint64_t, 8> words;
    while (count > 0) {
        const std::size_t part = std::min(count, sizeof words);
        if (part < sizeof words) words.fill(0);
        std::memcpy(words.data(), bytes, part);
        for (std::size_t i = 0; i < lanes.size(); ++i) lanes[i] = (lanes[i] ^ words[i]) * multiplier;
        bytes += part;
        count -= part;
    }
    std::uint64_t sum = 0;
    for (const std::uint64_t lane : lanes) sum = ((sum ^ lane ^ (lane >> 29)) * multiplier) ^ (sum >> 31);
    return sum;
}

std::uint64_t HeaderSum(const Header& header) {
    return SumOf(reinterpret_cast<const std::uint8_t*>(&header), offsetof(Header, headerSum));
}

class Handle {
  public:
    Handle(const std::filesystem::path& path, int flags) : m_file(::open(path.c_str(), flags | O_CLOEXEC, 0600)) {}
    ~Handle() {
        if (m_file >= 0) ::close(m_file);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool IsRegular(std::uint64_t& size) const {
        struct stat about = {};
        if (m_file < 0 || ::fstat(m_file, &about) != 0 || !S_ISREG(about.st_mode)) return false;
        size = static_cast<std::uint64_t>(about.st_size);
        return true;
    }
    bool Resize(std::uint64_t size) const { return ::ftruncate(m_file, static_cast<off_t>(size)) == 0; }
    bool Write(const void* bytes, std::size_t count, std::size_t at) const {
        const char* next = static_cast<const char*>(bytes);
        return Move(count, at, [&](std::size_t left, off_t place) {
            const ssize_t moved = ::pwrite(m_file, next, left, place);
            if (moved > 0) next += moved;
            return moved;
        });
    }
    bool Read(void* bytes, std::size_t count, std::size_t at) const {
        char* next = static_cast<char*>(bytes);
        return Move(count, at, [&](std::size_t left, off_t place) {
            const ssize_t moved = ::pread(m_file, next, left, place);
            if (moved > 0) next += moved;
            return moved;
        });
    }

  private:
    template <class Step>
    static bool Move(std::size_t count, std::size_t at, Step step) {
        while (count > 0) {
            const ssize_t moved = step(count, static_cast<off_t>(at));
            if (moved < 0 && errno == EINTR) continue;
            if (moved <= 0) return false;
            count -= static_cast<std::size_t>(moved);
            at += static_cast<std::size_t>(moved);
        }
        return true;
    }
    int m_file;
};

// Calls body(chunk, first byte, byte count) for every chunk, on all cores; false when one did.
template <class Body>
bool ForEachChunk(std::size_t bytes, const Body& body) {
    const int chunks = static_cast<int>((bytes + ChunkBytes - 1) / ChunkBytes);
    std::atomic<bool> good{true};
    ForEachBand(chunks, 1, [&](int first, int last) {
        for (int i = first; i < last && good; ++i) {
            const std::size_t at = std::size_t(i) * ChunkBytes;
            if (!body(i, at, std::min(ChunkBytes, bytes - at))) good = false;
        }
    });
    return good;
}

std::vector<std::uint64_t> SumsFor(std::size_t bytes) {
    return std::vector<std::uint64_t>((bytes + ChunkBytes - 1) / ChunkBytes);
}

std::uint64_t Total(const std::vector<std::uint64_t>& sums) {
    return SumOf(reinterpret_cast<const std::uint8_t*>(sums.data()), sums.size() * sizeof(std::uint64_t));
}

bool HeaderIsGood(const Header& header, std::uint64_t fileSize) {
    const Header right;
    return header.magic == right.magic && header.version == right.version && header.headerSum == HeaderSum(header) &&
           header.pixelFormat == right.pixelFormat && Bitmap::Allowed(header.width, header.height) &&
           header.pixelBytes == std::uint64_t{4} * header.width * header.height &&
           fileSize == PixelOffset + header.pixelBytes;
}

}  // namespace

bool PC_File::ImageSaveTobinary(const Bitmap& bitmap, const std::wstring& path) {
    const std::filesystem::path name = FilePath(path.c_str());
    if (!bitmap || name.empty()) return false;
    // Overwriting in place keeps the file's blocks, which costs half of making new ones.
    const Handle file(name, O_RDWR | O_CREAT | O_NOFOLLOW);
    std::uint64_t oldSize = 0;
    if (!file.IsRegular(oldSize)) return false;
    const std::uint64_t newSize = PixelOffset + bitmap.ByteCount();
    if (oldSize > newSize && !file.Resize(newSize)) return false;
    std::vector<std::uint64_t> sums = SumsFor(bitmap.ByteCount());
    const std::uint8_t* pixels = bitmap.Pixels();
    const bool written = ForEachChunk(bitmap.ByteCount(), [&](int i, std::size_t at, std::size_t count) {
        sums[i] = SumOf(pixels + at, count);
        return file.Write(pixels + at, count, PixelOffset + at);
    });
    Header header;
    header.width = bitmap.Width();
    header.height = bitmap.Height();
    header.pixelBytes = bitmap.ByteCount();
    header.pixelSum = Total(sums);
    header.headerSum = HeaderSum(header);
    std::array<char, PixelOffset> page = {};
    std::memcpy(page.data(), &header, sizeof header);
    if (written && file.Write(page.data(), page.size(), 0)) return true;
    // What a full disk left is of no use, and its room is wanted.
    file.Resize(0);
    return false;
}

Bitmap PC_File::ImageReadFrombinary(const std::wstring& path) {
    const std::filesystem::path name = FilePath(path.c_str());
    if (name.empty()) return {};
    const Handle file(name, O_RDONLY | O_NONBLOCK);
    std::uint64_t size = 0;
    Header header;
    if (!file.IsRegular(size) || size < PixelOffset || !file.Read(&header, sizeof header, 0)) return {};
    if (!HeaderIsGood(header, size)) return {};
    Bitmap bitmap = Bitmap::Uninitialised(header.width, header.height);
    std::vector<std::uint64_t> sums = SumsFor(bitmap.ByteCount());
    std::uint8_t* pixels = bitmap.MutablePixels();
    const bool read = ForEachChunk(bitmap.ByteCount(), [&](int i, std::size_t at, std::size_t count) {
        if (!file.Read(pixels + at, count, PixelOffset + at)) return false;
        sums[i] = SumOf(pixels + at, count);
        return true;
    });
    return read && Total(sums) == header.pixelSum ? bitmap : Bitmap();
}
