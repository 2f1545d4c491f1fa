#include "fileio/ReadHelpers.h"

#include <stdexcept>
#include <string>

namespace fileio {

void readExact(File& file, void* buffer, std::uint64_t size) {
    const std::uint64_t read = file.read(buffer, size);
    if (read != size) {
        throwReadError(size, read);
    }
}

void throwReadError(std::uint64_t size, std::uint64_t read) {
    throw std::runtime_error("Read error: size: " + std::to_string(size) + ", read: " + std::to_string(read));
}

void seekOrThrow(File& file, std::int64_t pos) {
    if (!file.seek(pos)) {
        throw std::runtime_error("Seek error: pos: " + std::to_string(pos));
    }
}

}  // namespace fileio
