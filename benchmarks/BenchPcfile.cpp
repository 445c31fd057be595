// SPDX-License-Identifier: GPL-3.0-or-later
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
// The JPEG header needs size_t and FILE before it.
#include <jpeglib.h>
#include <png.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "Bench.h"
#include "BenchJpeg.h"
#include "PC_File.h"

// Picture files: each row against the plain use of the library underneath, or of the system call, in the same run.

namespace {

using Bytes = std::vector<unsigned char>;

// A folder for the files of a run, on the disk that temporary files go to.
class BenchFolder {
  public:
    BenchFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "quince-bench-XXXXXX").string();
        m_path = ::mkdtemp(name.data()) ? name : ".";
    }
    ~BenchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    std::wstring Wide(const char* name) const { return (m_path / name).wstring(); }
    std::string Name(const char* name) const { return (m_path / name).string(); }

  private:
    std::filesystem::path m_path;
};

Bytes JpegByLibrary(const Bitmap& picture) {
    jpeg_compress_struct state = {};
    jpeg_error_mgr errors = {};
    state.err = jpeg_std_error(&errors);
    jpeg_create_compress(&state);
    unsigned char* memory = nullptr;
    unsigned long count = 0;
    jpeg_mem_dest(&state, &memory, &count);
    state.image_width = picture.Width();
    state.image_height = picture.Height();
    state.input_components = 4;
    state.in_color_space = JCS_EXT_BGRX;
    jpeg_set_defaults(&state);
    jpeg_set_quality(&state, 90, TRUE);
    state.comp_info[0].h_samp_factor = state.comp_info[0].v_samp_factor = 1;
    state.optimize_coding = TRUE;
    jpeg_start_compress(&state, TRUE);
    for (int y = 0; y < picture.Height(); ++y) {
        JSAMPROW row = const_cast<JSAMPROW>(picture.Row(y));
        jpeg_write_scanlines(&state, &row, 1);
    }
    jpeg_finish_compress(&state);
    Bytes bytes(memory, memory + count);
    jpeg_destroy_compress(&state);
    std::free(memory);
    return bytes;
}

std::size_t PngBytesByLibrary(const Bitmap& picture) {
    std::size_t total = 0;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(
        png, &total,
        [](png_structp p, png_bytep, std::size_t count) { *static_cast<std::size_t*>(png_get_io_ptr(p)) += count; },
        nullptr);
    png_set_IHDR(png, info, picture.Width(), picture.Height(), 8, PNG_COLOR_TYPE_RGB, 0, 0, 0);
    png_set_compression_level(png, 1);
    png_write_info(png, info);
    png_set_filler(png, 0, PNG_FILLER_AFTER);
    png_set_bgr(png);
    for (int y = 0; y < picture.Height(); ++y) png_write_row(png, picture.Row(y));
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return total;
}

// Writes over an existing file with plain write(), or reads with plain read().
double PlainMs(const std::string& name, Bitmap& buffer, bool writing) {
    return MedianMs(9, [&] {
        const int file = ::open(name.c_str(), writing ? O_WRONLY | O_CREAT : O_RDONLY, 0600);
        std::uint8_t* bytes = buffer.MutablePixels();
        for (std::size_t at = 0; at < buffer.ByteCount();) {
            const ssize_t moved = writing ? ::write(file, bytes + at, buffer.ByteCount() - at)
                                          : ::read(file, bytes + at, buffer.ByteCount() - at);
            if (moved <= 0) break;
            at += static_cast<std::size_t>(moved);
        }
        ::close(file);
    });
}

}  // namespace

static const BenchCase decodeJpeg("decode.jpeg", [](BenchReport& report) {
    const BenchFolder folder;
    for (const BenchSize& size : BenchSizes) {
        const Bytes bytes = JpegByLibrary(BenchPicture(size));
        Bitmap into = BenchPicture(size).Clone();
        const double reference = MedianMs(9, [&] { DecodeByLibrary(bytes, into); });
        const std::string name = folder.Name("a.jpg");
        std::FILE* file = std::fopen(name.c_str(), "wb");
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
        PC_File files;
        const std::wstring path = folder.Wide("a.jpg");
        const double ms = MedianMs(9, [&] { files.OnLoadImage(path.c_str(), nullptr, 0, 100, nullptr); });
        report.Add("decode.jpeg", size.Megapixels(), ms, "libjpeg-turbo decode", reference);
    }
});

static const BenchCase decodeBmp("decode.bmp", [](BenchReport& report) {
    const BenchFolder folder;
    for (const BenchSize& size : BenchSizes) {
        PC_File files;
        const std::wstring path = folder.Wide("a.bmp");
        files.OnSaveQuick(path.c_str(), BenchPicture(size), VN_IMAGE_FORMAT_BMP, 0);
        const double ms = MedianMs(9, [&] { files.OnLoadImage(path.c_str(), nullptr, 0, 100, nullptr); });
        report.Add("decode.bmp", size.Megapixels(), ms, "copy", CopyMs(size));
    }
});

static const BenchCase saveJpeg("save.jpeg", [](BenchReport& report) {
    const BenchFolder folder;
    for (const BenchSize& size : BenchSizes) {
        const Bitmap picture = BenchPicture(size);
        const double reference = MedianMs(5, [&] { JpegByLibrary(picture); });
        PC_File files;
        const std::wstring path = folder.Wide("a.jpg");
        const double ms = MedianMs(5, [&] { files.OnSaveQuick(path.c_str(), picture, VN_IMAGE_FORMAT_JPEG, 90); });
        report.Add("save.jpeg", size.Megapixels(), ms, "libjpeg-turbo encode", reference);
    }
});

static const BenchCase savePng("save.png", [](BenchReport& report) {
    const BenchFolder folder;
    for (const BenchSize& size : BenchSizes) {
        const Bitmap picture = BenchPicture(size);
        PC_File files;
        const std::wstring path = folder.Wide("a.png");
        const double ms = MedianMs(5, [&] { files.OnSaveQuick(path.c_str(), picture, VN_IMAGE_FORMAT_PNG, 90); });
        report.Add("save.png", size.Megapixels(), ms, "copy", CopyMs(size));
        // Sizes in MB: the file against what libpng makes at level 1.
        const double written = static_cast<double>(std::filesystem::file_size(folder.Name("a.png"))) / 1e6;
        report.Add("save.png.size", size.Megapixels(), written, "libpng level 1",
                   static_cast<double>(PngBytesByLibrary(picture)) / 1e6);
    }
});

static const BenchCase snapshotRows("snapshot", [](BenchReport& report) {
    const BenchFolder folder;
    for (const BenchSize& size : BenchSizes) {
        Bitmap picture = BenchPicture(size).Clone();
        const std::wstring path = folder.Wide("snapshot.bin");
        const double plainWrite = PlainMs(folder.Name("plain.bin"), picture, true);
        const double write = MedianMs(9, [&] { PC_File::ImageSaveTobinary(picture, path); });
        report.Add("snapshot.write", size.Megapixels(), write, "write()", plainWrite);
        const double plainRead = PlainMs(folder.Name("plain.bin"), picture, false);
        const double read = MedianMs(9, [&] { PC_File::ImageReadFrombinary(path); });
        report.Add("snapshot.read", size.Megapixels(), read, "read()", plainRead);
    }
});
