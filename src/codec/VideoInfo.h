// The video stream of an opened file: what the host is told of it, and the three steps of a frame.
//
// No lock of its own. Once it is open, const functions may run beside anything; ReadFrame calls must not overlap one
// another, nor DecodeFrame calls. Each of the two works on a part of its own.
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
    // Opens a codec instance and asks the host for its time base; throws std::runtime_error when the host has no Time
    // Suite. `file` and `suites` must outlive the object.
    VideoInfo(fileio::File& file, LazyImporterSuites& suites);
    ~VideoInfo();

    VideoInfo(const VideoInfo&) = delete;
    VideoInfo& operator=(const VideoInfo&) = delete;

    // Learns the stream's format, which must outlive the object. Gives a host result, 0 on success; after another
    // result the object is of no use.
    csSDK_int32 open(const AviStream& stream);

    // The size of the frames that are decoded, which a session changes. Any thread.
    FrameSize frameSize() const { return m_session.frameSize(); }
    const SubTypeInfo& subType() const { return m_subType; }
    csSDK_int8 fieldType() const { return prFieldsNone; }
    std::int32_t rate() const { return m_rate; }        // frames per second: rate / scale
    std::int32_t scale() const { return m_scale; }
    std::uint64_t frameCount() const { return m_frameCount; }

    // Writes the offered pixel format number `index`; gives 0 or imBadFormatIndex.
    csSDK_int32 getIndPixelFormat(std::uint32_t index, imIndPixelFormatRec* record) const;

    // A description for people, lines separated by line ends.
    std::string summary() const;

    // Fills the host's record: the size it needs when it brings no buffer, else one entry a frame, as many as the
    // buffer's stated size holds.
    void dataRateAnalysis(imDataRateAnalysisRec* record) const;

    // The frame that is shown at a time in host ticks; kNoSuchFrame where 64 bits cannot tell.
    std::uint32_t frameIndexAt(PrTime frameTime) const { return frameAt(frameTime, m_ticksPerFrame); }

    // The three steps of a frame, each giving a host result, 0 on success.
    // Sets the request's frameIndex and checks it and the requested size: imFrameNotFound, imOtherErr.
    csSDK_int32 LocateFrame(FrameRequest& request) const;
    // Reads the compressed frame, or its neighbour's in place of a dropped one: imFrameNotFound, imFileReadFailed.
    csSDK_int32 ReadFrame(FrameRequest& request);
    // Decodes into a new frame buffer: imOtherErr, imBadCompression. Throws std::runtime_error for a pixel format
    // that is not in the tables and for a missing suite.
    csSDK_int32 DecodeFrame(FrameRequest& request);

private:
    void readFrameRate();

    fileio::File& m_file;          // moved by ReadFrame alone
    DecodeSession m_session;       // changed by DecodeFrame alone; all else is fixed by open
    LazyImporterSuites& m_suites;
    PrTime m_ticksPerSecond = 0;
    SubTypeInfo m_subType;
    std::vector<FormatInfo> m_decodeFormats;  // in the order they are offered
    const AviStream* m_stream = nullptr;
    std::uint64_t m_frameCount = 0;
    std::int32_t m_rate = 0;
    std::int32_t m_scale = 0;
    PrTime m_ticksPerFrame = 0;
};
