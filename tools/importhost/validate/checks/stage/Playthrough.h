// What an editor does with one clip from opening to closing, in steps whose answers can be compared: how a plug-in
// answers while something around it fails, against how it answered when all was well.
#pragma once

#include "hostkit/sessions/AsyncSession.h"
#include "importhost/validate/checks/stage/OpenClip.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace importhost::validate {

enum class Asked {
    Open, Info, Formats, Analysis, DataRate, Frame, Sound, AsyncCreate, AsyncAnnounce, AsyncFrame, AsyncFlush,
    AsyncClose, Quiet, Close
};

// One call's answer.
struct Answered {
    Asked asked = Asked::Open;
    std::string name;                               // "frame 3 in yuy2"
    csSDK_int32 result = 0;
    std::uint64_t digest = 0;                       // of what was delivered; 0 for nothing
    std::vector<std::vector<float>> sound = {};

    bool operator==(const Answered& other) const;   // names aside
};
using Answers = std::vector<Answered>;              // shorter when a call failed on which the rest depends

std::string resultText(const Answered& answer);

struct Step {
    std::string name;
    bool canBeRepeated = true;
    std::function<Answers()> take;
};

class Playthrough {
public:
    Playthrough(PlayedPlugin& plugin, std::filesystem::path path) : m_plugin(plugin), m_path(std::move(path)) {}
    ~Playthrough();
    Playthrough(const Playthrough&) = delete;
    Playthrough& operator=(const Playthrough&) = delete;

    // Learns the answers while all is well, and makes up the steps. Gives false for a clip without pictures.
    bool learn();

    const std::vector<Step>& steps() const { return m_steps; }
    const Answers& usual(std::size_t step) const { return m_usual[step]; }

    // Drops what an earlier time through left behind. To be called before the first step and after the last.
    void start();

private:
    struct Wanted {
        std::int64_t frame = 0;
        PrPixelFormat format{};
    };

    bool look();
    void makeSteps();
    void addStep(std::string name, std::function<Answers()> take, bool canBeRepeated = true);

    Answers openStep();
    Answers describeStep();
    Answers soundStep(PrAudioSample position, csSDK_uint32 size);
    Answers asyncStep();
    Answered frameOf(const Wanted& wanted, csSDK_int32 result, const hostkit::HostFrame& frame, Asked asked) const;
    static std::string nameOf(const Wanted& wanted);
    std::vector<imFrameFormat> formatsOf(const Wanted& wanted) const;
    PrTime timeOf(std::int64_t frame) const;
    std::vector<Wanted> wantedFrames() const;

    PlayedPlugin& m_plugin;
    std::filesystem::path m_path;
    csSDK_int32 m_streams = 0;
    imFileInfoRec8 m_info = {};
    std::vector<PrPixelFormat> m_formats;
    std::unique_ptr<hostkit::ClipSession> m_clip;
    std::vector<Step> m_steps;
    std::vector<Answers> m_usual;
};

// Something around the plug-in that fails for a while.
struct Disturbance {
    std::string name;                                       // "read 3 fails"
    std::function<void()> begin;
    std::function<int()> happened;                          // how often it has struck since it began
    std::function<void()> end;
    // Which results are right for a call that was struck, besides its usual answer, and which calls may succeed with
    // other content.
    std::function<bool(Asked asked, csSDK_int32 result)> mayAnswer;
    std::set<Asked> mayDiffer = {};
    bool lasts = false;                                     // later calls are struck too, and need not work again
};

// Plays it with the disturbance: whoever was struck answers as it must, and at once works again. Gives
// how often it struck.
int playDisturbed(CheckRun& run, Playthrough& play, const Disturbance& disturbance);

// Plays it with nothing in the way: every answer is the usual one.
void playWell(CheckRun& run, Playthrough& play, const std::string& name);

// Does `look` with the playthrough of each clip that serves, at most so many, one after another, while there is time.
// Skips the check when there is none.
void forPlaythroughs(CheckRun& run, PlayedPlugin& plugin, std::size_t most,
                  const std::function<void(Playthrough& play, const std::string& clip)>& look);

// Whether the sound is the usual one up to a place and silence from there: nothing after it could be read. One sample
// at that place may be neither, when its bytes were cut.
bool breaksOffIntoSilence(const Answered& usual, const Answered& found);

}  // namespace importhost::validate
