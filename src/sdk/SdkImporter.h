// The host's importer protocol: the records that selectors carry.
#pragma once

#include "sdk/SdkImporterCodes.h"
#include "sdk/SdkSuites.h"

#pragma pack(push, 1)

struct imImportInfoRec {
    csSDK_uint32 importerType;
    csSDK_int32 unused1;
    csSDK_int32 canSave;
    csSDK_int32 canDelete;
    csSDK_int32 canResize;
    csSDK_int32 canDoSubsize;
    csSDK_int32 canDoContinuousTime;
    csSDK_int32 noFile;
    csSDK_int32 addToMenu;
    csSDK_int32 hasSetup;
    csSDK_int32 dontCache;
    csSDK_int32 setupOnDblClk;
    csSDK_int32 keepLoaded;
    csSDK_int32 priority;               // the highest wins among importers of a file type
    csSDK_int32 canAsync;
    csSDK_int32 canCreate;
    csSDK_int32 canCalcSizes;
    csSDK_int32 canTrim;
    csSDK_int32 avoidAudioConform;      // random audio access is fast: no conformed copy is needed
    prUTF16Char* acceleratorFileExt;
    csSDK_int32 canCopy;
    csSDK_int32 canSupplyMetadataClipName;
    csSDK_int32 canValidatePrefs;
    csSDK_int32 canProvidePeakAudio;
    csSDK_int32 canProvideFileList;
    csSDK_int32 canProvideClosedCaptions;
    prPluginID fileInfoVersion;
    csSDK_int32 hasSourceSettingsEffect;
    csSDK_int32 hasPersistentData;
    csSDK_int32 reserved[10];
};
SDK_ASSERT_SIZE(imImportInfoRec, 193);
SDK_ASSERT_OFFSET(imImportInfoRec, priority, 52);
SDK_ASSERT_OFFSET(imImportInfoRec, avoidAudioConform, 72);
SDK_ASSERT_OFFSET(imImportInfoRec, fileInfoVersion, 108);
SDK_ASSERT_OFFSET(imImportInfoRec, reserved, 153);

struct imIndFormatRec {
    csSDK_int32 filetype;
    csSDK_int32 flags;
    csSDK_int32 canWriteTimecode;
    char FormatName[256];
    char FormatShortName[32];
    char PlatformExtension[256];        // zero-separated list with a second zero at its end
    prBool hasAlternateTypes;
    csSDK_int32 alternateTypes[50];
    csSDK_int32 canWriteMetaData;
};
SDK_ASSERT_SIZE(imIndFormatRec, 764);
SDK_ASSERT_OFFSET(imIndFormatRec, canWriteTimecode, 8);
SDK_ASSERT_OFFSET(imIndFormatRec, FormatName, 12);
SDK_ASSERT_OFFSET(imIndFormatRec, FormatShortName, 268);
SDK_ASSERT_OFFSET(imIndFormatRec, PlatformExtension, 300);

struct imSubTypeDescriptionRec {
    csSDK_int32 subType;
    prUTF16Char subTypeName[256];
};
SDK_ASSERT_SIZE(imSubTypeDescriptionRec, 516);
SDK_ASSERT_OFFSET(imSubTypeDescriptionRec, subTypeName, 4);

struct imFileAccessRec8 {
    void* importID;
    csSDK_int32 filetype;
    const prUTF16Char* filepath;
    imFileRef fileref;
    prUTF16Char* newfilename;
};
SDK_ASSERT_SIZE(imFileAccessRec8, 36);
SDK_ASSERT_OFFSET(imFileAccessRec8, filetype, 8);
SDK_ASSERT_OFFSET(imFileAccessRec8, filepath, 12);
SDK_ASSERT_OFFSET(imFileAccessRec8, fileref, 20);

struct imFileOpenRec8 {
    imFileAccessRec8 fileinfo;
    void* privatedata;
    csSDK_int32 delegatetype;
    PrFileOpenAccess inReadWrite;
    csSDK_int32 inImporterID;
    csSDK_size_t outExtraMemoryUsage;
    csSDK_int32 inStreamIdx;
};
SDK_ASSERT_SIZE(imFileOpenRec8, 68);
SDK_ASSERT_OFFSET(imFileOpenRec8, privatedata, 36);
SDK_ASSERT_OFFSET(imFileOpenRec8, inReadWrite, 48);
SDK_ASSERT_OFFSET(imFileOpenRec8, inStreamIdx, 64);

struct matColRec {
    csSDK_uint8 red, blue, green;
};

struct imImageInfoRec {
    csSDK_int32 imageWidth;
    csSDK_int32 imageHeight;
    csSDK_uint16 pixelAspectV1;
    csSDK_int16 depth;                  // bits of all channels
    csSDK_int32 subType;
    csSDK_int8 fieldType;
    csSDK_int8 fieldsStacked;
    csSDK_int8 reserved_1;
    csSDK_int8 reserved_2;
    csSDK_uint8 alphaType;
    matColRec matteColor;
    csSDK_int8 alphaInverted;
    csSDK_int8 isVectors;
    csSDK_int8 drawsExternal;
    csSDK_int8 canForceInternalDraw;
    csSDK_int8 dontObscure;
    csSDK_int8 isStill;
    csSDK_int8 noDuration;
    csSDK_int8 reserved_3;
    csSDK_uint32 pixelAspectNum;
    csSDK_uint32 pixelAspectDen;
    csSDK_int8 isRollCrawl;
    csSDK_int8 reservedc[3];
    csSDK_int32 importerID;
    csSDK_int32 supportsAsyncIO;
    csSDK_int32 supportsGetSourceVideo;
    csSDK_int32 hasPulldown;
    csSDK_int32 pulldownCadence;
    csSDK_int32 posterFrame;
    csSDK_int32 canTransform;
    csSDK_int32 interpretationUncertain;
    csSDK_int32 colorProfileSupport;
    PrSDKString codecDescription;
    csSDK_int32 reserved[16];
};
SDK_ASSERT_SIZE(imImageInfoRec, 160);
SDK_ASSERT_OFFSET(imImageInfoRec, imageWidth, 0);
SDK_ASSERT_OFFSET(imImageInfoRec, imageHeight, 4);
SDK_ASSERT_OFFSET(imImageInfoRec, depth, 10);
SDK_ASSERT_OFFSET(imImageInfoRec, subType, 12);
SDK_ASSERT_OFFSET(imImageInfoRec, fieldType, 16);
SDK_ASSERT_OFFSET(imImageInfoRec, alphaType, 20);
SDK_ASSERT_OFFSET(imImageInfoRec, noDuration, 30);
SDK_ASSERT_OFFSET(imImageInfoRec, pixelAspectNum, 32);
SDK_ASSERT_OFFSET(imImageInfoRec, pixelAspectDen, 36);
SDK_ASSERT_OFFSET(imImageInfoRec, importerID, 44);
SDK_ASSERT_OFFSET(imImageInfoRec, supportsAsyncIO, 48);
SDK_ASSERT_OFFSET(imImageInfoRec, supportsGetSourceVideo, 52);
SDK_ASSERT_OFFSET(imImageInfoRec, hasPulldown, 56);
SDK_ASSERT_OFFSET(imImageInfoRec, codecDescription, 80);

struct imAudioInfoRec7 {
    csSDK_int32 numChannels;
    float sampleRate;                   // Hz
    csSDK_int32 sampleType;             // PrAudioSampleType
};
SDK_ASSERT_SIZE(imAudioInfoRec7, 12);

struct imFileInfoRec8 {
    csSDK_int8 hasVideo;
    csSDK_int8 hasAudio;
    imImageInfoRec vidInfo;
    csSDK_int32 vidScale;               // the frame rate is vidScale / vidSampleSize
    csSDK_int32 vidSampleSize;
    csSDK_int32 vidDuration;            // in units of 1 / vidScale seconds
    imAudioInfoRec7 audInfo;
    PrAudioSample audDuration;          // sample frames
    csSDK_int32 accessModes;
    void* privatedata;
    void* prefs;
    csSDK_int8 hasDataRate;
    csSDK_int32 streamIdx;
    csSDK_int8 streamsAsComp;
    prUTF16Char streamName[256];
    csSDK_int32 sessionPluginID;
    csSDK_int8 alwaysUnquiet;
    csSDK_int8 unused;
    prUTF16Char filePath[2048];
    csSDK_int8 canProvidePeakData;
    csSDK_int8 mayBeGrowing;
    csSDK_int8 ignoreGrowing;
    prUTF16Char sourceSettingsMatchName[256];
    csSDK_int64 vidDurationInFrames;
    csSDK_int32 ivProjectionType;
    csSDK_int32 ivFrameLayout;
    csSDK_int32 ivHorizontalCapturedView;
    csSDK_int32 ivVerticalCapturedView;
};
SDK_ASSERT_SIZE(imFileInfoRec8, 5373);
SDK_ASSERT_OFFSET(imFileInfoRec8, hasVideo, 0);
SDK_ASSERT_OFFSET(imFileInfoRec8, hasAudio, 1);
SDK_ASSERT_OFFSET(imFileInfoRec8, vidInfo, 2);
SDK_ASSERT_OFFSET(imFileInfoRec8, vidScale, 162);
SDK_ASSERT_OFFSET(imFileInfoRec8, vidSampleSize, 166);
SDK_ASSERT_OFFSET(imFileInfoRec8, vidDuration, 170);
SDK_ASSERT_OFFSET(imFileInfoRec8, audInfo.numChannels, 174);
SDK_ASSERT_OFFSET(imFileInfoRec8, audInfo.sampleRate, 178);
SDK_ASSERT_OFFSET(imFileInfoRec8, audInfo.sampleType, 182);
SDK_ASSERT_OFFSET(imFileInfoRec8, audDuration, 186);
SDK_ASSERT_OFFSET(imFileInfoRec8, accessModes, 194);
SDK_ASSERT_OFFSET(imFileInfoRec8, privatedata, 198);
SDK_ASSERT_OFFSET(imFileInfoRec8, hasDataRate, 214);
SDK_ASSERT_OFFSET(imFileInfoRec8, streamIdx, 215);
SDK_ASSERT_OFFSET(imFileInfoRec8, streamName, 220);
SDK_ASSERT_OFFSET(imFileInfoRec8, filePath, 738);
SDK_ASSERT_OFFSET(imFileInfoRec8, canProvidePeakData, 4834);
SDK_ASSERT_OFFSET(imFileInfoRec8, vidDurationInFrames, 5349);

struct imIndPixelFormatRec {
    void* privatedata;
    csSDK_uint32 outPixelFormat;
    void* prefs;
};
SDK_ASSERT_SIZE(imIndPixelFormatRec, 20);
SDK_ASSERT_OFFSET(imIndPixelFormatRec, outPixelFormat, 8);

struct imAnalysisRec {
    void* privatedata;
    void* prefs;
    csSDK_int32 buffersize;             // bytes
    char* buffer;
    csSDK_int32 timecodeFormat;
};
SDK_ASSERT_SIZE(imAnalysisRec, 32);
SDK_ASSERT_OFFSET(imAnalysisRec, buffersize, 16);
SDK_ASSERT_OFFSET(imAnalysisRec, buffer, 20);

struct imDataSample {
    csSDK_uint32 sampledur;             // in sample-size units; bit 31 marks a key frame
    csSDK_uint32 samplesize;            // bytes
};
SDK_ASSERT_SIZE(imDataSample, 8);
inline constexpr csSDK_uint32 kDataSampleKeyFrame = 0x80000000u;

struct imDataRateAnalysisRec {
    void* privatedata;
    void* prefs;
    csSDK_int32 buffersize;             // bytes
    imDataSample* buffer;
    csSDK_int32 baserate;               // bytes per second apart from the samples
};
SDK_ASSERT_SIZE(imDataRateAnalysisRec, 32);
SDK_ASSERT_OFFSET(imDataRateAnalysisRec, buffersize, 16);
SDK_ASSERT_OFFSET(imDataRateAnalysisRec, buffer, 20);
SDK_ASSERT_OFFSET(imDataRateAnalysisRec, baserate, 28);

struct imImportAudioRec7 {
    PrAudioSample position;             // sample frames; negative: continue after the last import
    csSDK_uint32 size;                  // sample frames
    float** buffer;                     // one per channel
    void* privateData;
    void* prefs;
};
SDK_ASSERT_SIZE(imImportAudioRec7, 36);
SDK_ASSERT_OFFSET(imImportAudioRec7, size, 8);
SDK_ASSERT_OFFSET(imImportAudioRec7, buffer, 12);
SDK_ASSERT_OFFSET(imImportAudioRec7, privateData, 20);

struct imGetAudioChannelLayoutRec {
    void* inPrivateData;
    csSDK_int32 outChannelLabels[kMaxAudioChannelCount];
};
SDK_ASSERT_SIZE(imGetAudioChannelLayoutRec, 136);
SDK_ASSERT_OFFSET(imGetAudioChannelLayoutRec, outChannelLabels, 8);

struct imAsyncImporterCreationRec {
    void* inPrivateData;
    void* inPrefs;
    csSDK_int32 (*outAsyncEntry)(csSDK_int32 selector, void* param);
    void* outAsyncPrivateData;
};
SDK_ASSERT_SIZE(imAsyncImporterCreationRec, 32);
SDK_ASSERT_OFFSET(imAsyncImporterCreationRec, outAsyncEntry, 16);
SDK_ASSERT_OFFSET(imAsyncImporterCreationRec, outAsyncPrivateData, 24);

// Any member 0 means "any value".
struct imFrameFormat {
    csSDK_int32 inFrameWidth;
    csSDK_int32 inFrameHeight;
    csSDK_uint32 inPixelFormat;
};
SDK_ASSERT_SIZE(imFrameFormat, 12);
SDK_ASSERT_OFFSET(imFrameFormat, inFrameHeight, 4);
SDK_ASSERT_OFFSET(imFrameFormat, inPixelFormat, 8);

struct imRenderContext {
    csSDK_int32 inIntent;
    double inPlaybackRatio;
    double inPlaybackRate;
};
SDK_ASSERT_SIZE(imRenderContext, 20);

struct imSourceVideoRec {
    void* inPrivateData;
    csSDK_int32 currentStreamIdx;
    PrTime inFrameTime;
    imFrameFormat* inFrameFormats;      // in order of preference
    csSDK_int32 inNumFrameFormats;
    bool removePulldown;
    csSDK_int8 unused2[3];
    PPixHand* outFrame;
    void* prefs;
    csSDK_int32 prefsSize;
    PrSDKString selectedColorProfileName;
    csSDK_int32 inQuality;
    imRenderContext inRenderContext;
};
SDK_ASSERT_SIZE(imSourceVideoRec, 96);
SDK_ASSERT_OFFSET(imSourceVideoRec, inFrameTime, 12);
SDK_ASSERT_OFFSET(imSourceVideoRec, inFrameFormats, 20);
SDK_ASSERT_OFFSET(imSourceVideoRec, inNumFrameFormats, 28);
SDK_ASSERT_OFFSET(imSourceVideoRec, outFrame, 36);
SDK_ASSERT_OFFSET(imSourceVideoRec, selectedColorProfileName, 56);
SDK_ASSERT_OFFSET(imSourceVideoRec, inRenderContext, 76);

#pragma pack(pop)
