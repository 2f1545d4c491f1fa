#include "hostkit/sessions/Names.h"

#include "hostkit/sessions/ImporterSession.h"
#include "sdk/SdkAsyncImporter.h"

#include <algorithm>

namespace hostkit {

namespace {

struct Row {
    csSDK_int32 code;
    std::string_view name;
};

// The enumerator names itself, so a name cannot stand at the wrong number.
#define NAMED(name) Row { name, #name }
#define LABEL(name) Row { kPrAudioChannelLabel_##name, #name }

constexpr Row kSelectors[] = {
    NAMED(imInit), NAMED(imShutdown), NAMED(imImportImage), NAMED(imQuietFile), NAMED(imCloseFile), NAMED(imAnalysis),
    NAMED(imDataRateAnalysis), NAMED(imGetIndFormat), NAMED(imGetMetaData), NAMED(imSetMetaData),
    NAMED(imImportAudio7), NAMED(imGetIndPixelFormat), NAMED(imGetSupports7), NAMED(imResetSequentialAudio),
    NAMED(imGetSequentialAudio), NAMED(imGetRollCrawlInfo), NAMED(imRollCrawlRenderPage), NAMED(imGetSupports8),
    NAMED(imGetInfo8), NAMED(imGetPrefs8), NAMED(imOpenFile8), NAMED(imSaveFile8), NAMED(imDeleteFile8),
    NAMED(imCalcSize8), NAMED(imCheckTrim8), NAMED(imTrimFile8), NAMED(imGetPreferredFrameSize),
    NAMED(imCreateAsyncImporter), NAMED(imGetSourceVideo), NAMED(imDeferredProcessing), NAMED(imGetPeakAudio),
    NAMED(imRetargetAccelerator), NAMED(imCopyFile), NAMED(imGetTimeInfo8), NAMED(imSetTimeInfo8),
    NAMED(imGetSubTypeNames), NAMED(imGetFileAttributes), NAMED(imQueryDestinationPath), NAMED(imQueryContentState),
    NAMED(imGetIndColorProfile), NAMED(imQueryInputFileList), NAMED(imQueryStreamLabel),
    NAMED(imInitiateAsyncClosedCaptionScan), NAMED(imGetNextClosedCaption), NAMED(imCompleteAsyncClosedCaptionScan),
    NAMED(imGetAudioChannelLayout), NAMED(imSelectClipFrameDescriptor), NAMED(imPerformSourceSettingsCommand),
};

constexpr Row kAsyncSelectors[] = {
    NAMED(aiInitiateAsyncRead), NAMED(aiCancelAsyncRead), NAMED(aiFlush), NAMED(aiGetFrame), NAMED(aiClose),
    NAMED(aiContinueToWaitForAsyncIO), NAMED(aiSelectEfficientRenderTime),
};

constexpr Row kResults[] = {
    NAMED(imNoErr), NAMED(imTooWide), NAMED(imBadFile), NAMED(imUnsupported), NAMED(imMemErr),
    NAMED(imOtherErr), NAMED(imNoContent), NAMED(imBadRate), NAMED(imBadCompression), NAMED(imBadCodec),
    NAMED(imNotFlat), NAMED(imBadSndComp), NAMED(imNoTimecode), NAMED(imMissingComponent), NAMED(imSaveErr),
    NAMED(imDeleteErr), NAMED(imNotFoundErr), NAMED(imSetFile), NAMED(imIterateStreams),
    NAMED(imBadStreamIndex), NAMED(imCantTrim), NAMED(imDiskFull), NAMED(imDiskErr), NAMED(imFileShareViolation),
    NAMED(imIterateFrameSizes), NAMED(imMediaPending), NAMED(imDRMControlled), NAMED(imActivationFailed),
    NAMED(imFrameNotFound), NAMED(imBadHeader), NAMED(imUnsupportedCompression), NAMED(imFileOpenFailed),
    NAMED(imFileHasNoImportableStreams), NAMED(imFileReadFailed), NAMED(imUnsupportedAudioFormat),
    NAMED(imUnsupportedVideoBitDepth), NAMED(imDecompressionError), NAMED(imInvalidPreferences),
    NAMED(imFileNotAvailable), NAMED(imRequiresProtectedContent), NAMED(imNoCaptions), NAMED(malSupports8),
    NAMED(imDelegate), NAMED(imCancel), NAMED(imBadFormatIndex), NAMED(imIsCacheable),
    {99, "malUnknownError"}, {kEscapedException, "exception"},
};

constexpr Row kLabels[] = {
    LABEL(Discrete), LABEL(FrontLeft), LABEL(FrontRight), LABEL(FrontCenter), LABEL(LowFrequency), LABEL(BackLeft),
    LABEL(BackRight), LABEL(BackCenter), LABEL(FrontLeftOfCenter), LABEL(FrontRightOfCenter), LABEL(SideLeft),
    LABEL(SideRight), LABEL(TopCenter), LABEL(TopFrontLeft), LABEL(TopFrontRight), LABEL(TopFrontCenter),
    LABEL(TopBackLeft), LABEL(TopBackRight), LABEL(TopBackCenter), LABEL(FrontLeftWide), LABEL(FrontRightWide),
    LABEL(LeftHeight), LABEL(RightHeight), LABEL(RearSurroundLeft), LABEL(RearSurroundRight), LABEL(LFE2),
    LABEL(LeftTotal), LABEL(RightTotal), LABEL(Ambisonic_W), LABEL(Ambisonic_X), LABEL(Ambisonic_Y),
    LABEL(Ambisonic_Z),
};

#undef RESULT
#undef LABEL

constexpr Row kSampleTypes[] = {
    {kPrAudioSampleType_8BitInt, "8-bit integer"},   {kPrAudioSampleType_16BitInt, "16-bit integer"},
    {kPrAudioSampleType_24BitInt, "24-bit integer"}, {kPrAudioSampleType_32BitInt, "32-bit integer"},
    {kPrAudioSampleType_32BitFloat, "32-bit float"}, {kPrAudioSampleType_Other, "other"},
};

constexpr Row kFieldTypes[] = {
    {prFieldsNone, "progressive"},
    {prFieldsUpperFirst, "upper field first"},
    {prFieldsLowerFirst, "lower field first"},
    {prFieldsUnknown, "fields in unknown order"},
};

constexpr Row kAlphaTypes[] = {
    {alphaUnknown, "unknown alpha"},
    {alphaStraight, "straight alpha"},
    {alphaNone, "no alpha"},
};

template <std::size_t count>
std::string_view nameIn(const Row (&rows)[count], csSDK_int32 code) {
    const auto found =
        std::find_if(std::begin(rows), std::end(rows), [code](const Row& row) { return row.code == code; });
    return found == std::end(rows) ? "unknown" : found->name;
}

}  // namespace

std::string_view selectorName(csSDK_int32 selector) { return nameIn(kSelectors, selector); }
std::string_view asyncSelectorName(csSDK_int32 selector) { return nameIn(kAsyncSelectors, selector); }
std::string_view resultName(csSDK_int32 result) { return nameIn(kResults, result); }
std::string_view channelLabelName(csSDK_int32 label) { return nameIn(kLabels, label); }
std::string_view sampleTypeName(csSDK_int32 type) { return nameIn(kSampleTypes, type); }
std::string_view fieldTypeName(csSDK_int32 type) { return nameIn(kFieldTypes, type); }
std::string_view alphaTypeName(csSDK_int32 type) { return nameIn(kAlphaTypes, type); }

std::string resultText(csSDK_int32 result) {
    if (result == kEscapedException) {
        return "an exception left the plug-in";
    }
    return std::string(resultName(result)).append(" (").append(std::to_string(result)).append(")");
}

}  // namespace hostkit
