// One imported file, as the editor handles it: open, information stream by stream, formats, frames, sound, quiet and
// close. Not safe to call from two threads at once; different clips may be used side by side.
#pragma once

#include "hostkit/sessions/ImporterSession.h"

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace hostkit {

struct ClipOptions {
    csSDK_int32 streamIndex = 0;
    csSDK_int32 access = kPrOpenFileAccess_ReadOnly;
    csSDK_int32 importerId = 1001;              // the host's own number for this clip
};

// A frame that the host owns; disposed with this object, which must end before the Host does.
class HostFrame {
public:
    HostFrame() = default;
    explicit HostFrame(PPixHand handle) : m_handle(handle) {}
    HostFrame(HostFrame&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    HostFrame& operator=(HostFrame&& other) noexcept;
    ~HostFrame() { dispose(); }

    explicit operator bool() const { return m_handle != nullptr; }
    PPixHand handle() const { return m_handle; }

    // Empty for no frame and for a handle that the host does not know.
    std::optional<FrameView> view() const;

    void dispose();

private:
    PPixHand m_handle = nullptr;
};

struct FrameAnswer {
    csSDK_int32 result = 0;
    HostFrame frame;                            // empty unless the plug-in delivered one
};

// What a buffer of floats holds where nothing was delivered: four bytes 0xCD.
float undeliveredSample();

struct AudioAnswer {
    csSDK_int32 result = 0;
    std::vector<std::vector<float>> channels;
};

struct AnalysisAnswer {
    csSDK_int32 result = 0;
    std::string text;                           // up to the terminator; the whole buffer when there is none
    std::vector<char> buffer;                   // as the call left it; 0xCD where it wrote nothing
};

struct DataRateAnswer {
    Answer<imDataRateAnalysisRec> sizeCall;     // with a null buffer
    std::optional<Answer<imDataRateAnalysisRec>> dataCall;      // not made when the first failed or asked for nothing
    std::vector<imDataSample> samples;
};

struct LayoutAnswer {
    csSDK_int32 result = 0;
    std::vector<csSDK_int32> labels;            // all 32
};

class ClipSession {
public:
    // The session must outlive the clip. Opens nothing yet.
    ClipSession(ImporterSession& session, const std::filesystem::path& path, ClipOptions options = {});
    ~ClipSession();                             // closes a clip that is still open
    ClipSession(const ClipSession&) = delete;
    ClipSession& operator=(const ClipSession&) = delete;

    // Also after quiet(): the private data of the first opening is passed again.
    Answer<imFileOpenRec8> open();
    csSDK_int32 quiet();
    csSDK_int32 close();                        // sent only when there is private data, as the editor does

    void* privateData() const { return m_privateData; }
    imFileRef fileRef() const { return m_fileRef; }

    Answer<imFileInfoRec8> info(csSDK_int32 streamIndex);
    // Streams 0, 1, ... while the answer is imIterateStreams; the last answer ends the list.
    std::vector<Answer<imFileInfoRec8>> infos();

    Answer<imIndPixelFormatRec> pixelFormat(csSDK_int32 index);
    std::vector<PrPixelFormat> pixelFormats();  // from 0 until a call fails

    // Labels hold `filled` before the call.
    LayoutAnswer channelLayout(csSDK_int32 filled = 0);
    AnalysisAnswer analysis(csSDK_int32 bufferBytes = 65536);
    DataRateAnswer dataRate();

    // `time` in host ticks; formats in order of preference, any member 0 meaning "any".
    FrameAnswer frame(PrTime time, const std::vector<imFrameFormat>& formats, csSDK_int32 streamIndex = 0);

    // `position` and `frames` in sample frames; `channels` buffers are passed.
    AudioAnswer audio(PrAudioSample position, csSDK_uint32 frames, csSDK_int32 channels);

    // The record of a frame request as frame() would send it, for calls that carry one inside another record.
    // `formats` and `outFrame` are only pointed to.
    HostRecord<imSourceVideoRec> frameRecord(PrTime time, std::vector<imFrameFormat>& formats, PPixHand* outFrame,
                                             csSDK_int32 streamIndex = 0) const;

private:
    void fillAccess(imFileAccessRec8& record) const;

    ImporterSession& m_session;
    std::u16string m_path;
    ClipOptions m_options;
    void* m_privateData = nullptr;
    imFileRef m_fileRef = imInvalidHandleValue();
    csSDK_int32 m_fileType = 0;                 // as the plug-in gave it at opening
};

// Whether the plug-in filled the record of imGetInfo8 that it answered so: the last of several streams is described
// with imBadStreamIndex.
bool isDescribed(csSDK_int32 result);

// The time of a frame's start in host ticks, by the stream's own rate; 0 for a stream without a rate, and the last
// time there is for a frame after it.
PrTime timeOfFrame(const imFileInfoRec8& info, csSDK_int64 frameIndex, PrTime ticksPerSecond);

// Frames in the stream, by its duration; 0 for a stream without a rate.
csSDK_int64 frameCount(const imFileInfoRec8& info);

}  // namespace hostkit
