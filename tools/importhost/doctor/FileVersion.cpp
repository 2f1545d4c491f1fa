#include "importhost/doctor/FileVersion.h"

#include "hostkit/system/Text.h"

#include <algorithm>
#include <charconv>

namespace importhost::doctor {

namespace {

constexpr std::string_view kVersionResource = "#16";

// The fixed part begins with this number, lowest byte first; the file's version is 8 bytes after it.
constexpr std::array<std::uint8_t, 4> kFixedPart = {0xBD, 0x04, 0xEF, 0xFE};
constexpr std::size_t kVersionOffset = 8;
constexpr std::size_t kVersionBytes = 8;

// Null for files without such a resource.
const std::vector<std::uint8_t>* versionResource(const hostkit::LibraryFile& file) {
    if (file.resources) {
        for (const hostkit::LibraryResource& resource : *file.resources) {
            if (resource.type == kVersionResource) {
                return &resource.bytes;
            }
        }
    }
    return nullptr;
}

std::uint32_t wordAt(const std::vector<std::uint8_t>& bytes, std::size_t offset) {
    return bytes[offset] + 256U * bytes[offset + 1];
}

// The resource as 16-bit units: its texts are at even offsets.
std::u16string unitsOf(const std::vector<std::uint8_t>& bytes) {
    std::u16string units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        units += static_cast<char16_t>(wordAt(bytes, i));
    }
    return units;
}

}  // namespace

FileVersion versionOf(std::string_view text) {
    FileVersion version;
    for (std::uint32_t& number : version.numbers) {
        const std::size_t end = std::min(text.find('.'), text.size());
        std::from_chars(text.data(), text.data() + end, number);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return version;
}

std::string asText(const FileVersion& version) {
    std::string text;
    for (std::size_t i = 0; i < (version.numbers[3] == 0 ? 3U : 4U); ++i) {
        text.append(i == 0 ? "" : ".").append(std::to_string(version.numbers[i]));
    }
    return text;
}

std::optional<FileVersion> fileVersion(const hostkit::LibraryFile& file) {
    const std::vector<std::uint8_t>* bytes = versionResource(file);
    if (!bytes) {
        return std::nullopt;
    }
    const auto fixed = std::search(bytes->begin(), bytes->end(), kFixedPart.begin(), kFixedPart.end());
    const auto offset = static_cast<std::size_t>(fixed - bytes->begin()) + kVersionOffset;
    if (offset + kVersionBytes > bytes->size()) {
        return std::nullopt;
    }
    // Two 32-bit numbers, each with its more significant half in the upper 16 bits.
    return FileVersion{{wordAt(*bytes, offset + 2), wordAt(*bytes, offset), wordAt(*bytes, offset + 6),
                        wordAt(*bytes, offset + 4)}};
}

std::string fileDescription(const hostkit::LibraryFile& file) {
    const std::vector<std::uint8_t>* bytes = versionResource(file);
    if (!bytes) {
        return "";
    }
    const std::u16string units = unitsOf(*bytes);
    const std::u16string key = std::u16string(u"FileDescription") + u'\0';
    const std::size_t found = units.find(key);
    if (found == std::u16string::npos) {
        return "";
    }
    const std::size_t start = units.find_first_not_of(u'\0', found + key.size());
    return start == std::u16string::npos ? "" : hostkit::toUtf8(units.substr(start, units.find(u'\0', start) - start));
}

}  // namespace importhost::doctor
