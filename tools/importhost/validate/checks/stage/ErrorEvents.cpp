#include "importhost/validate/checks/stage/ErrorEvents.h"

#include "hostkit/sessions/Names.h"

#include <span>

namespace importhost::validate {

namespace {

constexpr char kTitle[] = "QuorvaneImporter: Internal error";
constexpr csSDK_uint32 kErrorType = 3;

}  // namespace

std::string fatalText(csSDK_int32 selector, const std::string& reason) {
    return std::string("FATAL: Unhandled exception during [")
        .append(hostkit::selectorName(selector))
        .append("] (")
        .append(std::to_string(selector))
        .append("): ")
        .append(reason);
}

std::vector<hostkit::ErrorEvent> eventsSince(hostkit::Host& host, std::size_t before) {
    std::vector<hostkit::ErrorEvent> events = host.errorEvents();
    events.erase(events.begin(), events.begin() + static_cast<std::ptrdiff_t>(std::min(before, events.size())));
    return events;
}

bool expectErrorEvent(CheckRun& run, const std::vector<hostkit::ErrorEvent>& events, csSDK_int32 selector,
                      const std::string& reason) {
    if (!run.expectEqual("error events sent to the host", events.size(), std::size_t{1})) {
        return false;
    }
    const hostkit::ErrorEvent& event = events.front();
    const std::string wanted = fatalText(selector, reason);
    const bool hasText = reason.empty() ? event.text.starts_with(wanted) : event.text == wanted;
    const bool hasType = run.expectEqual("the type of the error event", event.type, kErrorType);
    const bool hasTitle = run.expectEqual("the title of the error event", event.title, std::string(kTitle));
    return run.expect(hasText, "the text of the error event: found '" + event.text + "', wanted '" + wanted + "'") &&
           hasType && hasTitle;
}

namespace {

using hostkit::ClipSession;

struct EarlyRequest {
    csSDK_int32 selector;
    csSDK_int32 (*send)(ClipSession& clip);
};

constexpr EarlyRequest kOfPictures[] = {
    {imGetIndPixelFormat, [](ClipSession& clip) { return clip.pixelFormat(0).result; }},
    {imAnalysis, [](ClipSession& clip) { return clip.analysis().result; }},
    {imDataRateAnalysis, [](ClipSession& clip) { return clip.dataRate().sizeCall.result; }},
    {imGetSourceVideo, [](ClipSession& clip) { return clip.frame(0, {{0, 0, PrPixelFormat_BGRA_4444_8u}}).result; }},
};
constexpr EarlyRequest kOfSound[] = {
    {imGetAudioChannelLayout, [](ClipSession& clip) { return clip.channelLayout().result; }},
    {imImportAudio7, [](ClipSession& clip) { return clip.audio(0, 16, 2).result; }},
};

void expectRefused(PlayedPlugin& plugin, ClipSession& clip, std::span<const EarlyRequest> requests,
                   const char* reason) {
    CheckRun& run = plugin.run();
    for (const EarlyRequest& request : requests) {
        const std::string name(hostkit::selectorName(request.selector));
        const std::size_t before = plugin.host().errorEvents().size();
        run.expectResult("the answer to " + name, request.send(clip), kExceptionResult);
        expectErrorEvent(run, eventsSince(plugin.host(), before), request.selector, reason);
    }
}

}  // namespace

void expectNoPictures(PlayedPlugin& plugin, ClipSession& clip) {
    expectRefused(plugin, clip, kOfPictures, "m_videoInfo is NULL");
}

void expectNoSound(PlayedPlugin& plugin, ClipSession& clip) {
    expectRefused(plugin, clip, kOfSound, "m_audioInfo is NULL");
}

}  // namespace importhost::validate
