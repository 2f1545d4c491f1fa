// A file that appears under its name only when it is complete: until then it is NAME.part, and it goes away when the
// writing fails.
#pragma once

#include "aviwriter/ByteSink.h"

#include <filesystem>
#include <optional>

namespace avirepair {

class NewFile {
public:
    // Throws std::runtime_error with a sentence when `path` is one of `inputs` by whatever name, when it exists and
    // must not be overwritten, when the disk has less room than `bytes`, or when it cannot be made.
    NewFile(std::filesystem::path path, const std::vector<std::filesystem::path>& inputs, bool overwrites,
            std::uint64_t bytes);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    aviwriter::ByteSink& sink() { return *m_sink; }

    // Throws std::runtime_error when the disk refuses.
    void finish();

private:
    std::filesystem::path m_path;
    std::filesystem::path m_part;
    std::optional<aviwriter::FileSink> m_sink;
};

}  // namespace avirepair
