// Plays an editor that follows a script: opens a clip, asks about its streams, and requests frames, synchronous and
// asynchronous, and sound, while files change and calls of the host and the codec fail. It obeys the host's rules
// whatever the script says, and checks that the plug-in's answers obey the plug-in's rules.
#pragma once

#include "hostkit/sessions/AsyncSession.h"
#include "hostkit/sessions/ClipSession.h"
#include "support/Input.h"

#include <initializer_list>
#include <memory>
#include <vector>

namespace fuzz {

inline constexpr char kFuzzedName[] = "fuzzed.avi";

// The steps of a script. A script's byte modulo Count is a step.
enum class Step : std::uint8_t {
    Info, AllInfos, PixelFormats, ChannelLayout, Analysis, DataRate, Frame, NextFrame, Sound, NextSound,
    Quiet, Open, AsyncCreate, Announce, Collect, Flush, AsyncClose,
    CutFile, ReplaceFile, ChangeFaults, FailHostCall, ThrowFromHostCall, FailCodecCall,
    Count
};

class ImportRun {
public:
    // All arguments must outlive the run. `file` holds the bytes of the clip's file, `access` says how to open it.
    ImportRun(hostkit::ImporterSession& session, ByteView file, csSDK_int32 access, Script& script);

    // Runs the script's steps, or the usual ones if it has none, and closes everything.
    void run();

private:
    // The plug-in's last description of the clip; all zero if there is none yet.
    struct Described {
        bool video = false;
        bool audio = false;
        csSDK_int32 width = 0;
        csSDK_int32 height = 0;
        csSDK_int32 channels = 0;
        imFileInfoRec8 info = {};
    };

    void doStep(Step step, Script& script);
    void doClipStep(Step step, Script& script);
    void doAsyncStep(Step step, Script& script);
    void doFaultStep(Step step, Script& script);

    void open();
    csSDK_int32 info(csSDK_int32 streamIndex);
    void allInfos();
    void channelLayout();
    void analysis(Script& script);
    void dataRate();
    void frame(Script& script);
    void frameAt(PrTime time, const std::vector<imFrameFormat>& formats, bool mayBeUnknown);
    void sound(PrAudioSample position, csSDK_uint32 frames);

    PrTime someTime(Script& script);
    std::vector<imFrameFormat> someFormats(Script& script, bool& mayBeUnknown);
    bool takesFrames() const;

    // Expects one of the `allowed` results. 99 is allowed too if `mayFail`, or once a call of the host has failed.
    void expectResult(const char* call, csSDK_int32 result, std::initializer_list<csSDK_int32> allowed,
                      bool mayFail = false) const;

    hostkit::ImporterSession& m_session;
    ByteView m_file;
    Script& m_script;
    hostkit::ClipSession m_clip;
    std::unique_ptr<hostkit::AsyncSession> m_async;
    Described m_described;
    std::vector<PrPixelFormat> m_offered;
    csSDK_int64 m_nextFrame = 0;
    bool m_isOpen = false;
    bool m_hostFails = false;
    int m_parsesLeft;
    int m_framesLeft;
};

}  // namespace fuzz
