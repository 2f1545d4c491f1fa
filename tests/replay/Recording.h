// Records logs of the plug-in itself, and replays them in the test's process.
#pragma once

#include "importhost/Sample.h"
#include "replay/Replayer.h"

#include <functional>

namespace recording {

// Host ticks of one frame at 25 frames per second, the rate of samples.
inline constexpr PrTime kTicksPerFrame = 10160640000;

// Arguments of makeavi for a small clip with sound.
inline const std::vector<std::string> kSample = {"--type", "2Y8Q", "--size", "16x8", "--frames", "4", "--audio",
                                                 "pcm16:2:48000"};

// Starts the plug-in, calls `play`, shuts it down and unloads it. Returns the log.
std::string record(const std::function<void(hostkit::ImporterSession&)>& play);

// Uses a clip as an editor does: all descriptions, frames, sound, a loss of focus with asynchronous frames, a close.
void playClip(hostkit::ImporterSession& session, const std::filesystem::path& path);

replay::RecordedLog read(const std::string& log);

std::vector<std::string> linesOf(const std::string& log);       // line ends included

// Replaces the first occurrence of `part`, which must exist.
std::string replaced(std::string log, const std::string& part, const std::string& other);

struct Made {
    std::string text;
    std::optional<std::string> skipped;
    std::optional<csSDK_int32> logged;
    csSDK_int32 now = 0;
    std::vector<std::string> assumed;

    bool differs() const { return !skipped && logged && *logged != now; }
};

// Makes the log's calls again, and closes everything at the end.
std::vector<Made> replayed(hostkit::ImporterSession& session, const replay::RecordedLog& log,
                           const std::vector<std::filesystem::path>& files);

// The texts of skipped calls, with the reason, and of those whose results differ.
std::vector<std::string> skippedOf(const std::vector<Made>& calls);
std::vector<std::string> differencesOf(const std::vector<Made>& calls);

std::vector<std::string> textsOf(const std::vector<Made>& calls);

}  // namespace recording
