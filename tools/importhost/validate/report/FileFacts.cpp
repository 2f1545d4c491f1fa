#include "importhost/validate/report/FileFacts.h"

#include "importhost/validate/report/RunTime.h"

#include <fstream>
#include <iterator>

namespace importhost::validate {

namespace {

constexpr std::uint64_t kMostLibraryBytes = 256U << 20;

// The fixed part of a version resource: signature, version of the structure, then the file's version as two numbers.
constexpr std::string_view kSignature("\xBD\x04\xEF\xFE\x00\x00\x01\x00", 8);
constexpr std::size_t kMajorMinorAt = 8;
constexpr std::size_t kBuildAt = 12;

unsigned word(std::string_view bytes, std::size_t at) {
    const unsigned low = static_cast<unsigned char>(bytes[at]);
    const unsigned high = static_cast<unsigned char>(bytes[at + 1]);
    return low | high << 8;
}

std::string modifiedText(const std::filesystem::path& path) {
    std::error_code error;
    const auto modified = std::filesystem::last_write_time(path, error);
    if (error) {
        return {};
    }
    // The file system's clock need not count from the system clock's start: the distance to now is the same in both.
    const auto age = std::filesystem::file_time_type::clock::now() - modified;
    return dateText(RunClock::now() - std::chrono::duration_cast<RunClock::duration>(age));
}

}  // namespace

FileFacts factsOf(const std::filesystem::path& path) {
    std::error_code error;
    const std::uintmax_t bytes = std::filesystem::file_size(path, error);
    return {error ? 0 : bytes, modifiedText(path)};
}

std::string versionInBytes(std::string_view bytes) {
    const std::size_t at = bytes.find(kSignature);
    if (at == std::string_view::npos || at + kBuildAt + 4 > bytes.size()) {
        return {};
    }
    std::string text = std::to_string(word(bytes, at + kMajorMinorAt + 2));
    for (const std::size_t part : {kMajorMinorAt, kBuildAt + 2, kBuildAt}) {
        text.append(".").append(std::to_string(word(bytes, at + part)));
    }
    return text;
}

std::string libraryVersion(const std::filesystem::path& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size > kMostLibraryBytes) {
        return {};
    }
    std::ifstream in(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    return versionInBytes(bytes);
}

}  // namespace importhost::validate
