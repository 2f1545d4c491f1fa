#include "importer/QuorvaneImporter.h"

#include "importer/FormatDescription.h"
#include "log/Log.h"
#include "text/FourCC.h"
#include "text/Utf.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

namespace {

// The open mode for the host's access value. Read-write empties the file; an unknown value opens nothing.
std::uint32_t openModeFor(csSDK_int32 accessMode) {
    switch (accessMode) {
    case kPrOpenFileAccess_ReadOnly: return fileio::kOpenRead | fileio::kOpenShareRead;
    case kPrOpenFileAccess_ReadWrite: return fileio::kOpenRead | fileio::kOpenWrite | fileio::kOpenShareRead;
    default: return fileio::kOpenShareRead;
    }
}

void setFileRef(imFileRef* fileRef, imFileRef value) {
    if (fileRef == nullptr) {
        Log("ERROR: the host gave no file reference");
        return;
    }
    *fileRef = value;
}

}  // namespace

QuorvaneImporter::QuorvaneImporter(const imStdParms* stdParms) {
    Log("QuorvaneImporter::QuorvaneImporter()");
    m_suites.setBasicSuite(basicSuiteOf(stdParms));
}

QuorvaneImporter::~QuorvaneImporter() {
    Log("QuorvaneImporter::~QuorvaneImporter()");
}

void QuorvaneImporter::logPrologue() const {
    Log("m_filePathUtf8: '%s'", m_filePathUtf8.c_str());
    Log("m_streamIndex:  %d", m_streamIndex);
}

void QuorvaneImporter::requireVideo() const {
    if (m_videoInfo == nullptr) {
        throw std::logic_error("m_videoInfo is NULL");
    }
}

void QuorvaneImporter::requireAudio() const {
    if (m_audioInfo == nullptr) {
        throw std::logic_error("m_audioInfo is NULL");
    }
}

bool QuorvaneImporter::openFile(const char16_t* path, csSDK_int32 streamIndex, csSDK_int32 accessMode) {
    std::u16string newPath = path;
    std::string newPathUtf8 = utf8FromUtf16(newPath);
    Log("Open: '%s', stream: %d", newPathUtf8.c_str(), streamIndex);
    if (!m_file.open(path, openModeFor(accessMode))) {
        return false;
    }
    m_filePath = std::move(newPath);
    m_filePathUtf8 = std::move(newPathUtf8);
    m_streamIndex = streamIndex;
    m_accessMode = accessMode;
    return true;
}

csSDK_int32 QuorvaneImporter::OnOpenFile(imFileOpenRec8* record, imFileRef* fileRef) {
    const prUTF16Char* path = record->fileinfo.filepath;
    if (path == nullptr) {
        Log("ERROR: the host gave no path");
        return imBadFile;
    }
    if (!openFile(path, record->inStreamIdx, record->inReadWrite)) {
        return imBadFile;
    }
    setFileRef(fileRef, m_file.nativeHandle());
    record->fileinfo.fileref = m_file.nativeHandle();
    record->fileinfo.filetype = kQuorvaneFileType;
    return imNoErr;
}

csSDK_int32 QuorvaneImporter::OnQuietFile(imFileRef* fileRef) {
    logPrologue();
    m_file.close();
    FrameMemory::freeUnused();   // a project has many more clips than it plays
    setFileRef(fileRef, imInvalidHandleValue());
    return imNoErr;
}

csSDK_int32 QuorvaneImporter::OnCloseFile(imFileRef* fileRef) {
    return OnQuietFile(fileRef);
}

csSDK_int32 QuorvaneImporter::OnGetIndPixelFormat(std::uint32_t index, imIndPixelFormatRec* record) {
    logPrologue();
    requireVideo();
    return m_videoInfo->getIndPixelFormat(index, record);
}

csSDK_int32 QuorvaneImporter::OnAnalysis(imAnalysisRec* record) {
    logPrologue();
    Log("buffersize: %d", record->buffersize);
    requireVideo();
    const std::string text = analysisText();
    if (record->buffer == nullptr || record->buffersize < 0) {
        Log("ERROR: the host gave no buffer");
        return imNoErr;
    }
    std::snprintf(record->buffer, static_cast<std::size_t>(record->buffersize), "%s", text.c_str());
    return imNoErr;
}

std::string QuorvaneImporter::analysisText() {
    std::string text = "\nVideo stream:\n" + m_videoInfo->summary() + "\n";
    for (const std::size_t position : m_avi.streamsOfType(fourCC("auds"))) {
        AudioInfo audioInfo(m_file, m_suites);
        audioInfo.parse(*m_avi.streams()[position]);
        text += "Audio stream " + std::to_string(position) + ":\n" + audioInfo.summary() + "\n";
    }
    return text;
}

csSDK_int32 QuorvaneImporter::OnDataRateAnalysis(imDataRateAnalysisRec* record) {
    logPrologue();
    Log("buffersize: %d", record->buffersize);
    requireVideo();
    m_videoInfo->dataRateAnalysis(record);
    return imNoErr;
}

csSDK_int32 QuorvaneImporter::OnGetSourceVideo(imSourceVideoRec* record) {
    logPrologue();
    Log("outFrame: %p", static_cast<void*>(record->outFrame));
    requireVideo();
    if (record->outFrame == nullptr) {
        Log("ERROR: the host gave no outFrame");
        return imOtherErr;
    }
    FrameRequest request(*record, m_suites.get().ppix.get());
    csSDK_int32 result = m_videoInfo->LocateFrame(request);
    if (result == imNoErr) {
        result = m_videoInfo->ReadFrame(request);
    }
    if (result == imNoErr) {
        result = m_videoInfo->DecodeFrame(request);
    }
    if (result == imNoErr) {
        *record->outFrame = request.takePPix();
    }
    return result;
}

csSDK_int32 QuorvaneImporter::OnGetAudioChannelLayout(imGetAudioChannelLayoutRec* record) {
    logPrologue();
    requireAudio();
    return m_audioInfo->getChannelLayout(record->outChannelLabels);
}

csSDK_int32 QuorvaneImporter::OnImportAudio7(imImportAudioRec7* record) {
    logPrologue();
    requireAudio();
    return m_audioInfo->importAudio(*record);
}
