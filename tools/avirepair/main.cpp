// avirepair: copies what a broken AVI file still holds into a new one.
#include "avirepair/CommandLine.h"
#include "avirepair/NewFile.h"
#include "avirepair/Report.h"
#include "avirepair/System.h"
#include "commandline/Arguments.h"
#include "commandline/OpenFailure.h"
#include "fileio/SystemFile.h"
#include "hostkit/system/Interrupt.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <stdexcept>

namespace {

using namespace avirepair;

std::filesystem::path pathOf(const std::string& utf8) { return std::u8string(utf8.begin(), utf8.end()); }

void openInput(fileio::SystemFile& file, const std::string& path) {
    if (!file.open(path.c_str(), fileio::kOpenRead | fileio::kOpenShareRead)) {
        throw std::runtime_error(path + ": cannot be opened: " + openFailure(pathOf(path)));
    }
}

// A bar with the time that is left, on a terminal.
class Bar {
public:
    explicit Bar(std::uint64_t total) : m_total(total > 0 ? total : 1), m_isShown(errorsGoToATerminal()) {}
    ~Bar() {
        if (m_isShown) {
            std::fprintf(stderr, "\r%*s\r", 60, "");
        }
    }

    void show(std::uint64_t done) const {
        if (!m_isShown) {
            return;
        }
        const double part = std::min(1.0, static_cast<double>(done) / static_cast<double>(m_total));
        const double passed = std::chrono::duration<double>(std::chrono::steady_clock::now() - m_begin).count();
        const auto cells = static_cast<std::size_t>(30 * part);
        std::fprintf(stderr, "\r[%s%s] %3d%%  %s left ", std::string(cells, '#').c_str(),
                     std::string(30 - cells, '.').c_str(), static_cast<int>(100 * part),
                     timeText(part > 0 ? passed / part - passed : 0).substr(0, 7).c_str());
        std::fflush(stderr);
    }

private:
    std::uint64_t m_total;
    bool m_isShown;
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

void write(const Command& command, const Plan& plan, fileio::File& file) {
    std::vector<std::filesystem::path> inputs = {pathOf(command.input)};
    if (!command.like.empty()) {
        inputs.push_back(pathOf(command.like));
    }
    NewFile output(pathOf(command.output), inputs, command.force, sizeOf(plan));
    const Bar bar(plan.bytes);
    writeRepaired(plan, file, output.sink(), [&bar](std::uint64_t done) {
        bar.show(done);
        if (hostkit::wasInterrupted()) {
            throw hostkit::Interrupted();
        }
    });
    output.finish();
}

int run(const Command& command) {
    hostkit::catchInterrupts();
    fileio::SystemFile file, like;
    openInput(file, command.input);
    if (!command.like.empty()) {
        openInput(like, command.like);
    }
    const Diagnosis found = diagnose(file, command.like.empty() ? nullptr : &like, command.options);
    const bool writes = !command.output.empty() && !command.dryRun && !command.list && !found.plan.isEmpty();
    if (command.list) {
        for (const FoundChunk& chunk : found.scan.chunks) {
            std::fputs(chunkLine(chunk).c_str(), stdout);
        }
        return std::fflush(stdout) == 0 ? kExitRepaired : kExitNothing;
    }
    if (writes) {
        write(command, found.plan, file);
    }
    const Names names = {command.input, writes ? command.output : ""};
    const std::string report = command.json ? jsonReport(found, names, command.options)
                                            : textReport(found, names, command.options);
    std::fputs(report.c_str(), stdout);
    return std::fflush(stdout) == 0 ? exitCodeOf(found.plan) : kExitNothing;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        useUtf8Output();
        const ParsedCommand parsed = parseCommandLine(utf8Arguments(argc, argv));
        return parsed.command ? run(*parsed.command) : parsed.exitCode;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "avirepair: %s\n", error.what());
        return kExitNothing;
    }
}
