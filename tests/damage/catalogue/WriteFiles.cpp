// write_damaged_files FOLDER [MIB]: writes all damaged files of the catalogue, or with MIB the hostile ones with that
// size in MiB, to inspect them or to measure their cost.
#include "damage/catalogue/FilesOnDisk.h"
#include "damage/hostile/HostileShapes.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

namespace {

void writeFiles(const std::filesystem::path& folder, std::size_t mebibytes) {
    std::filesystem::create_directories(folder);
    if (mebibytes == 0) {
        for (const damage::DamagedFile& file : damage::damagedFiles()) {
            damage::writeDamaged(folder, file);
        }
        return;
    }
    for (const damage::HostileShape& shape : damage::hostileShapes()) {
        damage::writeBytes(folder / (std::string(shape.name) + ".avi"), shape.make(mebibytes << 20));
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::fprintf(stderr, "usage: write_damaged_files FOLDER [MIB]\n");
        return 2;
    }
    try {
        writeFiles(argv[1], argc == 3 ? std::strtoul(argv[2], nullptr, 10) : 0);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "write_damaged_files: %s\n", error.what());
        return 1;
    }
}
