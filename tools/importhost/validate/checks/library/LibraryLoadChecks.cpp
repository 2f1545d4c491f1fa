// Loading and unloading the plug-in, with and without calls in between.
#include "importhost/validate/checks/library/LibraryParts.h"
#include "importhost/validate/checks/stage/Codec.h"
#include "importhost/validate/checks/stage/OwnLogs.h"
#include "importhost/validate/checks/stage/PlayedPlugin.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <numeric>

namespace importhost::validate {

namespace {

// Calls that the codec library has seen; nothing when it is one that does not count them.
std::optional<std::uint32_t> codecCalls() {
    const std::optional<StandinCounters> seen = Codec::counted();
    return seen ? std::optional(std::accumulate(std::begin(seen->calls), std::end(seen->calls), 0U)) : std::nullopt;
}

// An empty folder as the current one.
class FolderOfItsOwn {
public:
    explicit FolderOfItsOwn(const std::filesystem::path& folder)
        : m_before(std::filesystem::current_path()), m_folder(folder) {
        std::filesystem::create_directories(folder);
        std::filesystem::current_path(folder);
    }
    ~FolderOfItsOwn() {
        std::error_code ignored;
        std::filesystem::current_path(m_before, ignored);
    }
    FolderOfItsOwn(const FolderOfItsOwn&) = delete;
    FolderOfItsOwn& operator=(const FolderOfItsOwn&) = delete;

    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder)) {
            names.push_back(hostkit::toUtf8(entry.path().filename()));
        }
        return names;
    }

private:
    std::filesystem::path m_before;
    std::filesystem::path m_folder;
};

void expectNoCodecCalls(CheckRun& run) {
    if (const auto calls = codecCalls()) {
        run.expectEqual("calls of the codec library", *calls, 0U);
    } else {
        run.note("the codec library does not count its calls, so they were not looked at");
    }
}

}  // namespace

void libraryLoads(CheckRun& run) {
    PlayedPlugin plugin(run);
    const csSDK_int32 init = plugin.started().init.result;
    run.expect(init == imNoErr || init == imIsCacheable, "imInit was answered with " + hostkit::resultText(init));
}

// With the log switched on too: the switch is for the first call to read.
void libraryLoadIsQuiet(CheckRun& run) {
    const hostkit::LogSwitch on;
    const hostkit::PluginLog log;
    const FolderOfItsOwn folder(run.folder() / "current");
    {
        run.step("loading");
        const hostkit::PluginLibrary library(run.plugin());
        expectNoCodecCalls(run);
        run.step("unloading");
    }
    run.step("loaded and unloaded");
    for (const std::string& name : folder.files()) {
        run.fail("the file '" + name + "' appeared in the current folder");
    }
    const std::vector<std::filesystem::path> logs = ownLogs(log);
    for (const std::filesystem::path& file : logs) {
        run.fail("the log '" + hostkit::toUtf8(file.filename()) + "' was written although nothing was called");
    }
    removeFiles(logs);
}

void libraryComesAndGoes(CheckRun& run) {
    const std::string name = hostkit::toUtf8(run.plugin().filename());
    const int rounds = run.effort(3, 20);
    for (int round = 1; round <= rounds; ++round) {
        run.step("round " + std::to_string(round) + ", loaded alone");
        { const hostkit::PluginLibrary library(run.plugin()); }
        if (!run.expect(!hostkit::PluginLibrary::isLoaded(name), "the library stays in memory when it is unloaded")) {
            return;
        }
        run.step("round " + std::to_string(round) + ", started");
        PlayedPlugin plugin(run);
        const csSDK_int32 init = plugin.started().init.result;
        run.expect(init == imNoErr || init == imIsCacheable, "imInit was answered with " + hostkit::resultText(init));
        plugin.finish();
        if (!run.expect(!hostkit::PluginLibrary::isLoaded(name), "the library stays in memory when it is unloaded")) {
            return;
        }
    }
}

}  // namespace importhost::validate
