#include "commandline/OpenFailure.h"

#include <cerrno>
#include <fstream>
#include <system_error>

std::string openFailure(const std::filesystem::path& path) {
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    if (status.type() == std::filesystem::file_type::not_found) {
        return "there is no such file";
    }
    if (std::filesystem::is_directory(status)) {
        return "it is a directory";
    }
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        return "it is not a regular file";
    }
    errno = 0;
    if (!std::ifstream(path, std::ios::binary)) {
        return "the system refuses it: " + std::generic_category().message(errno);
    }
    return "it can be read; perhaps another program is writing it";
}
