// Which call is answered how: formats, opening, describing, closing.
#include "importhost/validate/Groups.h"
#include "importhost/validate/OpenClip.h"

#include "hostkit/Names.h"

namespace importhost::validate {

namespace {

// --- formats-end ------------------------------------------------------------------------------------------------

void formatsEnd(CheckRun& run) {
    PlayedPlugin plugin(run);
    const auto& formats = plugin.started().formats;
    run.expectEqual("the answer that ends the list of import formats", hostkit::resultText(formats.back().result),
                    hostkit::resultText(imBadFormatIndex));
    run.expect(formats.size() > 1, "no import format is offered");
}

// --- good-files-open --------------------------------------------------------------------------------------------

void goodFilesOpen(CheckRun& run) {
    PlayedPlugin plugin(run);
    forEachClip(run, plugin, Need::Nothing, [&](OpenClip& clip) {
        run.expectEqual("the answer to closing it", hostkit::resultText(clip.session().close()),
                        hostkit::resultText(imNoErr));
    });
}

constexpr Check kChecks[] = {
    {"formats-end", 1,
     "The list of import formats has at least one entry and ends with imBadFormatIndex. An editor asks for formats "
     "until it is told to stop.",
     formatsEnd},
    {"good-files-open", 1,
     "Every file opens, is described and closes. A file that is not opened here cannot be imported.",
     goodFilesOpen},
};

}  // namespace

std::span<const Check> protocolChecks() { return kChecks; }

}  // namespace importhost::validate
