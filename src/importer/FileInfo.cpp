// Stream selection and the answer to imGetInfo8: the part of QuorvaneImporter that describes the file to the host.
//
// Stream 0 is the first video stream with the first audio stream; stream k is audio stream k alone.
#include "importer/QuorvaneImporter.h"

#include "log/Log.h"
#include "text/FourCC.h"

namespace {

constexpr csSDK_int16 kDepthWithAlpha = 32;
constexpr csSDK_int16 kDepthWithoutAlpha = 24;

void describeVideo(const VideoInfo& video, imFileInfoRec8* record) {
    const bool hasAlpha = video.subType().hasAlpha();
    imImageInfoRec& info = record->vidInfo;
    info.imageWidth = video.frameSize().width;
    info.imageHeight = video.frameSize().height;
    info.depth = hasAlpha ? kDepthWithAlpha : kDepthWithoutAlpha;
    info.subType = static_cast<csSDK_int32>(video.subType().subType);
    info.fieldType = video.fieldType();
    info.alphaType = hasAlpha ? alphaStraight : alphaNone;
    info.pixelAspectNum = 1;
    info.pixelAspectDen = 1;
    info.supportsAsyncIO = 1;
    info.supportsGetSourceVideo = 1;
    info.hasPulldown = 0;
    record->vidScale = video.rate();
    record->vidSampleSize = video.scale();
    record->vidDuration = static_cast<csSDK_int32>(static_cast<std::uint32_t>(video.frameCount()) *
                                                   static_cast<std::uint32_t>(video.scale()));
}

// The result for stream `streamIndex` of a file with `audioStreamCount` audio streams. The last of several returns
// imBadStreamIndex although it is described: this makes the host stop asking.
csSDK_int32 iterationResult(std::uint64_t streamIndex, std::uint64_t audioStreamCount) {
    if (audioStreamCount > streamIndex + 1) {
        return imIterateStreams;
    }
    return streamIndex > 0 ? imBadStreamIndex : imNoErr;
}

}  // namespace

csSDK_int32 QuorvaneImporter::OnGetInfo8(imFileInfoRec8* record) {
    logPrologue();
    Log("fileInfoRec8P->streamIdx: %d", record->streamIdx);
    try {
        return selectAndDescribe(record);
    } catch (...) {
        deselectStreams();   // the host got no description, so it has no buffers for their channels
        throw;
    }
}

csSDK_int32 QuorvaneImporter::selectAndDescribe(imFileInfoRec8* record) {
    const csSDK_int32 result = selectStream(record->streamIdx);
    if (!isSelected(result)) {
        return result;
    }
    m_importerID = record->vidInfo.importerID;
    m_suites.get();

    record->accessModes = kSeparateSequentialAudio;
    record->hasDataRate = 1;
    record->hasVideo = m_videoInfo != nullptr ? 1 : 0;
    if (m_videoInfo != nullptr) {
        describeVideo(*m_videoInfo, record);
    }
    record->hasAudio = m_audioInfo != nullptr ? 1 : 0;
    if (m_audioInfo != nullptr) {
        m_audioInfo->dumpAndFill(record);
    }
    return result;
}

bool QuorvaneImporter::isSelected(csSDK_int32 result) {
    return result == imNoErr || result == imIterateStreams || result == imBadStreamIndex;
}

void QuorvaneImporter::deselectStreams() {
    m_videoInfo.reset();
    m_audioInfo.reset();
    m_audioStreamCount = 0;
}

csSDK_int32 QuorvaneImporter::selectStream(csSDK_int32 streamIndex) {
    deselectStreams();

    m_file.seek(0);
    if (!m_avi.parse(m_file)) {
        Log("Failed to parse avi: %s", m_avi.errorText().c_str());
        return imBadFile;
    }
    const std::vector<std::size_t> audioStreams = m_avi.streamsOfType(fourCC("auds"));
    m_audioStreamCount = static_cast<std::uint32_t>(audioStreams.size());

    if (streamIndex == 0) {
        if (const csSDK_int32 result = selectVideo(); result != imNoErr) {
            return result;
        }
    }
    selectAudio(streamIndex, audioStreams);
    return iterationResult(static_cast<std::uint32_t>(streamIndex), m_audioStreamCount);
}

csSDK_int32 QuorvaneImporter::selectVideo() {
    const std::vector<std::size_t> videoStreams = m_avi.streamsOfType(fourCC("vids"));
    if (videoStreams.empty()) {
        Log("Avi has no video stream");
        return imBadFile;
    }
    auto videoInfo = std::make_unique<VideoInfo>(m_file, m_suites);
    const csSDK_int32 result = videoInfo->open(*m_avi.streams()[videoStreams.front()]);
    if (result == imNoErr) {
        m_videoInfo = std::move(videoInfo);
    }
    return result;
}

void QuorvaneImporter::selectAudio(csSDK_int32 streamIndex, const std::vector<std::size_t>& audioStreams) {
    // As an unsigned number, a negative index is past the last stream too.
    const auto index = static_cast<std::uint32_t>(streamIndex);
    m_audioInfo = std::make_unique<AudioInfo>(m_file, m_suites);
    if (audioStreams.empty()) {
        Log("Avi has no audio stream");
    } else if (index >= audioStreams.size()) {
        Log("Avi invalid audio stream index: %d", streamIndex);
    } else {
        m_audioInfo->parse(*m_avi.streams()[audioStreams[index]]);
    }
    if (!m_audioInfo->valid() && index == 0 && audioStreams.size() <= 1) {
        m_audioInfo.reset();   // without usable sound, a plain clip is silent
    }
}
