#include "measured/SampleFiles.h"

#include <cstdlib>

std::filesystem::path sampleFolder() {
    const char* folder = std::getenv("QUORVANE_BENCH_FILES");
    return folder != nullptr && *folder != '\0' ? std::filesystem::path(folder)
                                                : std::filesystem::temp_directory_path() / "quorvane-bench";
}

std::filesystem::path sampleFile(const std::string& name, const aviwriter::SampleOptions& options) {
    const std::filesystem::path file = sampleFolder() / name;
    if (!std::filesystem::exists(file)) {
        std::filesystem::create_directories(file.parent_path());
        // A file that was left half written must not be taken for a whole one.
        const std::filesystem::path unfinished = file.string() + ".part";
        aviwriter::FileSink sink(unfinished);
        aviwriter::writeSample(options, sink);
        sink.close();
        std::filesystem::rename(unfinished, file);
    }
    return file;
}
