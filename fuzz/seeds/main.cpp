// Writes the seeds: small files of every kind that the sample writer knows, followed by scripts.
//   fuzz_seeds FOLDER [AVI_FILE...]
// Creates the folders parser, import, repair, audio_format and standin. The named files are added as further seeds.
#include "seeds/Seeds.h"

#include "commandline/Arguments.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

fuzz::Bytes readFile(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("a seed cannot be read");
    }
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    return fuzz::Bytes(bytes.begin(), bytes.end());
}

void writeFile(const fs::path& path, const fuzz::Bytes& bytes) {
    std::ofstream stream(path, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!stream.flush()) {
        throw std::runtime_error("a seed cannot be written");
    }
}

void write(const fs::path& folder, const fuzz::SeedList& seeds) {
    fs::create_directories(folder);
    for (const fuzz::Seed& seed : seeds) {
        writeFile(folder / ("seed-" + seed.name), seed.bytes);
    }
    std::printf("%zu seeds in %s\n", seeds.size(), folder.filename().string().c_str());
}

void run(const std::vector<std::string>& arguments) {
    const fs::path folder = arguments.at(0);
    fuzz::SeedList files = fuzz::sampleFiles();
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const fs::path path = arguments[i];
        files.push_back({path.stem().string(), readFile(path)});
    }
    write(folder / "parser", fuzz::withReadScripts(files));
    write(folder / "repair", fuzz::withReadScripts(files));
    write(folder / "import", fuzz::withImportScripts(files));
    write(folder / "audio_format", fuzz::audioFormats());
    write(folder / "standin", fuzz::standinStreams());
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments = utf8Arguments(argc, argv);
    if (arguments.empty()) {
        std::fputs("fuzz_seeds FOLDER [AVI_FILE...]\n", stderr);
        return 2;
    }
    try {
        run(arguments);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "fuzz_seeds: %s\n", error.what());
        return 1;
    }
}
