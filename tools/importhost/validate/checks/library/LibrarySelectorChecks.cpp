// Selectors that this importer does not serve.
#include "importhost/validate/checks/library/LibraryParts.h"
#include "importhost/validate/checks/stage/PlayedPlugin.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>
#include <limits>

namespace importhost::validate {

namespace {

// All that this importer serves.
constexpr csSDK_int32 kServed[] = {
    imInit, imShutdown, imQuietFile, imCloseFile, imAnalysis, imDataRateAnalysis, imGetIndFormat, imImportAudio7,
    imGetIndPixelFormat, imGetSupports8, imGetInfo8, imOpenFile8, imCreateAsyncImporter, imGetSourceVideo,
    imGetSubTypeNames, imGetAudioChannelLayout,
};

constexpr csSDK_int32 kLowest = -8;
constexpr csSDK_int32 kHighest = 100;

// Longer than any record of the host.
constexpr std::size_t kRecordBytes = 8192;

int hostCalls(hostkit::Host& host) {
    int calls = 0;
    for (int call = 0; call < static_cast<int>(hostkit::HostCall::Count); ++call) {
        calls += host.calls().count(static_cast<hostkit::HostCall>(call));
    }
    return calls;
}

void expectRefused(CheckRun& run, PlayedPlugin& plugin, csSDK_int32 selector) {
    hostkit::RecordStorage first(kRecordBytes);
    hostkit::RecordStorage second(kRecordBytes);
    first.remember();
    second.remember();
    const int before = hostCalls(plugin.host());
    run.expectResult("the answer", plugin.session().call(selector, first.data(), second.data()), imUnsupported);
    run.expect(first.changes().empty() && second.changes().empty() && first.guardsAreIntact() &&
                   second.guardsAreIntact(),
               "the memory that came with it was changed: bytes " + hostkit::describe(first.changes()) +
                   " of the first and " + hostkit::describe(second.changes()) + " of the second");
    run.expectEqual("functions of the host that were called", hostCalls(plugin.host()) - before, 0);
}

}  // namespace

void unknownSelectors(CheckRun& run) {
    PlayedPlugin plugin(run);
    for (const csSDK_int32 selector : {-1, 2, 67, 81, 1000, std::numeric_limits<csSDK_int32>::max(),
                                       std::numeric_limits<csSDK_int32>::min()}) {
        run.expectResult("the answer to selector " + std::to_string(selector), plugin.session().call(selector),
                         imUnsupported);
    }
}

void unhandledSelectors(CheckRun& run) {
    PlayedPlugin plugin(run);
    for (csSDK_int32 selector = kLowest; selector <= kHighest; ++selector) {
        if (std::find(std::begin(kServed), std::end(kServed), selector) == std::end(kServed)) {
            run.step("selector " + std::to_string(selector) + " (" + std::string(hostkit::selectorName(selector)) +
                     ")");
            expectRefused(run, plugin, selector);
        }
    }
    run.step("");
}

}  // namespace importhost::validate
