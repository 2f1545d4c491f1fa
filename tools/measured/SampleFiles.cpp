#include "measured/SampleFiles.h"

#include <cstdlib>

std::filesystem::path sampleFolder() {
    const char* folder = std::getenv("QUORVANE_BENCH_FILES");
    return folder != nullptr && *folder != '\0' ? std::filesystem::path(folder)
                                                : std::filesystem::temp_directory_path() / "quorvane-bench";
}

std::filesystem::path sampleFile(const std::string& name, const aviwriter::SampleOptions& options) {
    std::filesystem::path file = sampleFolder() / name;
    if (!std::filesystem::exists(file)) {
        std::filesystem::create_directories(file.parent_path());
        // A partly written file must not be mistaken for a complete one.
        const std::filesystem::path unfinished = file.string() + ".part";
        aviwriter::FileSink sink(unfinished);
        aviwriter::writeSample(options, sink);
        sink.close();
        std::filesystem::rename(unfinished, file);
    }
    return file;
}
