// The guard around every call of the plug-in, as the host sees it: a result of its own, and an event that tells why.
#pragma once

#include "hostkit/sessions/ClipSession.h"
#include "importhost/validate/checks/stage/PlayedPlugin.h"
#include "importhost/validate/framework/CheckRun.h"

#include <string>
#include <vector>

namespace importhost::validate {

// The answer to a call that an exception ended.
inline constexpr csSDK_int32 kExceptionResult = 99;

// "FATAL: Unhandled exception during [imGetSourceVideo] (47): the reason"
std::string fatalText(csSDK_int32 selector, const std::string& reason);

// The events that were sent since there were `before` of them.
std::vector<hostkit::ErrorEvent> eventsSince(hostkit::Host& host, std::size_t before);

// Whether the events are exactly one, an error under the plug-in's title, about this selector and for this reason; an
// empty reason stands for any.
bool expectErrorEvent(CheckRun& run, const std::vector<hostkit::ErrorEvent>& events, csSDK_int32 selector,
                      const std::string& reason);

// Asks a clip without a description for what needs that of a stream with pictures, or with sound: each request is
// answered with 99 and an error event.
void expectNoPictures(PlayedPlugin& plugin, hostkit::ClipSession& clip);
void expectNoSound(PlayedPlugin& plugin, hostkit::ClipSession& clip);

}  // namespace importhost::validate
