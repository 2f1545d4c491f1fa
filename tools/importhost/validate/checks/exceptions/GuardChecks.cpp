#include "importhost/validate/checks/exceptions/GuardChecks.h"

#include "importhost/validate/checks/stage/ErrorEvents.h"
#include "importhost/validate/checks/stage/MixedCompilers.h"
#include "importhost/validate/checks/stage/OpenClip.h"

#include "hostkit/sessions/Names.h"

#include <exception>
#include <functional>
#include <stdexcept>

namespace importhost::validate {

namespace {

using hostkit::HostCall;
using hostkit::kEscapedException;
using hostkit::resultText;

constexpr char kReason[] = "the reason";

// What the played host makes of an exception that is no standard one.
constexpr char kUnknownType[] = "an exception of unknown type";

// The call whose handler asks the host for memory: the place where the host throws. The plug-in's own file type comes
// from its first import format.
csSDK_int32 askForMemory(hostkit::ImporterSession& session, csSDK_int32 fileType) {
    return session.subTypeNames(fileType).result;
}

csSDK_int32 fileTypeOf(CheckRun& run, PlayedPlugin& plugin) {
    if (plugin.host().calls().count(HostCall::NewPtr) == 0) {
        run.skip("the plug-in asks the host for no memory, so that the host has no place to throw from");
    }
    return plugin.started().formats.front()->filetype;
}

// Returns the answer to a request for memory that ends in what `thrower` throws.
csSDK_int32 throwAtMemory(PlayedPlugin& plugin, csSDK_int32 fileType, const std::function<void()>& thrower) {
    plugin.host().faults().observe([&thrower](HostCall call) {
        if (call == HostCall::NewPtr) {
            thrower();
        }
    });
    const csSDK_int32 result = askForMemory(plugin.session(), fileType);
    plugin.host().faults().clear();
    return result;
}

void expectAnswer(CheckRun& run, csSDK_int32 found, csSDK_int32 wanted) {
    run.expectResult("the answer to the call", found, wanted);
}

void expectEscape(CheckRun& run, PlayedPlugin& plugin, csSDK_int32 found, const std::string& text) {
    if (run.expect(found == kEscapedException,
                   "answered with " + resultText(found) + ", and the exception did not reach the host")) {
        run.expectEqual("the exception that reaches the host", plugin.session().escapedText(), text);
    }
}

void expectWorks(CheckRun& run, PlayedPlugin& plugin, csSDK_int32 fileType) {
    run.expectResult("the answer to the next call", askForMemory(plugin.session(), fileType));
}

}  // namespace

// --- undescribed-clips ------------------------------------------------------------------------------------------

void undescribedClips(CheckRun& run) {
    PlayedPlugin plugin(run);
    forEachClip(plugin, Need::Pictures, [&](OpenClip& described) {
        const csSDK_int32 firstFrame = described.frame(0).result;
        hostkit::ClipSession clip(plugin.session(), described.clip().path);
        clip.open();
        run.step(described.name() + ", not described");
        expectNoPictures(plugin, clip);
        expectNoSound(plugin, clip);
        run.step(described.clip().name + ", described late");
        run.expectResult("the description", clip.info(0).result, described.infoResult());
        run.expectResult("the first frame", clip.frame(0, {described.wanted()}).result,
                         firstFrame);
    });
}

// --- exception-texts --------------------------------------------------------------------------------------------

void exceptionTexts(CheckRun& run) {
    skipIfCompilersAreMixed(run);
    PlayedPlugin plugin(run);
    const csSDK_int32 fileType = fileTypeOf(run, plugin);
    const std::string beyondAscii = "\xC3\xBC \xE6\x98\xA0 \xF0\x9F\x8E\x9E";   // 2, 3 and 4 bytes of UTF-8
    const std::pair<std::string, std::string> texts[] = {
        {kReason, kReason},
        {"", "Unknown exception"},
        {beyondAscii, beyondAscii},
        {std::string(100000, 'r'), std::string(100000, 'r')},
        {"%s %n %d", "%s %n %d"},
    };
    for (const auto& [text, told] : texts) {
        run.step("an exception with the text '" + text.substr(0, 20) + "'");
        const std::size_t before = plugin.host().errorEvents().size();
        expectAnswer(run, throwAtMemory(plugin, fileType, [&text = text] { throw std::runtime_error(text); }),
                     kExceptionResult);
        expectErrorEvent(run, eventsSince(plugin.host(), before), imGetSubTypeNames, told);
        expectWorks(run, plugin, fileType);
    }
    run.step("");
}

// --- exceptions-outside-the-start -------------------------------------------------------------------------------

namespace {

void expectNoEvent(CheckRun& run, PlayedPlugin& plugin, csSDK_int32 fileType) {
    const std::size_t eventsBefore = plugin.host().errorEvents().size();
    const int requestsBefore = plugin.host().calls().count(HostCall::AcquireSuite);
    expectAnswer(run, throwAtMemory(plugin, fileType, [] { throw std::runtime_error(kReason); }), kExceptionResult);
    run.expectEqual("error events sent to the host", eventsSince(plugin.host(), eventsBefore).size(), std::size_t{0});
    run.expectEqual("suites asked for", plugin.host().calls().count(HostCall::AcquireSuite) - requestsBefore, 0);
}

}  // namespace

void exceptionsOutsideTheStart(CheckRun& run) {
    skipIfCompilersAreMixed(run);
    PlayedPlugin plugin(run);
    const csSDK_int32 fileType = fileTypeOf(run, plugin);
    run.step("after the shutdown");
    run.expectResult("the shutdown", plugin.session().shutdown());
    expectNoEvent(run, plugin, fileType);

    run.step("in a start that fails before it has an Error Suite");
    plugin.host().faults().throwFrom(HostCall::GetSPBasicSuite, kReason);
    const std::size_t before = plugin.host().errorEvents().size();
    expectAnswer(run, plugin.session().init().result, kExceptionResult);
    run.expectEqual("error events sent to the host", eventsSince(plugin.host(), before).size(), std::size_t{0});
    expectNoEvent(run, plugin, fileType);

    run.step("started again");
    expectAnswer(run, plugin.session().init().result, plugin.started().init.result);
    expectWorks(run, plugin, fileType);
}

// --- unreportable-exceptions ------------------------------------------------------------------------------------

void unreportableExceptions(CheckRun& run) {
    skipIfCompilersAreMixed(run);
    PlayedPlugin plugin(run);
    const csSDK_int32 fileType = fileTypeOf(run, plugin);
    const auto thrower = [] { throw std::runtime_error(kReason); };

    run.step("the host does not take the event");
    plugin.host().faults().fail(HostCall::SetEventString);
    plugin.host().faults().throwFrom(HostCall::NewPtr, kReason);
    expectAnswer(run, askForMemory(plugin.session(), fileType), kExceptionResult);
    plugin.host().faults().clear();

    run.step("the host refuses the Error Suite");
    plugin.session().shutdown();
    plugin.host().refuse({{kPrSDKErrorSuite, hostkit::kEveryVersion}});
    expectAnswer(run, plugin.session().init().result, plugin.started().init.result);
    expectEscape(run, plugin, throwAtMemory(plugin, fileType, thrower),
                 "Could not acquire suite: 'Premiere Error Suite', ver: 3");

    run.step("the host grants it again");
    plugin.host().refuse({});
    const std::size_t before = plugin.host().errorEvents().size();
    expectAnswer(run, throwAtMemory(plugin, fileType, thrower), kExceptionResult);
    expectErrorEvent(run, eventsSince(plugin.host(), before), imGetSubTypeNames, kReason);
    expectWorks(run, plugin, fileType);
}

// --- foreign-exceptions -----------------------------------------------------------------------------------------

void foreignExceptions(CheckRun& run) {
    skipIfCompilersAreMixed(run);
    PlayedPlugin plugin(run);
    const csSDK_int32 fileType = fileTypeOf(run, plugin);
    const std::size_t before = plugin.host().errorEvents().size();
    run.step("the host throws a number");
    expectEscape(run, plugin, throwAtMemory(plugin, fileType, [] { throw 42; }), kUnknownType);
    run.expectEqual("error events sent to the host", eventsSince(plugin.host(), before).size(), std::size_t{0});
    expectWorks(run, plugin, fileType);

    const auto clip = firstClip(plugin, Need::Pictures);
    const std::vector<std::uint8_t> usual = pixelsOf(clip->frame(0).frame);
    for (const HostCall call : {HostCall::CreatePPix, HostCall::GetPixels, HostCall::GetRowBytes}) {
        run.step(clip->clip().name + ", " + hostkit::callName(call) + " throws a number");
        plugin.host().faults().observe([call](HostCall made) {
            if (made == call) {
                throw 42;
            }
        });
        expectEscape(run, plugin, clip->frame(0).result, kUnknownType);
        plugin.host().faults().clear();
        run.expect(pixelsOf(clip->frame(0).frame) == usual, "the next frame is another picture than before");
    }
}

}  // namespace importhost::validate
