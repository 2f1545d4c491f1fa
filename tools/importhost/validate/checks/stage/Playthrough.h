// An editor's work with one clip, in steps whose outcomes can be compared: how a plug-in answers while something around
// it fails, and how it answered when nothing did.
#pragma once

#include "importhost/validate/checks/stage/OpenClip.h"
#include "importhost/validate/checks/stage/Outcome.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace importhost::validate {

// A step's outcome; of a request for sound, with the samples.
struct Answered : Outcome {
    std::vector<std::vector<float>> sound = {};
};
using Answers = std::vector<Answered>;

// One call.
struct Step {
    std::string name;               // "frame 12 in PrPixelFormat_BGRA_4444_8u"
    csSDK_int32 selector = 0;       // of the entry; if `isAsync`, of the asynchronous importer's
    bool isAsync = false;
    std::function<Answered()> take;

    std::string resultText(csSDK_int32 result) const;
};

// What the steps need to know of a clip with pictures, and its answers when nothing is in the way.
struct PlayedClip {
    const Clip* file = nullptr;
    imFileInfoRec8 info{};                  // of stream 0
    std::vector<PrPixelFormat> formats;
    std::vector<imFileInfoRec8> streams;
    Answers usual = {};                     // one for each step

    const Clip& clip() const { return *file; }
    const std::string& name() const { return file->name; }
};
PlayedClip playedClipOf(OpenClip& clip);

// The clip is opened, described, played, fetched from asynchronously, quieted, opened again and closed; then the
// plug-in is shut down and started again. The plug-in must be started before the first step, and is after the last.
class Playthrough {
public:
    // Both must outlive it.
    Playthrough(PlayedPlugin& plugin, const PlayedClip& clip);
    Playthrough(const Playthrough&) = delete;
    Playthrough& operator=(const Playthrough&) = delete;

    const std::vector<Step>& steps() const { return m_steps; }

    // False if a call has failed on which this step depends.
    bool canTake(const Step& step) const;

    // All steps that can be taken; an empty answer for the others.
    Answers takeAll();

    // What an editor does after a failure before it tries the step again: it asks for the clip's description once more,
    // or for another asynchronous importer.
    void prepareAnotherTry(const Step& failed);

private:
    void add(std::string name, csSDK_int32 selector, std::function<Answered()> take, bool isAsync = false);
    void addDescription();
    void addFrame(std::int64_t index, PrPixelFormat format);
    void addStreams();
    void addAsyncFrames();
    void addEnd();
    void addStart();
    void addInfo(csSDK_int32 stream, const std::string& when = "");
    PrTime timeOf(std::int64_t index) const;
    std::vector<imFrameFormat> formatsOf(PrPixelFormat format) const;
    std::int64_t lastFrame() const { return hostkit::frameCount(m_facts.info) - 1; }

    PlayedPlugin& m_plugin;
    const PlayedClip& m_facts;
    hostkit::ClipSession m_clip;
    hostkit::AsyncSession m_async;
    csSDK_int32 m_stream = 0;
    std::vector<Step> m_steps;
};

// expectUsual for the outcome of a step, whose results may be those of an asynchronous importer.
bool expectUsual(CheckRun& run, const std::string& what, const Step& step, const Outcome& found, const Outcome& usual);

// Something around the plug-in that fails for a while.
struct Disturbance {
    std::string name;                                       // "read 3 fails"
    std::function<void()> begin;
    std::function<int()> happened;                          // how often it has struck since it began
    std::function<void()> end;
    // Which results are right for a call that was struck, besides its usual one, and whether it may succeed with other
    // content.
    std::function<bool(const Step& step, csSDK_int32 result)> mayAnswer;
    std::function<bool(const Step& step)> mayDiffer = [](const Step&) { return false; };
    bool lasts = false;                                     // later calls are struck too, and need not work again
};

// Plays the clip with the disturbance: a call that was struck answers as it must, and works when it is made again.
// Returns how often it struck.
int playDisturbed(PlayedPlugin& plugin, const PlayedClip& clip, const Disturbance& disturbance);

// Plays the clip with nothing in the way: every answer is the usual one.
void playWell(PlayedPlugin& plugin, const PlayedClip& clip, const std::string& name);

// Calls `look` with each clip that has pictures and is not damaged, at most `most`, one after another, while there is
// time. Skips the check if there is none.
void forPlayedClips(PlayedPlugin& plugin, std::size_t most, const std::function<void(const PlayedClip& clip)>& look);

// Whether the sound is the usual one up to a place and silence from there, because nothing after it could be read. One
// sample at that place may be neither, if its bytes were cut.
bool breaksOffIntoSilence(const Answered& usual, const Answered& found);

}  // namespace importhost::validate
