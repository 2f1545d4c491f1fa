#include "importhost/validate/framework/Clip.h"

#include "hostkit/system/Text.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace importhost::validate {

namespace {

aviwriter::Bytes bytesOf(const SampleRow& row) {
    const aviwriter::Bytes bytes = aviwriter::sampleBytes(row.options);
    return row.damage ? row.damage(bytes) : bytes;
}

Clip clipOf(const SampleRow& row, const std::filesystem::path& folder) {
    return {folder / row.name, row.name, row.kind,
            row.kind == ClipKind::Good ? std::optional(row.options) : std::nullopt};
}

// The last `parts` parts of a path.
std::filesystem::path endOf(const std::filesystem::path& path, int parts) {
    auto part = path.end();
    for (; parts > 0 && part != path.begin(); --parts) {
        --part;
    }
    std::filesystem::path end;
    for (; part != path.end(); ++part) {
        end /= *part;
    }
    return end;
}

// A file's name, behind as many of its folders as tell it from the other files.
std::string nameAmong(const std::vector<std::filesystem::path>& files, const std::filesystem::path& file) {
    int parts = 1;
    const auto isShared = [&](const std::filesystem::path& other) {
        return other != file && endOf(other, parts) == endOf(file, parts);
    };
    while (endOf(file, parts) != file && std::any_of(files.begin(), files.end(), isShared)) {
        ++parts;
    }
    return hostkit::toUtf8(endOf(file, parts));
}

}  // namespace

void writeFile(const std::filesystem::path& path, std::span<const std::uint8_t> bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!out.flush()) {
        throw std::runtime_error("'" + hostkit::toUtf8(path) + "' cannot be written.");
    }
}

void writeSamples(const std::filesystem::path& folder, int level) {
    for (const SampleRow& row : sampleRows()) {
        if (row.level <= level) {
            writeFile(folder / row.name, bytesOf(row));
        }
    }
}

std::vector<Clip> clipsOf(const std::vector<std::filesystem::path>& files, const std::filesystem::path& folder,
                          int level) {
    std::vector<Clip> clips;
    for (const std::filesystem::path& file : files) {
        clips.push_back({file, nameAmong(files, file), ClipKind::Unknown, std::nullopt});
    }
    if (files.empty()) {
        for (const SampleRow& row : sampleRows()) {
            if (row.level <= level) {
                clips.push_back(clipOf(row, folder));
            }
        }
    }
    return clips;
}

}  // namespace importhost::validate
