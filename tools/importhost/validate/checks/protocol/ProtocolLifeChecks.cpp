// A clip from its opening to its close, and several side by side.
#include "importhost/validate/checks/protocol/ClipFacts.h"
#include "importhost/validate/checks/protocol/ProtocolParts.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>
#include <memory>

namespace importhost::validate {

namespace {

using hostkit::resultText;

// Opens handles of the system for each: no editor's project is this big, and no system's limit this small.
constexpr std::size_t kMostAtOnce = 60;

using Clips = std::vector<std::unique_ptr<OpenClip>>;

bool isQuieted(CheckRun& run, hostkit::ClipSession& clip) {
    run.expectResult("the answer to imQuietFile", clip.quiet());
    return run.expect(clip.fileRef() == imInvalidHandleValue(), "the file handle is still set while the clip is quiet");
}

void expectReopened(CheckRun& run, hostkit::ClipSession& clip) {
    void* const before = clip.privateData();
    run.expectResult("the answer to opening it again", clip.open().result);
    run.expect(clip.privateData() == before, "the clip has other private data than before it was quiet");
}

Clips openAll(CheckRun& run, PlayedPlugin& plugin) {
    Clips all;
    for (const Clip& clip : run.clips()) {
        auto open = std::make_unique<OpenClip>(plugin, clip);
        if (open->isDescribed() && all.size() < kMostAtOnce) {
            all.push_back(std::move(open));
        }
    }
    if (all.empty() && !run.hasFailed()) {
        run.skip("no file that the plug-in opens");
    }
    return all;
}

}  // namespace

void quietAndReopen(CheckRun& run) {
    const int rounds = run.effort(1, 3);
    forEachClip(run, Need::Nothing, [&](OpenClip& clip) {
        const Facts wanted = clipFacts(clip);
        for (int round = 0; round < rounds && isQuieted(run, clip.session()); ++round) {
            expectReopened(run, clip.session());
            if (!expectSame(run, "after quiet and a new opening", clipFacts(clip), wanted)) {
                return;
            }
        }
    });
}

// Opened only, described, quiet, opened twice without quiet: every clip can be closed, and leaves nothing behind.
void closeInAnyState(CheckRun& run) {
    PlayedPlugin plugin(run);
    const int held = plugin.host().suitesHeld();
    const std::pair<const char*, void (*)(CheckRun&, OpenClip&)> ways[] = {
        {"closed when described", [](CheckRun&, OpenClip&) {}},
        {"closed when quiet", [](CheckRun& check, OpenClip& clip) { isQuieted(check, clip.session()); }},
        {"closed when quiet twice",
         [](CheckRun& check, OpenClip& clip) {
             isQuieted(check, clip.session());
             isQuieted(check, clip.session());
         }},
        {"closed when opened twice", [](CheckRun& check, OpenClip& clip) { expectReopened(check, clip.session()); }},
    };
    forEachClip(plugin, Need::Nothing, [&](OpenClip& first) {
        first.session().close();
        for (const auto& [way, prepare] : ways) {
            OpenClip clip(plugin, first.clip());
            prepare(run, clip);
            run.expectResult(std::string("the answer to closing, ") + way, clip.session().close());
            run.expect(clip.session().fileRef() == imInvalidHandleValue(), std::string(way) + ": a file handle is set");
            run.expectEqual(std::string("suites that are still held, ") + way, plugin.host().suitesHeld() - held, 0);
        }
        hostkit::ClipSession untouched(plugin.session(), first.clip().path);
        untouched.open();
        run.expectResult("the answer to closing, closed when just opened", untouched.close());
    });
}

void infoOfAQuietFile(CheckRun& run) {
    forEachClip(run, Need::Nothing, [&](OpenClip& clip) {
        const Facts wanted = streamFacts(clip.session().info(0));
        clip.session().quiet();
        const auto quiet = clip.session().info(0);
        run.expectResult("the answer to describing it while quiet", quiet.result, imBadFile);
        run.expect(quiet.written.empty(), "bytes " + hostkit::describe(quiet.written) + " of the record were written");
        expectReopened(run, clip.session());
        expectSame(run, "opened again and described", streamFacts(clip.session().info(0)), wanted);
    });
}

void severalFiles(CheckRun& run) {
    PlayedPlugin plugin(run);
    Clips all = openAll(run, plugin);
    run.step("all opened at once");
    std::vector<Facts> together;
    for (const auto& clip : all) {
        together.push_back(clipFacts(*clip));
    }
    // Now in the other order, with every second one closed in between.
    for (std::size_t i = all.size(); i > 0; --i) {
        OpenClip& clip = *all[i - 1];
        run.step(clip.clip().name + " among " + std::to_string(all.size()));
        expectSame(run, "asked again", clipFacts(clip), together[i - 1]);
        if (i % 2 == 0) {
            clip.session().close();
        }
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Clip& file = all[i]->clip();
        run.step(file.name);
        all[i] = nullptr;
        OpenClip alone(plugin, file);
        expectSame(run, "among other clips", together[i], clipFacts(alone));
    }
}

void oneFileSeveralTimes(CheckRun& run) {
    PlayedPlugin plugin(run);
    forEachClip(plugin, Need::Nothing, [&](OpenClip& clip) {
        const Facts wanted = clipFacts(clip);
        auto second = std::make_unique<OpenClip>(plugin, clip.clip());
        OpenClip third(plugin, clip.clip());
        if (!run.expect(second->isDescribed() && third.isDescribed(), "it cannot be opened three times at once")) {
            return;
        }
        run.expect(second->session().privateData() != clip.session().privateData(), "two clips share private data");
        expectSame(run, "the second clip of the file", clipFacts(*second), wanted);
        second = nullptr;
        expectSame(run, "the first clip after the second was closed", clipFacts(clip), wanted);
        isQuieted(run, third.session());
        expectSame(run, "the first clip while the third is quiet", clipFacts(clip), wanted);
        expectReopened(run, third.session());
        expectSame(run, "the third clip", clipFacts(third), wanted);
    });
}

}  // namespace importhost::validate
