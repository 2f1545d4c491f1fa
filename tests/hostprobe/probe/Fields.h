// Records and tables read by position alone, as a plug-in does that was built from other headers than the host.
// The positions are counted from the host's documentation; where our own headers differ, this does not compile.
#pragma once

#include "sdk/SdkAsyncImporter.h"

#include <cstring>
#include <string>

namespace hostprobe {

template <class T>
T fieldAt(const void* record, std::size_t offset) {
    T value;
    std::memcpy(&value, static_cast<const char*>(record) + offset, sizeof(T));
    return value;
}

inline void* pointerAt(const void* record, std::size_t offset) { return fieldAt<void*>(record, offset); }
inline csSDK_int32 int32At(const void* record, std::size_t offset) { return fieldAt<csSDK_int32>(record, offset); }

template <class T>
void putAt(void* record, std::size_t offset, T value) {
    std::memcpy(static_cast<char*>(record) + offset, &value, sizeof(T));
}

#define HOSTPROBE_FIELD(name, record, member, offset) \
    inline constexpr std::size_t name = offset; \
    static_assert(offsetof(record, member) == (offset), "position of " #record "::" #member)

HOSTPROBE_FIELD(kParmsVersion, imStdParms, imInterfaceVer, 0);
HOSTPROBE_FIELD(kParmsCallbacks, imStdParms, funcs, 4);
HOSTPROBE_FIELD(kParmsSuites, imStdParms, piSuites, 12);
HOSTPROBE_FIELD(kCallbacksClass, imCallbackFuncs, classFuncs, 0);
HOSTPROBE_FIELD(kCallbacksUnused1, imCallbackFuncs, unused1, 8);
HOSTPROBE_FIELD(kCallbacksUnused2, imCallbackFuncs, unused2, 12);
HOSTPROBE_FIELD(kSuitesVersion, piSuites, piInterfaceVer, 0);
HOSTPROBE_FIELD(kSuitesMemory, piSuites, memFuncs, 4);
HOSTPROBE_FIELD(kSuitesUtility, piSuites, utilFuncs, 28);
HOSTPROBE_FIELD(kUtilityBasicSuite, PlugUtilFuncs, getSPBasicSuite, 56);

HOSTPROBE_FIELD(kFormatType, imIndFormatRec, filetype, 0);
HOSTPROBE_FIELD(kFormatName, imIndFormatRec, FormatName, 12);
HOSTPROBE_FIELD(kFormatShortName, imIndFormatRec, FormatShortName, 268);
HOSTPROBE_FIELD(kFormatExtension, imIndFormatRec, PlatformExtension, 300);

HOSTPROBE_FIELD(kAccessType, imFileAccessRec8, filetype, 8);
HOSTPROBE_FIELD(kAccessPath, imFileAccessRec8, filepath, 12);
HOSTPROBE_FIELD(kAccessReference, imFileAccessRec8, fileref, 20);
HOSTPROBE_FIELD(kOpenPrivateData, imFileOpenRec8, privatedata, 36);
HOSTPROBE_FIELD(kOpenAccess, imFileOpenRec8, inReadWrite, 48);
HOSTPROBE_FIELD(kOpenImporterId, imFileOpenRec8, inImporterID, 52);
HOSTPROBE_FIELD(kOpenStream, imFileOpenRec8, inStreamIdx, 64);

HOSTPROBE_FIELD(kInfoHasVideo, imFileInfoRec8, hasVideo, 0);
HOSTPROBE_FIELD(kInfoHasAudio, imFileInfoRec8, hasAudio, 1);
HOSTPROBE_FIELD(kInfoWidth, imFileInfoRec8, vidInfo.imageWidth, 2);
HOSTPROBE_FIELD(kInfoHeight, imFileInfoRec8, vidInfo.imageHeight, 6);
HOSTPROBE_FIELD(kInfoDepth, imFileInfoRec8, vidInfo.depth, 12);
HOSTPROBE_FIELD(kInfoSubType, imFileInfoRec8, vidInfo.subType, 14);
HOSTPROBE_FIELD(kInfoAlphaType, imFileInfoRec8, vidInfo.alphaType, 22);
HOSTPROBE_FIELD(kInfoAspectNum, imFileInfoRec8, vidInfo.pixelAspectNum, 34);
HOSTPROBE_FIELD(kInfoAspectDen, imFileInfoRec8, vidInfo.pixelAspectDen, 38);
HOSTPROBE_FIELD(kInfoImporterId, imFileInfoRec8, vidInfo.importerID, 46);
HOSTPROBE_FIELD(kInfoAsync, imFileInfoRec8, vidInfo.supportsAsyncIO, 50);
HOSTPROBE_FIELD(kInfoSourceVideo, imFileInfoRec8, vidInfo.supportsGetSourceVideo, 54);
HOSTPROBE_FIELD(kInfoScale, imFileInfoRec8, vidScale, 162);
HOSTPROBE_FIELD(kInfoSampleSize, imFileInfoRec8, vidSampleSize, 166);
HOSTPROBE_FIELD(kInfoDuration, imFileInfoRec8, vidDuration, 170);
HOSTPROBE_FIELD(kInfoChannels, imFileInfoRec8, audInfo.numChannels, 174);
HOSTPROBE_FIELD(kInfoSampleRate, imFileInfoRec8, audInfo.sampleRate, 178);
HOSTPROBE_FIELD(kInfoSampleType, imFileInfoRec8, audInfo.sampleType, 182);
HOSTPROBE_FIELD(kInfoAudioDuration, imFileInfoRec8, audDuration, 186);
HOSTPROBE_FIELD(kInfoAccessModes, imFileInfoRec8, accessModes, 194);
HOSTPROBE_FIELD(kInfoPrivateData, imFileInfoRec8, privatedata, 198);
HOSTPROBE_FIELD(kInfoHasDataRate, imFileInfoRec8, hasDataRate, 214);
HOSTPROBE_FIELD(kInfoStream, imFileInfoRec8, streamIdx, 215);
HOSTPROBE_FIELD(kInfoIgnoreGrowing, imFileInfoRec8, ignoreGrowing, 4836);

HOSTPROBE_FIELD(kPixelFormatPrivateData, imIndPixelFormatRec, privatedata, 0);
HOSTPROBE_FIELD(kPixelFormatOut, imIndPixelFormatRec, outPixelFormat, 8);
HOSTPROBE_FIELD(kAnalysisPrivateData, imAnalysisRec, privatedata, 0);
HOSTPROBE_FIELD(kAnalysisSize, imAnalysisRec, buffersize, 16);
HOSTPROBE_FIELD(kAnalysisBuffer, imAnalysisRec, buffer, 20);
HOSTPROBE_FIELD(kDataRatePrivateData, imDataRateAnalysisRec, privatedata, 0);
HOSTPROBE_FIELD(kDataRateSize, imDataRateAnalysisRec, buffersize, 16);
HOSTPROBE_FIELD(kDataRateBuffer, imDataRateAnalysisRec, buffer, 20);
HOSTPROBE_FIELD(kAudioPosition, imImportAudioRec7, position, 0);
HOSTPROBE_FIELD(kAudioSize, imImportAudioRec7, size, 8);
HOSTPROBE_FIELD(kAudioBuffers, imImportAudioRec7, buffer, 12);
HOSTPROBE_FIELD(kAudioPrivateData, imImportAudioRec7, privateData, 20);
HOSTPROBE_FIELD(kLayoutPrivateData, imGetAudioChannelLayoutRec, inPrivateData, 0);
HOSTPROBE_FIELD(kLayoutLabels, imGetAudioChannelLayoutRec, outChannelLabels, 8);
HOSTPROBE_FIELD(kCreationPrivateData, imAsyncImporterCreationRec, inPrivateData, 0);
HOSTPROBE_FIELD(kCreationEntry, imAsyncImporterCreationRec, outAsyncEntry, 16);
HOSTPROBE_FIELD(kCreationAsyncData, imAsyncImporterCreationRec, outAsyncPrivateData, 24);

HOSTPROBE_FIELD(kVideoPrivateData, imSourceVideoRec, inPrivateData, 0);
HOSTPROBE_FIELD(kVideoStream, imSourceVideoRec, currentStreamIdx, 8);
HOSTPROBE_FIELD(kVideoTime, imSourceVideoRec, inFrameTime, 12);
HOSTPROBE_FIELD(kVideoFormats, imSourceVideoRec, inFrameFormats, 20);
HOSTPROBE_FIELD(kVideoFormatCount, imSourceVideoRec, inNumFrameFormats, 28);
HOSTPROBE_FIELD(kVideoRemovePulldown, imSourceVideoRec, removePulldown, 32);
HOSTPROBE_FIELD(kVideoOutFrame, imSourceVideoRec, outFrame, 36);
HOSTPROBE_FIELD(kVideoQuality, imSourceVideoRec, inQuality, 72);
HOSTPROBE_FIELD(kRequestPrivateData, aiAsyncRequest, inPrivateData, 0);
HOSTPROBE_FIELD(kRequestVideo, aiAsyncRequest, inSourceRec, 12);

#undef HOSTPROBE_FIELD

}  // namespace hostprobe
