#include "hostkit/Names.h"

#include "hostkit/ImporterSession.h"

#include <algorithm>

namespace hostkit {

namespace {

struct Row {
    csSDK_int32 code;
    std::string_view name;
};

// The enumerator names itself, so a name cannot stand at the wrong number.
#define RESULT(name) Row { name, #name }
#define LABEL(name) Row { kPrAudioChannelLabel_##name, #name }

constexpr Row kResults[] = {
    RESULT(imNoErr), RESULT(imTooWide), RESULT(imBadFile), RESULT(imUnsupported), RESULT(imMemErr),
    RESULT(imOtherErr), RESULT(imNoContent), RESULT(imBadRate), RESULT(imBadCompression), RESULT(imBadCodec),
    RESULT(imNotFlat), RESULT(imBadSndComp), RESULT(imNoTimecode), RESULT(imMissingComponent), RESULT(imSaveErr),
    RESULT(imDeleteErr), RESULT(imNotFoundErr), RESULT(imSetFile), RESULT(imIterateStreams),
    RESULT(imBadStreamIndex), RESULT(imCantTrim), RESULT(imDiskFull), RESULT(imDiskErr), RESULT(imFileShareViolation),
    RESULT(imIterateFrameSizes), RESULT(imMediaPending), RESULT(imDRMControlled), RESULT(imActivationFailed),
    RESULT(imFrameNotFound), RESULT(imBadHeader), RESULT(imUnsupportedCompression), RESULT(imFileOpenFailed),
    RESULT(imFileHasNoImportableStreams), RESULT(imFileReadFailed), RESULT(imUnsupportedAudioFormat),
    RESULT(imUnsupportedVideoBitDepth), RESULT(imDecompressionError), RESULT(imInvalidPreferences),
    RESULT(imFileNotAvailable), RESULT(imRequiresProtectedContent), RESULT(imNoCaptions), RESULT(malSupports8),
    RESULT(imDelegate), RESULT(imCancel), RESULT(imBadFormatIndex), RESULT(imIsCacheable),
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
