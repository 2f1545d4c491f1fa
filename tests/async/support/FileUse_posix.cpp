#include "FileUse.h"

bool isInUse(const std::filesystem::path& path) {
    const std::filesystem::path wanted = std::filesystem::weakly_canonical(path);
    for (const auto& descriptor : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code closed;
        if (std::filesystem::read_symlink(descriptor.path(), closed) == wanted) {
            return true;
        }
    }
    return false;
}
