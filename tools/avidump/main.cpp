// avidump: prints the structure of AVI files as the importer's parser sees it.
#include "avidump/CommandLine.h"
#include "avidump/Report.h"
#include "avidump/System.h"
#include "commandline/Arguments.h"
#include "commandline/OpenFailure.h"
#include "fileio/SystemFile.h"
#include "hostkit/system/Text.h"

#include <cstdio>
#include <exception>
#include <string>
#include <utility>

namespace {

using namespace avidump;

Report dump(const std::string& path, bool withChunks) {
    fileio::SystemFile file;
    if (!file.open(path.c_str(), fileio::kOpenRead | fileio::kOpenShareRead)) {
        const std::string why = openFailure(hostkit::pathFromUtf8(path));
        std::fprintf(stderr, "avidump: %s: cannot be opened: %s\n", path.c_str(), why.c_str());
        return makeFailedReport(path);
    }
    AviParser parser;
    const bool usable = parser.parse(file);
    return makeReport(path, file, parser, usable, withChunks);
}

// Invalid UTF-8 in a path is replaced, because JSON must be UTF-8.
std::string jsonOf(const Report& report) {
    return report.dump(2, ' ', false, Report::error_handler_t::replace) + "\n";
}

bool write(const std::string& text) {
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
}

int run(const Command& command) {
    useBinaryOutput();
    bool good = true;
    Report all = Report::array();
    for (const std::string& path : command.files) {
        Report report = dump(path, command.chunks);
        good = good && report["usable"].get<bool>();
        if (command.json) {
            all.push_back(std::move(report));
        } else {
            const char* gap = &path == &command.files.front() ? "" : "\n";
            good = write(gap + textOf(report)) && good;
        }
    }
    if (command.json) {
        good = write(jsonOf(all)) && good;
    }
    return std::fflush(stdout) == 0 && good ? kExitGood : kExitFailed;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const ParsedCommand parsed = parseCommandLine(utf8Arguments(argc, argv));
        return parsed.command ? run(*parsed.command) : parsed.exitCode;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "avidump: %s\n", error.what());
        return kExitFailed;
    }
}
