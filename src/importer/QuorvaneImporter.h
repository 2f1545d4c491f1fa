// One AVI file that the host has opened: the file, its structure, the selected streams and the host suites they need.
// Has the handlers of the host's file selectors; each returns a host result.
//
// No lock: the host's synchronous calls for one object do not overlap.
#pragma once

#include "avi/AviParser.h"
#include "codec/VideoInfo.h"
#include "fileio/SystemFile.h"
#include "host/ImporterSuites.h"
#include "importer/AudioInfo.h"
#include "sdk/SdkImporter.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class QuorvaneImporter {
public:
    explicit QuorvaneImporter(const imStdParms* stdParms);
    virtual ~QuorvaneImporter();

    QuorvaneImporter(const QuorvaneImporter&) = delete;
    QuorvaneImporter& operator=(const QuorvaneImporter&) = delete;

    // Opens the file and passes its handle to the host; nothing is parsed yet. Returns imNoErr, or imBadFile, which
    // changes nothing except that a previously open file is closed.
    csSDK_int32 OnOpenFile(imFileOpenRec8* record, imFileRef* fileRef);

    // Closes the file; what is known about it is kept.
    csSDK_int32 OnQuietFile(imFileRef* fileRef);

    // Does the same; the caller then destroys the object.
    csSDK_int32 OnCloseFile(imFileRef* fileRef);

    // Parses the file, selects a stream and describes it. Returns imNoErr, imIterateStreams if more streams follow,
    // imBadStreamIndex for the last of several and after it, otherwise imBadFile or the decoder's result. If it throws,
    // no stream is selected.
    csSDK_int32 OnGetInfo8(imFileInfoRec8* record);

    // These throw std::logic_error if no video stream (for the last two: audio stream) is selected.
    csSDK_int32 OnGetIndPixelFormat(std::uint32_t index, imIndPixelFormatRec* record);
    csSDK_int32 OnAnalysis(imAnalysisRec* record);
    csSDK_int32 OnDataRateAnalysis(imDataRateAnalysisRec* record);
    csSDK_int32 OnGetSourceVideo(imSourceVideoRec* record);
    csSDK_int32 OnGetAudioChannelLayout(imGetAudioChannelLayoutRec* record);
    csSDK_int32 OnImportAudio7(imImportAudioRec7* record);

    // The arguments of the last successful open.
    const std::u16string& filePath() const { return m_filePath; }
    csSDK_int32 streamIndex() const { return m_streamIndex; }
    csSDK_int32 accessMode() const { return m_accessMode; }

protected:
    void logPrologue() const;
    void requireVideo() const;
    void requireAudio() const;

    bool openFile(const char16_t* path, csSDK_int32 streamIndex, csSDK_int32 accessMode);
    csSDK_int32 selectStream(csSDK_int32 streamIndex);
    // True if, after this result of selectStream, streams can be described and delivered.
    static bool isSelected(csSDK_int32 result);

    csSDK_int32 m_importerID = 0;
    LazyImporterSuites m_suites;
    fileio::SystemFile m_file;
    AviParser m_avi;
    std::unique_ptr<VideoInfo> m_videoInfo;     // null: no video stream is selected
    std::unique_ptr<AudioInfo> m_audioInfo;     // null: no audio description is kept
    std::uint32_t m_audioStreamCount = 0;
    std::u16string m_filePath;                  // of the last successful open, like the next three
    std::string m_filePathUtf8;
    csSDK_int32 m_streamIndex = -1;
    csSDK_int32 m_accessMode = 0;

private:
    csSDK_int32 selectAndDescribe(imFileInfoRec8* record);
    void deselectStreams();
    csSDK_int32 selectVideo();
    void selectAudio(csSDK_int32 streamIndex, const std::vector<std::size_t>& audioStreams);
    std::string analysisText();
};
