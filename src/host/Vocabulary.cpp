#include "host/Vocabulary.h"

#include "sdk/SdkAsyncImporter.h"

namespace {

constexpr char kUnknownName[] = "????";

}  // namespace

// One row of a name table: the identifier of a code is its name.
#define NAME(code) \
    case code: return #code

const char* SelectorName(csSDK_int32 selector) {
    switch (selector) {
    NAME(imInit);
    NAME(imShutdown);
    NAME(imImportImage);
    NAME(imQuietFile);
    NAME(imCloseFile);
    NAME(imAnalysis);
    NAME(imDataRateAnalysis);
    NAME(imGetIndFormat);
    NAME(imGetMetaData);
    NAME(imSetMetaData);
    NAME(imImportAudio7);
    NAME(imGetIndPixelFormat);
    NAME(imGetSupports7);
    NAME(imResetSequentialAudio);
    NAME(imGetSequentialAudio);
    NAME(imGetRollCrawlInfo);
    NAME(imRollCrawlRenderPage);
    NAME(imGetSupports8);
    NAME(imGetInfo8);
    NAME(imGetPrefs8);
    NAME(imOpenFile8);
    NAME(imSaveFile8);
    NAME(imDeleteFile8);
    NAME(imCalcSize8);
    NAME(imCheckTrim8);
    NAME(imTrimFile8);
    NAME(imGetPreferredFrameSize);
    NAME(imCreateAsyncImporter);
    NAME(imGetSourceVideo);
    NAME(imDeferredProcessing);
    NAME(imGetPeakAudio);
    NAME(imRetargetAccelerator);
    NAME(imCopyFile);
    NAME(imGetTimeInfo8);
    NAME(imSetTimeInfo8);
    NAME(imGetSubTypeNames);
    NAME(imGetFileAttributes);
    NAME(imQueryDestinationPath);
    NAME(imQueryContentState);
    NAME(imGetIndColorProfile);
    NAME(imQueryInputFileList);
    NAME(imQueryStreamLabel);
    NAME(imInitiateAsyncClosedCaptionScan);
    NAME(imGetNextClosedCaption);
    NAME(imCompleteAsyncClosedCaptionScan);
    NAME(imGetAudioChannelLayout);
    NAME(imSelectClipFrameDescriptor);
    NAME(imPerformSourceSettingsCommand);
    default: return kUnknownName;
    }
}

const char* ErrorName(csSDK_int32 result) {
    switch (result) {
    NAME(imNoErr);
    NAME(imTooWide);
    NAME(imBadFile);
    NAME(imUnsupported);
    NAME(imMemErr);
    NAME(imOtherErr);
    NAME(imNoContent);
    NAME(imBadRate);
    NAME(imBadCompression);
    NAME(imBadCodec);
    NAME(imNotFlat);
    NAME(imBadSndComp);
    NAME(imNoTimecode);
    NAME(imMissingComponent);
    NAME(imSaveErr);
    NAME(imDeleteErr);
    NAME(imNotFoundErr);
    NAME(imSetFile);
    NAME(imIterateStreams);
    NAME(imBadStreamIndex);
    NAME(imCantTrim);
    NAME(imDiskFull);
    NAME(imDiskErr);
    NAME(imFileShareViolation);
    NAME(imIterateFrameSizes);
    NAME(imMediaPending);
    NAME(imDRMControlled);
    NAME(imActivationFailed);
    NAME(imFrameNotFound);
    NAME(imBadHeader);
    NAME(imUnsupportedCompression);
    NAME(imFileOpenFailed);
    NAME(imFileHasNoImportableStreams);
    NAME(imFileReadFailed);
    NAME(imUnsupportedAudioFormat);
    NAME(imUnsupportedVideoBitDepth);
    NAME(imDecompressionError);
    NAME(imInvalidPreferences);
    case imFileNotAvailable: return "inFileNotAvailable";   // log readers know this spelling
    NAME(imRequiresProtectedContent);
    NAME(imNoCaptions);
    NAME(malSupports8);
    NAME(imDelegate);
    NAME(imCancel);
    NAME(imBadFormatIndex);
    NAME(imIsCacheable);
    default: return kUnknownName;
    }
}

const char* AsyncSelectorName(csSDK_int32 selector) {
    switch (selector) {
    NAME(aiInitiateAsyncRead);
    NAME(aiCancelAsyncRead);
    NAME(aiFlush);
    NAME(aiGetFrame);
    NAME(aiClose);
    NAME(aiContinueToWaitForAsyncIO);
    NAME(aiSelectEfficientRenderTime);
    default: return kUnknownName;
    }
}

const char* AsyncErrorName(csSDK_int32 result) {
    switch (result) {
    NAME(aiNoError);
    NAME(aiUnsupported);
    NAME(aiUnknownError);
    NAME(aiFrameNotFound);
    default: return kUnknownName;
    }
}

const char* PixelFormatName(csSDK_uint32 pixelFormat) {
    switch (pixelFormat) {
    NAME(PrPixelFormat_Any);
#define FORMAT(name, ...) NAME(PrPixelFormat_##name);
    QUORVANE_PIXEL_FORMATS(FORMAT)
#undef FORMAT
    default: return kUnknownName;
    }
}

const char* ChannelLabelName(csSDK_int32 label) {
    switch (label) {
    NAME(kPrAudioChannelLabel_Discrete);
    NAME(kPrAudioChannelLabel_FrontLeft);
    NAME(kPrAudioChannelLabel_FrontRight);
    NAME(kPrAudioChannelLabel_FrontCenter);
    NAME(kPrAudioChannelLabel_LowFrequency);
    NAME(kPrAudioChannelLabel_BackLeft);
    NAME(kPrAudioChannelLabel_BackRight);
    NAME(kPrAudioChannelLabel_BackCenter);
    NAME(kPrAudioChannelLabel_FrontLeftOfCenter);
    NAME(kPrAudioChannelLabel_FrontRightOfCenter);
    NAME(kPrAudioChannelLabel_SideLeft);
    NAME(kPrAudioChannelLabel_SideRight);
    NAME(kPrAudioChannelLabel_TopCenter);
    NAME(kPrAudioChannelLabel_TopFrontLeft);
    NAME(kPrAudioChannelLabel_TopFrontRight);
    NAME(kPrAudioChannelLabel_TopFrontCenter);
    NAME(kPrAudioChannelLabel_TopBackLeft);
    NAME(kPrAudioChannelLabel_TopBackRight);
    NAME(kPrAudioChannelLabel_TopBackCenter);
    NAME(kPrAudioChannelLabel_FrontLeftWide);
    NAME(kPrAudioChannelLabel_FrontRightWide);
    NAME(kPrAudioChannelLabel_LeftHeight);
    NAME(kPrAudioChannelLabel_RightHeight);
    NAME(kPrAudioChannelLabel_RearSurroundLeft);
    NAME(kPrAudioChannelLabel_RearSurroundRight);
    NAME(kPrAudioChannelLabel_LFE2);
    NAME(kPrAudioChannelLabel_LeftTotal);
    NAME(kPrAudioChannelLabel_RightTotal);
    NAME(kPrAudioChannelLabel_Ambisonic_W);
    NAME(kPrAudioChannelLabel_Ambisonic_X);
    NAME(kPrAudioChannelLabel_Ambisonic_Y);
    NAME(kPrAudioChannelLabel_Ambisonic_Z);
    default: return "Unknown_Channel_Label";
    }
}

#undef NAME
