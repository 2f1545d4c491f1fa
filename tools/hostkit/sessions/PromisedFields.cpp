#include "hostkit/sessions/PromisedFields.h"

#include <algorithm>

namespace hostkit {

namespace {

struct Promise {
    imSelector selector;
    ByteRange field;
};

#define FIELD(selector, record, member) Promise { selector, { offsetof(record, member), sizeof(record::member) } }
#define IMAGE(member) \
    Promise { imGetInfo8, \
              { offsetof(imFileInfoRec8, vidInfo) + offsetof(imImageInfoRec, member), sizeof(imImageInfoRec::member) } }

constexpr Promise kPromises[] = {
    FIELD(imInit, imImportInfoRec, priority),
    FIELD(imInit, imImportInfoRec, avoidAudioConform),

    FIELD(imGetIndFormat, imIndFormatRec, filetype),
    FIELD(imGetIndFormat, imIndFormatRec, canWriteTimecode),
    FIELD(imGetIndFormat, imIndFormatRec, FormatName),
    FIELD(imGetIndFormat, imIndFormatRec, FormatShortName),
    FIELD(imGetIndFormat, imIndFormatRec, PlatformExtension),

    {imOpenFile8, {offsetof(imFileAccessRec8, filetype), sizeof(imFileAccessRec8::filetype)}},
    {imOpenFile8, {offsetof(imFileAccessRec8, fileref), sizeof(imFileAccessRec8::fileref)}},
    FIELD(imOpenFile8, imFileOpenRec8, privatedata),

    FIELD(imGetInfo8, imFileInfoRec8, hasVideo),
    FIELD(imGetInfo8, imFileInfoRec8, hasAudio),
    IMAGE(imageWidth),
    IMAGE(imageHeight),
    IMAGE(depth),
    IMAGE(subType),
    IMAGE(fieldType),
    IMAGE(alphaType),
    IMAGE(pixelAspectNum),
    IMAGE(pixelAspectDen),
    IMAGE(supportsAsyncIO),
    IMAGE(supportsGetSourceVideo),
    IMAGE(hasPulldown),
    FIELD(imGetInfo8, imFileInfoRec8, vidScale),
    FIELD(imGetInfo8, imFileInfoRec8, vidSampleSize),
    FIELD(imGetInfo8, imFileInfoRec8, vidDuration),
    FIELD(imGetInfo8, imFileInfoRec8, audInfo),
    FIELD(imGetInfo8, imFileInfoRec8, audDuration),
    FIELD(imGetInfo8, imFileInfoRec8, accessModes),
    FIELD(imGetInfo8, imFileInfoRec8, hasDataRate),

    FIELD(imGetIndPixelFormat, imIndPixelFormatRec, outPixelFormat),

    FIELD(imDataRateAnalysis, imDataRateAnalysisRec, buffersize),
    FIELD(imDataRateAnalysis, imDataRateAnalysisRec, baserate),

    FIELD(imGetAudioChannelLayout, imGetAudioChannelLayoutRec, outChannelLabels),

    FIELD(imCreateAsyncImporter, imAsyncImporterCreationRec, outAsyncEntry),
    FIELD(imCreateAsyncImporter, imAsyncImporterCreationRec, outAsyncPrivateData),
};

#undef FIELD
#undef IMAGE

bool isPromised(imSelector selector, std::size_t offset) {
    return std::any_of(std::begin(kPromises), std::end(kPromises), [=](const Promise& promise) {
        return promise.selector == selector && offset >= promise.field.offset &&
               offset < promise.field.offset + promise.field.size;
    });
}

}  // namespace

std::vector<ByteRange> beyondPromise(imSelector selector, const std::vector<ByteRange>& written) {
    std::vector<ByteRange> beyond;
    for (const ByteRange& range : written) {
        for (std::size_t offset = range.offset; offset < range.offset + range.size; ++offset) {
            if (isPromised(selector, offset)) {
                continue;
            }
            if (!beyond.empty() && beyond.back().offset + beyond.back().size == offset) {
                ++beyond.back().size;
            } else {
                beyond.push_back({offset, 1});
            }
        }
    }
    return beyond;
}

}  // namespace hostkit
