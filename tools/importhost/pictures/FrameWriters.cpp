#include "importhost/pictures/FrameWriters.h"

#include "hostkit/system/Text.h"
#include "importhost/pictures/Picture.h"
#include "importhost/pictures/PngFile.h"

#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace importhost {

namespace {

class FileWriter : public FrameWriter {
public:
    FileWriter(std::filesystem::path folder, std::string stem)
        : m_folder(std::move(folder)), m_stem(std::move(stem)) {}

protected:
    std::filesystem::path pathOf(std::int64_t index, const std::string& ending) const {
        char number[32] = {};
        std::snprintf(number, sizeof(number), "_%06lld", static_cast<long long>(index));
        return m_folder / hostkit::pathFromUtf8(m_stem + number + ending);
    }

private:
    std::filesystem::path m_folder;
    std::string m_stem;
};

class PngWriter : public FileWriter {
public:
    using FileWriter::FileWriter;

    void write(const hostkit::FrameView& frame, std::int64_t index) override {
        const std::optional<Picture> picture = pictureOf(frame);
        if (!picture) {
            throw std::runtime_error("No picture can be made of the pixel format " + hostkit::codeText(frame.format) +
                                     "; raw and checksum work with it.");
        }
        writePng(*picture, pathOf(index, ".png"));
    }
};

class RawWriter : public FileWriter {
public:
    using FileWriter::FileWriter;

    void write(const hostkit::FrameView& frame, std::int64_t index) override {
        const std::vector<std::uint8_t> bytes = rowsOf(frame);
        const std::filesystem::path path = pathOf(index, "." + hostkit::codeText(frame.format));
        std::ofstream out(path, std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        out.close();
        if (!out) {
            throw std::runtime_error("'" + hostkit::toUtf8(path) + "' cannot be written.");
        }
    }
};

class ChecksumWriter : public FrameWriter {
public:
    void write(const hostkit::FrameView& frame, std::int64_t index) override {
        std::cout << checksumLine(frame, index) << "\n";
    }
};

template <class Writer>
std::unique_ptr<FrameWriter> makeFiles(const std::filesystem::path& folder, const std::string& stem) {
    return std::make_unique<Writer>(folder, stem);
}

std::unique_ptr<FrameWriter> makeChecksums(const std::filesystem::path&, const std::string&) {
    return std::make_unique<ChecksumWriter>();
}

}  // namespace

const std::vector<FrameWriterRow>& frameWriters() {
    static const std::vector<FrameWriterRow> rows = {
        {"png", "PNG files at the format's own depth, alpha kept", makeFiles<PngWriter>, true},
        {"raw", "files of the rows without padding, top row first", makeFiles<RawWriter>, true},
        {"checksum", "a line per frame with the CRC-32 of what raw would write", makeChecksums, false},
    };
    return rows;
}

const FrameWriterRow* findFrameWriter(const std::string& name) {
    const auto& rows = frameWriters();
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&name](const FrameWriterRow& row) { return row.name == name; });
    return found == rows.end() ? nullptr : &*found;
}

std::string checksumLine(const hostkit::FrameView& frame, std::int64_t index) {
    const std::vector<std::uint8_t> bytes = rowsOf(frame);
    const uLong sum = crc32_z(crc32_z(0, nullptr, 0), bytes.data(), bytes.size());
    char line[96] = {};
    std::snprintf(line, sizeof(line), "%06lld  %s  %dx%d  %08lx", static_cast<long long>(index),
                  hostkit::codeText(frame.format).c_str(), static_cast<int>(frame.width()),
                  static_cast<int>(frame.height()), static_cast<unsigned long>(sum));
    return line;
}

}  // namespace importhost
