// One AVI file that the host has opened: the file, its container, the streams selected from it and the host suites
// they need. The handlers of the host's file selectors; each gives a host result.
//
// No lock: the host's synchronous selectors reach an object one at a time.
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

    // Opens the file and tells the host its handle; nothing is parsed yet. Gives 0 or imBadFile, which changes
    // nothing but that a file open before is closed.
    csSDK_int32 OnOpenFile(imFileOpenRec8* record, imFileRef* fileRef);

    // Closes the file and keeps what is known of it.
    csSDK_int32 OnQuietFile(imFileRef* fileRef);

    // The same; the caller then destroys the object.
    csSDK_int32 OnCloseFile(imFileRef* fileRef);

    // Parses the file, selects a stream and describes it: 0, imIterateStreams when more streams follow,
    // imBadStreamIndex for the last of several and beyond, imBadFile or the decoder's result otherwise. Where it throws,
    // no stream is selected.
    csSDK_int32 OnGetInfo8(imFileInfoRec8* record);

    // These throw std::logic_error when no video stream (for the last two: audio stream) is selected.
    csSDK_int32 OnGetIndPixelFormat(std::uint32_t index, imIndPixelFormatRec* record);
    csSDK_int32 OnAnalysis(imAnalysisRec* record);
    csSDK_int32 OnDataRateAnalysis(imDataRateAnalysisRec* record);
    csSDK_int32 OnGetSourceVideo(imSourceVideoRec* record);
    csSDK_int32 OnGetAudioChannelLayout(imGetAudioChannelLayoutRec* record);
    csSDK_int32 OnImportAudio7(imImportAudioRec7* record);

    // What the last successful open was given.
    const std::u16string& filePath() const { return m_filePath; }
    csSDK_int32 streamIndex() const { return m_streamIndex; }
    csSDK_int32 accessMode() const { return m_accessMode; }

protected:
    void logPrologue() const;
    void requireVideo() const;
    void requireAudio() const;

    bool openFile(const char16_t* path, csSDK_int32 streamIndex, csSDK_int32 accessMode);
    csSDK_int32 selectStream(csSDK_int32 streamIndex);
    // Whether a result of selectStream leaves streams that can be described and delivered.
    static bool isSelected(csSDK_int32 result);

    csSDK_int32 m_importerID = 0;
    LazyImporterSuites m_suites;
    fileio::SystemFile m_file;
    AviParser m_avi;
    std::unique_ptr<VideoInfo> m_videoInfo;     // null: no video stream is selected
    std::unique_ptr<AudioInfo> m_audioInfo;     // null: no audio description is kept
    std::uint32_t m_audioStreamCount = 0;
    std::u16string m_filePath;                  // of the last successful open, like the three below
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
