// A clip whose requests only call the plug-in: records and buffers are prepared. Any result but success throws
// std::runtime_error, because a failure must not be measured.
#pragma once

#include "measured/MeasuredPlugin.h"

#include "hostkit/sessions/FrameClip.h"
#include "sdk/SdkAsyncImporter.h"

#include <filesystem>
#include <vector>

class MeasuredClip {
public:
    // Opens and describes the file. Sound is read into buffers for up to `audioFrames` sample frames.
    MeasuredClip(MeasuredPlugin& plugin, const std::filesystem::path& path, csSDK_uint32 audioFrames = 0);
    ~MeasuredClip();
    MeasuredClip(const MeasuredClip&) = delete;
    MeasuredClip& operator=(const MeasuredClip&) = delete;

    csSDK_int64 frameCount() const { return static_cast<csSDK_int64>(m_times.size()); }

    // Requests one frame in the clip's own pixel format, and releases it at once. `frame` counts from 0 and wraps after
    // the last. Returns the duration of the plug-in's call in nanoseconds.
    std::uint64_t getFrame(csSDK_int64 frame);

    // Requests `frames` sample frames from `position`.
    void getSound(PrAudioSample position, csSDK_uint32 frames);

    // The importer closes the file but stays, as if the host needed the file for something else.
    void quiet();

    // Opens the asynchronous importer, whose frames are announced, collected and released. It is closed with the clip.
    void openAsync();
    void announce(csSDK_int64 frame);
    void collect(csSDK_int64 frame);
    void flush();
    void closeAsync();

private:
    imSourceVideoRec recordFor(csSDK_int64 frame, void* privateData, PPixHand* delivered);

    MeasuredPlugin& m_plugin;
    hostkit::FrameClip m_clip;
    std::vector<PrTime> m_times;                // of the frames, in host ticks
    std::vector<imFrameFormat> m_formats;
    std::vector<std::vector<float>> m_channels;
    std::vector<float*> m_buffers;
    imAsyncImporterCreationRec m_async{};
};
