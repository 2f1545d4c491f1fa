#include "commandline/Arguments.h"
#include "makeavi/CommandLine.h"

#include "aviwriter/ByteSink.h"
#include "aviwriter/Sample.h"
#include "hostkit/system/Text.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <system_error>

namespace {

using makeavi::Command;

// An unfinished file must not be mistaken for a sample; devices and the like are not removed.
void removeUnfinished(const std::filesystem::path& path) {
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path, ignored)) {
        std::filesystem::remove(path, ignored);
    }
}

void writeFile(const Command& command) {
    const std::filesystem::path path = hostkit::pathFromUtf8(command.output);
    std::optional<aviwriter::FileSink> sink(std::in_place, path);
    try {
        aviwriter::writeSample(command.options, *sink);
        sink->close();
    } catch (const std::exception&) {
        sink.reset();   // some systems cannot remove an open file
        removeUnfinished(path);
        throw;
    }
}

int run(const Command& command) {
    try {
        writeFile(command);
        return makeavi::kExitGood;
    } catch (const std::invalid_argument& error) {
        std::fprintf(stderr, "makeavi: %s\n", error.what());
        return makeavi::kExitUsage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "makeavi: %s: %s\n", command.output.c_str(), error.what());
        return makeavi::kExitFailed;
    }
}

}  // namespace

int main(int argc, char** argv) {
    const makeavi::ParsedCommand parsed = makeavi::parseCommandLine(utf8Arguments(argc, argv));
    return parsed.command ? run(*parsed.command) : parsed.exitCode;
}
