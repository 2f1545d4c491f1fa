#include "importhost/pictures/PngFile.h"

#include "hostkit/system/Text.h"

#include <png.h>

#include <fstream>
#include <stdexcept>

namespace importhost {

namespace {

[[noreturn]] void failed(png_structp, png_const_charp message) { throw std::runtime_error(message); }
void warned(png_structp, png_const_charp) {}

void appendBytes(png_structp png, png_bytep bytes, std::size_t count) {
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(bytes), count);
}
void flushBytes(png_structp) {}

// libpng's two structures, freed together.
class PngRecords {
public:
    PngRecords()
        : m_png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, failed, warned)),
          m_info(m_png ? png_create_info_struct(m_png) : nullptr) {
        if (!m_info) {
            png_destroy_write_struct(&m_png, nullptr);
            throw std::runtime_error("libpng cannot be started");
        }
    }
    ~PngRecords() { png_destroy_write_struct(&m_png, &m_info); }
    PngRecords(const PngRecords&) = delete;
    PngRecords& operator=(const PngRecords&) = delete;

    png_structp png() const { return m_png; }
    png_infop info() const { return m_info; }

private:
    png_structp m_png;
    png_infop m_info;
};

// A row as stored in the file: 16-bit components with the high byte first.
void packRow(const Picture& picture, std::size_t first, std::size_t count, std::vector<png_byte>& out) {
    out.clear();
    for (std::size_t i = first; i < first + count; ++i) {
        if (picture.bits == 16) {
            out.push_back(static_cast<png_byte>(picture.components[i] >> 8));
        }
        out.push_back(static_cast<png_byte>(picture.components[i] & 0xFF));
    }
}

}  // namespace

std::string pngBytes(const Picture& picture) {
    std::string bytes;
    const PngRecords records;
    png_set_write_fn(records.png(), &bytes, appendBytes, flushBytes);
    png_set_IHDR(records.png(), records.info(), static_cast<png_uint_32>(picture.width),
                 static_cast<png_uint_32>(picture.height), picture.bits,
                 picture.hasAlpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(records.png(), records.info());
    const auto rowComponents = static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.channels());
    std::vector<png_byte> row;
    for (int y = 0; y < picture.height; ++y) {
        packRow(picture, static_cast<std::size_t>(y) * rowComponents, rowComponents, row);
        png_write_row(records.png(), row.data());
    }
    png_write_end(records.png(), nullptr);
    return bytes;
}

void writePng(const Picture& picture, const std::filesystem::path& path) {
    std::ofstream out(path, std::ios::binary);
    if (out) {
        const std::string bytes = pngBytes(picture);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    if (!out.flush()) {
        throw std::runtime_error("'" + hostkit::toUtf8(path) + "' cannot be written.");
    }
}

}  // namespace importhost
