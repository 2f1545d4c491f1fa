// The plug-in's library: loading, unloading, and answers that need no file.
#include "importhost/validate/Groups.h"
#include "importhost/validate/PlayedPlugin.h"

#include "hostkit/Names.h"

namespace importhost::validate {

namespace {

// --- library-loads ----------------------------------------------------------------------------------------------

void libraryLoads(CheckRun& run) {
    PlayedPlugin plugin(run);
    const csSDK_int32 init = plugin.started().init.result;
    run.expect(init == imNoErr || init == imIsCacheable, "imInit was answered with " + hostkit::resultText(init));
}

// --- unknown-selectors ------------------------------------------------------------------------------------------

void unknownSelectors(CheckRun& run) {
    PlayedPlugin plugin(run);
    for (const csSDK_int32 selector : {-1, 2, 67, 81, 1000, std::numeric_limits<csSDK_int32>::max(),
                                       std::numeric_limits<csSDK_int32>::min()}) {
        run.expectEqual("the answer to selector " + std::to_string(selector),
                        hostkit::resultText(plugin.session().call(selector)), hostkit::resultText(imUnsupported));
    }
}

constexpr Check kChecks[] = {
    {"library-loads", 1,
     "The library loads with the libraries that it needs, exports its entry, starts, shuts down and unloads, and gives "
     "back all that it took from the host. An editor marks a plug-in that does not load as one to ignore.",
     libraryLoads},
    {"unknown-selectors", 1,
     "Selectors that this importer does not know, negative ones too, are answered with imUnsupported. Newer editors "
     "send ones that did not exist when the plug-in was made.",
     unknownSelectors},
};

}  // namespace

std::span<const Check> libraryChecks() { return kChecks; }

}  // namespace importhost::validate
