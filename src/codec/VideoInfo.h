// The video stream of an open file: its description for the host, and the three steps of a frame.
//
// Has no lock. After open, const functions may run at any time; ReadFrame calls must not overlap each other, nor may
// DecodeFrame calls. The two work on separate state, so one of each may run at once.
#pragma once

#include "avi/AviStream.h"
#include "codec/DecodeSession.h"
#include "codec/FrameClock.h"
#include "codec/FrameRequest.h"
#include "codec/PixelFormatTables.h"
#include "fileio/File.h"
#include "host/ImporterSuites.h"
#include "sdk/SdkImporter.h"

#include <cstdint>
#include <string>
#include <vector>

class VideoInfo {
public:
    // Opens a codec instance and asks the host for its time base. `file` and `suites` must outlive the object. Throws
    // std::runtime_error if the host has no Time Suite.
    VideoInfo(fileio::File& file, LazyImporterSuites& suites);
    ~VideoInfo();

    VideoInfo(const VideoInfo&) = delete;
    VideoInfo& operator=(const VideoInfo&) = delete;

    // Reads the stream's format; `stream` must outlive the object. Returns a host result; after any but imNoErr the
    // object is unusable.
    csSDK_int32 open(const AviStream& stream);

    // The size of decoded frames, which a session can change. Thread-safe.
    FrameSize frameSize() const { return m_session.frameSize(); }
    const SubTypeInfo& subType() const { return m_subType; }
    csSDK_int8 fieldType() const { return prFieldsNone; }
    std::int32_t rate() const { return m_rate; }        // frames per second: rate / scale
    std::int32_t scale() const { return m_scale; }
    std::uint64_t frameCount() const { return m_frameCount; }

    // Writes the offered pixel format number `index`; returns imNoErr or imBadFormatIndex.
    csSDK_int32 getIndPixelFormat(std::uint32_t index, imIndPixelFormatRec* record) const;

    // A description for people, one item per line.
    std::string summary() const;

    // Fills the host's record: without a buffer, the size needed; otherwise one entry per frame, as many as fit the
    // buffer's stated size.
    void dataRateAnalysis(imDataRateAnalysisRec* record) const;

    // The frame shown at `frameTime`, in host ticks; kNoSuchFrame if it cannot be computed in 64 bits.
    std::uint32_t frameIndexAt(PrTime frameTime) const { return frameAt(frameTime, m_ticksPerFrame); }

    // The three steps of a frame. Each returns imNoErr or the results listed.
    // Sets the request's frameIndex and checks it and the requested size: imFrameNotFound, imOtherErr.
    csSDK_int32 LocateFrame(FrameRequest& request) const;
    // Reads the compressed frame; for a dropped one, an earlier (or else later) frame with data: imFrameNotFound,
    // imFileReadFailed.
    csSDK_int32 ReadFrame(FrameRequest& request);
    // Decodes into a new frame buffer: imOtherErr, imBadCompression. Throws std::runtime_error for a pixel format that
    // is not in the tables or a missing suite.
    csSDK_int32 DecodeFrame(FrameRequest& request);

private:
    void readFrameRate();

    fileio::File& m_file;          // its position is changed by ReadFrame only
    DecodeSession m_session;       // changed by DecodeFrame only; the rest is fixed by open
    LazyImporterSuites& m_suites;
    PrTime m_ticksPerSecond = 0;
    SubTypeInfo m_subType;
    std::vector<FormatInfo> m_decodeFormats;  // in the order offered
    const AviStream* m_stream = nullptr;
    std::uint64_t m_frameCount = 0;
    std::int32_t m_rate = 0;
    std::int32_t m_scale = 0;
    PrTime m_ticksPerFrame = 0;
};
