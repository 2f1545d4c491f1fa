#include "damage/catalogue/FilesOnDisk.h"

#include "aviwriter/ByteSink.h"

#include <string>

namespace damage {

std::filesystem::path writeBytes(const std::filesystem::path& path, const Bytes& bytes) {
    aviwriter::FileSink sink(path);
    sink.write(0, bytes);
    sink.close();
    return path;
}

bool canHold(const std::filesystem::path& folder, std::uint64_t zeros) {
    if (zeros == 0) {
        return true;
    }
    const std::filesystem::path path = writeBytes(folder / "zeros", {});
    std::error_code error;
    std::filesystem::resize_file(path, zeros, error);
    std::filesystem::remove(path);
    return !error;
}

std::filesystem::path writeDamaged(const std::filesystem::path& folder, const DamagedFile& file) {
    const Bytes bytes = file.make();
    const std::filesystem::path path = writeBytes(folder / (std::string(file.name) + ".avi"), bytes);
    if (file.zerosAfter > 0) {
        // A hole, if the file system supports holes.
        std::filesystem::resize_file(path, bytes.size() + file.zerosAfter);
    }
    return path;
}

}  // namespace damage
