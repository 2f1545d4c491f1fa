// Runs a fuzz target over files, without the fuzzing engine.
//   replay_NAME FILE_OR_FOLDER...
// Prints the number of inputs. If an input ends the process, the last line names it.
#include "targets/Target.h"

#include "commandline/Arguments.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// Sorted by name, so that every run is the same.
std::vector<fs::path> filesOf(const fs::path& path) {
    if (!fs::is_directory(path)) {
        return {path};
    }
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_regular_file() && entry.path().extension() != ".md") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool replay(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (!stream.is_open() || stream.bad()) {
        return false;
    }
    // A copy that ends where the input ends, so that reading past it shows.
    const auto input = std::make_unique<std::uint8_t[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), input.get());
    LLVMFuzzerTestOneInput(input.get(), bytes.size());
    return true;
}

int run(const std::vector<std::string>& paths) {
    std::size_t count = 0;
    for (const std::string& path : paths) {
        for (const fs::path& file : filesOf(hostkit::pathFromUtf8(path))) {
            std::fprintf(stderr, "\r%s", hostkit::toUtf8(file).c_str());
            if (!replay(file)) {
                std::fputs(": cannot be read\n", stderr);
                return 1;
            }
            ++count;
        }
    }
    std::printf("\n%zu inputs\n", count);
    return count == 0 ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    return run(utf8Arguments(argc, argv));
}
