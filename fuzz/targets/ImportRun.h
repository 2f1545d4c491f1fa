// An editor that does with one clip what a script says: opens it, asks about its streams, takes frames and sound, at
// once and ahead of time, while files change and calls of the host and the codec fail. It keeps to the editor's rules,
// whatever the script; what the plug-in answers must keep to its own.
#pragma once

#include "hostkit/sessions/AsyncSession.h"
#include "hostkit/sessions/ClipSession.h"
#include "support/Input.h"

#include <initializer_list>
#include <memory>
#include <vector>

namespace fuzz {

inline constexpr char kFuzzedName[] = "fuzzed.avi";

// What a script can ask for. A script's byte names a step by the remainder of its division by Count.
enum class Step : std::uint8_t {
    Info, AllInfos, PixelFormats, ChannelLayout, Analysis, DataRate, Frame, NextFrame, Sound, NextSound,
    Quiet, Open, AsyncCreate, Announce, Collect, Flush, AsyncClose,
    CutFile, ReplaceFile, ChangeFaults, FailHostCall, ThrowFromHostCall, FailCodecCall,
    Count
};

class ImportRun {
public:
    // All must outlive the run; `file` is the clip's file as it was put on the disk, `access` how it is opened.
    ImportRun(hostkit::ImporterSession& session, ByteView file, csSDK_int32 access, Script& script);

    // The script's steps, or the usual ones when it has none. Everything is closed at the end.
    void run();

private:
    // What the plug-in last said of the clip; all zero while it has said nothing.
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

    // `allowed` results; 99 as well when `mayFail`, or once a call of the host has been made to fail.
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
