// An editor's work with one clip in small: every call that an editor makes of an importer, each a step whose outcome
// can be held against that of another run.
//
// A step is one call, and the plug-in's own start and shutdown are steps too: for hosts that fail in a single call. A
// Playthrough takes calls together that depend on each other, and keeps the sound: for disks and codecs that fail.
#pragma once

#include "hostkit/sessions/AsyncSession.h"
#include "importhost/validate/checks/stage/OpenClip.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace importhost::validate {

// What a step gave: the plug-in's answer, and a number for all that it delivered with it.
struct StepOutcome {
    csSDK_int32 result = 0;
    std::uint64_t content = 0;

    friend bool operator==(const StepOutcome&, const StepOutcome&) = default;
};

struct ScenarioStep {
    std::string name;               // "frame 12"
    csSDK_int32 selector = 0;       // of the entry, or of the asynchronous importer's
    bool isAsync = false;
    std::function<StepOutcome()> act;

    std::string resultText(csSDK_int32 result) const;
};

// What steps need to know of a clip.
struct ScenarioClip {
    std::filesystem::path path;
    std::vector<PrTime> times;                  // of a few frames: the first, one amid, the last
    std::vector<imFrameFormat> formats;         // a few of those offered
    std::vector<csSDK_int32> channels;          // of each stream of sound, 0 for one that cannot be played
};
ScenarioClip scenarioClipOf(CheckRun& run, PlayedPlugin& plugin, OpenClip& clip);

// A clip is opened, described, played, fetched from asynchronously, quieted and closed; then the plug-in is shut down
// and started anew. The plug-in must be started when the first step is taken, and is so after the last.
class Scenario {
public:
    Scenario(PlayedPlugin& plugin, const ScenarioClip& facts);
    Scenario(const Scenario&) = delete;
    Scenario& operator=(const Scenario&) = delete;

    const std::vector<ScenarioStep>& steps() const { return m_steps; }

    // What an editor does after a failure, before it tries the step again: it asks for the clip's description once
    // more, or for another asynchronous importer.
    void prepareAnotherTry(const ScenarioStep& failed);

private:
    void add(std::string name, csSDK_int32 selector, std::function<StepOutcome()> act);
    void addAsync(std::string name, csSDK_int32 selector, std::function<StepOutcome()> act);
    void addDescription();
    void addStreams();
    void addAsyncFrames();
    void addEnd();
    void addStart();

    StepOutcome describe(csSDK_int32 stream);
    StepOutcome frame(std::size_t which);
    StepOutcome sound(csSDK_int32 channels);
    StepOutcome announce(std::size_t which);
    StepOutcome collect(std::size_t which);

    std::size_t last() const { return m_facts.times.size() - 1; }
    std::vector<imFrameFormat> formatOf(std::size_t which) const;

    PlayedPlugin& m_plugin;
    ScenarioClip m_facts;
    hostkit::ClipSession m_clip;
    hostkit::AsyncSession m_async;
    csSDK_int32 m_stream = 0;
    std::vector<ScenarioStep> m_steps;
};

}  // namespace importhost::validate
