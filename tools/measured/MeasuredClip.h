// A clip whose requests are nothing but calls of the plug-in: records and buffers are made beforehand. What a call
// does not answer with success throws std::runtime_error: a failure must not be measured.
#pragma once

#include "measured/MeasuredPlugin.h"

#include "hostkit/sessions/ClipSession.h"
#include "sdk/SdkAsyncImporter.h"

#include <filesystem>
#include <vector>

class MeasuredClip {
public:
    // Opens and describes the file. Sound is fetched into buffers for up to `audioFrames` sample frames.
    MeasuredClip(MeasuredPlugin& plugin, const std::filesystem::path& path, csSDK_uint32 audioFrames = 0);
    ~MeasuredClip();
    MeasuredClip(const MeasuredClip&) = delete;
    MeasuredClip& operator=(const MeasuredClip&) = delete;

    csSDK_int64 frameCount() const { return static_cast<csSDK_int64>(m_times.size()); }

    // One frame in the clip's own pixel format, given back to the host at once. `frame` counts from 0 and begins anew
    // behind the last. Gives the nanoseconds of the plug-in's call.
    std::uint64_t getFrame(csSDK_int64 frame);

    // `frames` sample frames from a position.
    void getSound(PrAudioSample position, csSDK_uint32 frames);

    // The host needs the file's handle for something else: the importer closes the file, and stays.
    void quiet();

    // The asynchronous importer, and its frames: announced, collected and given back. Closed with the clip.
    void openAsync();
    void announce(csSDK_int64 frame);
    void collect(csSDK_int64 frame);
    void flush();
    void closeAsync();

private:
    imSourceVideoRec recordFor(csSDK_int64 frame, void* privateData, PPixHand* delivered);

    MeasuredPlugin& m_plugin;
    hostkit::ClipSession m_clip;
    std::vector<PrTime> m_times;                // of the frames, in host ticks
    std::vector<imFrameFormat> m_formats;
    std::vector<std::vector<float>> m_channels;
    std::vector<float*> m_buffers;
    imAsyncImporterCreationRec m_async{};
};
