// Selectors, results and other constants of the importer protocol.
#include "abidump/Tables.h"

namespace abidump {

std::vector<Number> importerSelectors() {
    return {
        NUMBER(imInit), NUMBER(imShutdown), NUMBER(imImportImage), NUMBER(imQuietFile), NUMBER(imCloseFile),
        NUMBER(imAnalysis), NUMBER(imDataRateAnalysis), NUMBER(imGetIndFormat), NUMBER(imGetMetaData),
        NUMBER(imSetMetaData), NUMBER(imImportAudio7), NUMBER(imGetIndPixelFormat), NUMBER(imGetSupports7),
        NUMBER(imResetSequentialAudio), NUMBER(imGetSequentialAudio), NUMBER(imGetRollCrawlInfo),
        NUMBER(imRollCrawlRenderPage), NUMBER(imGetSupports8), NUMBER(imGetInfo8), NUMBER(imGetPrefs8),
        NUMBER(imOpenFile8), NUMBER(imSaveFile8), NUMBER(imDeleteFile8), NUMBER(imCalcSize8), NUMBER(imCheckTrim8),
        NUMBER(imTrimFile8), NUMBER(imGetPreferredFrameSize), NUMBER(imCreateAsyncImporter), NUMBER(imGetSourceVideo),
        NUMBER(imDeferredProcessing), NUMBER(imGetPeakAudio), NUMBER(imRetargetAccelerator), NUMBER(imCopyFile),
        NUMBER(imGetTimeInfo8), NUMBER(imSetTimeInfo8), NUMBER(imGetSubTypeNames), NUMBER(imGetFileAttributes),
        NUMBER(imQueryDestinationPath), NUMBER(imQueryContentState), NUMBER(imGetIndColorProfile),
        NUMBER(imQueryInputFileList), NUMBER(imQueryStreamLabel), NUMBER(imInitiateAsyncClosedCaptionScan),
        NUMBER(imGetNextClosedCaption), NUMBER(imCompleteAsyncClosedCaptionScan), NUMBER(imGetAudioChannelLayout),
        NUMBER(imSelectClipFrameDescriptor), NUMBER(imPerformSourceSettingsCommand),
    };
}

std::vector<Number> importerResults() {
    return {
        NUMBER(imNoErr), NUMBER(imTooWide), NUMBER(imBadFile), NUMBER(imUnsupported), NUMBER(imMemErr),
        NUMBER(imOtherErr), NUMBER(imNoContent), NUMBER(imBadRate), NUMBER(imBadCompression), NUMBER(imBadCodec),
        NUMBER(imNotFlat), NUMBER(imBadSndComp), NUMBER(imNoTimecode), NUMBER(imMissingComponent), NUMBER(imSaveErr),
        NUMBER(imDeleteErr), NUMBER(imNotFoundErr), NUMBER(imSetFile), NUMBER(imIterateStreams),
        NUMBER(imBadStreamIndex), NUMBER(imCantTrim), NUMBER(imDiskFull), NUMBER(imDiskErr),
        NUMBER(imFileShareViolation), NUMBER(imIterateFrameSizes), NUMBER(imMediaPending), NUMBER(imDRMControlled),
        NUMBER(imActivationFailed), NUMBER(imFrameNotFound), NUMBER(imBadHeader), NUMBER(imUnsupportedCompression),
        NUMBER(imFileOpenFailed), NUMBER(imFileHasNoImportableStreams), NUMBER(imFileReadFailed),
        NUMBER(imUnsupportedAudioFormat), NUMBER(imUnsupportedVideoBitDepth), NUMBER(imDecompressionError),
        NUMBER(imInvalidPreferences), NUMBER(imFileNotAvailable), NUMBER(imRequiresProtectedContent),
        NUMBER(imNoCaptions), NUMBER(malSupports8), NUMBER(imDelegate), NUMBER(imCancel), NUMBER(imBadFormatIndex),
        NUMBER(imIsCacheable),
    };
}

std::vector<Number> asyncSelectors() {
    return {
        NUMBER(aiInitiateAsyncRead), NUMBER(aiCancelAsyncRead), NUMBER(aiFlush), NUMBER(aiGetFrame), NUMBER(aiClose),
        NUMBER(aiContinueToWaitForAsyncIO), NUMBER(aiSelectEfficientRenderTime),
    };
}

std::vector<Number> asyncResults() {
    return {
        NUMBER(aiNoError), NUMBER(aiUnsupported), NUMBER(aiUnknownError), NUMBER(aiFrameNotFound),
    };
}

std::vector<Number> channelLabels() {
    return {
        NUMBER(kPrAudioChannelLabel_Discrete), NUMBER(kPrAudioChannelLabel_FrontLeft),
        NUMBER(kPrAudioChannelLabel_FrontRight), NUMBER(kPrAudioChannelLabel_FrontCenter),
        NUMBER(kPrAudioChannelLabel_LowFrequency), NUMBER(kPrAudioChannelLabel_BackLeft),
        NUMBER(kPrAudioChannelLabel_BackRight), NUMBER(kPrAudioChannelLabel_BackCenter),
        NUMBER(kPrAudioChannelLabel_FrontLeftOfCenter), NUMBER(kPrAudioChannelLabel_FrontRightOfCenter),
        NUMBER(kPrAudioChannelLabel_SideLeft), NUMBER(kPrAudioChannelLabel_SideRight),
        NUMBER(kPrAudioChannelLabel_TopCenter), NUMBER(kPrAudioChannelLabel_TopFrontLeft),
        NUMBER(kPrAudioChannelLabel_TopFrontRight), NUMBER(kPrAudioChannelLabel_TopFrontCenter),
        NUMBER(kPrAudioChannelLabel_TopBackLeft), NUMBER(kPrAudioChannelLabel_TopBackRight),
        NUMBER(kPrAudioChannelLabel_TopBackCenter), NUMBER(kPrAudioChannelLabel_FrontLeftWide),
        NUMBER(kPrAudioChannelLabel_FrontRightWide), NUMBER(kPrAudioChannelLabel_LeftHeight),
        NUMBER(kPrAudioChannelLabel_RightHeight), NUMBER(kPrAudioChannelLabel_RearSurroundLeft),
        NUMBER(kPrAudioChannelLabel_RearSurroundRight), NUMBER(kPrAudioChannelLabel_LFE2),
        NUMBER(kPrAudioChannelLabel_LeftTotal), NUMBER(kPrAudioChannelLabel_RightTotal),
        NUMBER(kPrAudioChannelLabel_Ambisonic_W), NUMBER(kPrAudioChannelLabel_Ambisonic_X),
        NUMBER(kPrAudioChannelLabel_Ambisonic_Y), NUMBER(kPrAudioChannelLabel_Ambisonic_Z),
    };
}

std::vector<Number> sampleTypes() {
    return {
        NUMBER(kPrAudioSampleType_8BitInt), NUMBER(kPrAudioSampleType_16BitInt), NUMBER(kPrAudioSampleType_24BitInt),
        NUMBER(kPrAudioSampleType_32BitInt), NUMBER(kPrAudioSampleType_32BitFloat), NUMBER(kPrAudioSampleType_Other),
    };
}

std::vector<Number> otherNumbers() {
    return {
        NUMBER(kMaxAudioChannelCount), NUMBER(kPrFalse), NUMBER(kPrTrue), NUMBER(kSPNoError),
        NUMBER(kSPSuiteNotFoundError), NUMBER(PrPPixBufferAccess_ReadOnly), NUMBER(PrPPixBufferAccess_WriteOnly),
        NUMBER(PrPPixBufferAccess_ReadWrite), NUMBER(kPrOpenFileAccess_ReadOnly), NUMBER(kPrOpenFileAccess_ReadWrite),
        NUMBER(kRandomAccessImport), NUMBER(kSeparateSequentialAudio), NUMBER(kEventTypeInformational),
        NUMBER(kEventTypeWarning), NUMBER(kEventTypeError), NUMBER(prFieldsNone), NUMBER(prFieldsUpperFirst),
        NUMBER(prFieldsLowerFirst), NUMBER(prFieldsUnknown), NUMBER(alphaUnknown), NUMBER(alphaStraight),
        NUMBER(alphaNone),
    };
}

}  // namespace abidump
