// Hosts whose records hold something in bytes that they promise to leave zero, or values that no host sends.
#include "WrongCase.h"

#include <cstring>

using enum hostprobe::Sentence;

namespace {

struct SpoiltByte {
    int key;                // as PlayedHost has it
    const char* call;
    int offset;
    csSDK_int32 version = IMPORTMOD_VERSION_18;
};

// The first and the last byte of every stretch that is promised.
constexpr SpoiltByte kSpoiltBytes[] = {
    {imInit, "imInit", 4}, {imInit, "imInit", 192},
    {imGetIndFormat, "imGetIndFormat", 0}, {imGetIndFormat, "imGetIndFormat", 763},
    {Host::kAccess, "imGetInfo8", 28}, {Host::kAccess, "imGetInfo8", 35},
    {imOpenFile8, "imOpenFile8", 28}, {imOpenFile8, "imOpenFile8", 35},
    {imOpenFile8, "imOpenFile8", 44}, {imOpenFile8, "imOpenFile8", 47},
    {imOpenFile8, "imOpenFile8", 56}, {imOpenFile8, "imOpenFile8", 63},
    {imGetInfo8, "imGetInfo8", 0}, {imGetInfo8, "imGetInfo8", 45},
    {imGetInfo8, "imGetInfo8", 50}, {imGetInfo8, "imGetInfo8", 197},
    {imGetInfo8, "imGetInfo8", 206}, {imGetInfo8, "imGetInfo8", 214},
    {imGetInfo8, "imGetInfo8", 219}, {imGetInfo8, "imGetInfo8", 731},
    {imGetInfo8, "imGetInfo8", 736}, {imGetInfo8, "imGetInfo8", 4835},
    {imGetInfo8, "imGetInfo8", 4837}, {imGetInfo8, "imGetInfo8", 5372},
    {imGetInfo8, "imGetInfo8", 5373, IMPORTMOD_VERSION_23}, {imGetInfo8, "imGetInfo8", 5375, IMPORTMOD_VERSION_23},
    {imGetIndPixelFormat, "imGetIndPixelFormat", 8}, {imGetIndPixelFormat, "imGetIndPixelFormat", 19},
    {imAnalysis, "imAnalysis", 8}, {imAnalysis, "imAnalysis", 15},
    {imDataRateAnalysis, "imDataRateAnalysis", 8}, {imDataRateAnalysis, "imDataRateAnalysis", 31},
    {Host::kSamples, "imDataRateAnalysis", 8}, {Host::kSamples, "imDataRateAnalysis", 15},
    {Host::kSamples, "imDataRateAnalysis", 28}, {Host::kSamples, "imDataRateAnalysis", 31},
    {imImportAudio7, "imImportAudio7", 28}, {imImportAudio7, "imImportAudio7", 35},
    {imCreateAsyncImporter, "imCreateAsyncImporter", 8}, {imCreateAsyncImporter, "imCreateAsyncImporter", 31},
    {imGetSourceVideo, "imGetSourceVideo", 33}, {imGetSourceVideo, "imGetSourceVideo", 35},
    {imGetSourceVideo, "imGetSourceVideo", 44}, {imGetSourceVideo, "imGetSourceVideo", 71},
    {imGetSourceVideo, "imGetSourceVideo", 96, IMPORTMOD_VERSION_23},
    {imGetSourceVideo, "imGetSourceVideo", 111, IMPORTMOD_VERSION_23},
    {Host::kAsync + aiGetFrame, "aiGetFrame", 33}, {Host::kAsync + aiGetFrame, "aiGetFrame", 71},
    {Host::kAsync + aiInitiateAsyncRead, "aiInitiateAsyncRead", 8},
    {Host::kAsync + aiInitiateAsyncRead, "aiInitiateAsyncRead", 11},
    {Host::kAsync + aiInitiateAsyncRead, "aiInitiateAsyncRead", 45},
    {Host::kAsync + aiInitiateAsyncRead, "aiInitiateAsyncRead", 47},
    {Host::kAsync + aiInitiateAsyncRead, "aiInitiateAsyncRead", 56},
    {Host::kAsync + aiInitiateAsyncRead, "aiInitiateAsyncRead", 83},
    {Host::kAsync + aiInitiateAsyncRead, "aiInitiateAsyncRead", 108, IMPORTMOD_VERSION_23},
    {Host::kAsync + aiInitiateAsyncRead, "aiInitiateAsyncRead", 123, IMPORTMOD_VERSION_23},
};

WrongCase spoiltByte(const SpoiltByte& byte) {
    const std::string offset = std::to_string(byte.offset);
    return {"Byte" + offset + "OfRecord" + std::to_string(byte.key), NotZero,
            std::string(byte.call) + ": the record is not zero at " + offset + ".", spoilt([byte](Host& host) {
                host.parms.imInterfaceVer = byte.version;
                host.spoil[byte.key] = [byte](char* record) { record[byte.offset] = 1; };
            })};
}

template <class T>
void put(Host& host, int key, std::size_t offset, T value) {
    host.spoil[key] = [=](char* record) { std::memcpy(record + offset, &value, sizeof(value)); };
}

// A whole life with another value in one record.
template <class T>
Play withValue(int key, std::size_t offset, T value) {
    return spoilt([=](Host& host) { put(host, key, offset, value); });
}

// One call with another value in a record.
template <class T>
Play onceWithValue(int key, std::size_t offset, T value, Play call) {
    return within([=](Host& host) {
        put(host, key, offset, value);
        call(host);
    });
}

void changeFormatsDuringFrame(Host& host) {
    host.duringFrame = [&host] { host.wanted.inFrameHeight = 99; };
    host.frame();
}

// A call for sound, with another buffer for the second channel.
Play secondBuffer(float* (*other)(float* first)) {
    return within([other](Host& host) {
        host.spoil[imImportAudio7] = [other](char* record) {
            float** channels = nullptr;
            std::memcpy(&channels, record + 12, sizeof(channels));
            channels[1] = other(channels[0]);
        };
        host.audio();
    });
}

}  // namespace

WrongCases wrongRecords() {
    void* const nothing = nullptr;
    const Play frame = &Host::frame;
    const Play sound = &Host::audio;
    const Play info = [](Host& host) { host.info(0); };
    const Play analysis = &Host::analysis;
    const std::string noSuchValue = " has a value that no host sends.";
    WrongCases cases = {
        {"AccessOfNoKind", BadValue, "imOpenFile8: inReadWrite" + noSuchValue,
         withValue(imOpenFile8, 48, csSDK_int32{7})},
        {"NegativeStream", BadValue, "imOpenFile8: inStreamIdx" + noSuchValue,
         withValue(imOpenFile8, 64, csSDK_int32{-1})},
        {"IgnoreGrowingTwo", BadValue, "imGetInfo8: ignoreGrowing" + noSuchValue,
         onceWithValue(imGetInfo8, 4836, char{2}, info)},
        {"QualityOfNoKind", BadValue, "imGetSourceVideo: inQuality" + noSuchValue,
         onceWithValue(imGetSourceVideo, 72, csSDK_int32{5}, frame)},
        {"RemovePulldownTwo", BadValue, "imGetSourceVideo: removePulldown" + noSuchValue,
         onceWithValue(imGetSourceVideo, 32, char{2}, frame)},
        {"NegativeStreamOfFrame", BadValue, "imGetSourceVideo: currentStreamIdx" + noSuchValue,
         onceWithValue(imGetSourceVideo, 8, csSDK_int32{-1}, frame)},
        {"NegativeWidth", BadValue, "imGetSourceVideo: a wanted frame's size" + noSuchValue,
         within([](Host& host) { host.wanted.inFrameWidth = -1; host.frame(); })},
        {"NegativeAnalysisBuffer", BadValue, "imAnalysis: buffersize" + noSuchValue,
         onceWithValue(imAnalysis, 16, csSDK_int32{-1}, analysis)},
        {"NegativeFormatCount", FormatCount, "imGetSourceVideo: the number of formats does not fit their list.",
         onceWithValue(imGetSourceVideo, 28, csSDK_int32{-1}, frame)},
        {"FormatsWithoutList", FormatCount, "imGetSourceVideo: the number of formats does not fit their list.",
         onceWithValue(imGetSourceVideo, 20, nothing, frame)},
        {"FormatsChangeMeanwhile", FormatsChanged, "imGetSourceVideo: the list of formats changed during the call.",
         within(changeFormatsDuringFrame)},
        {"FrameWithoutAPlace", OutFrameMissing, "imGetSourceVideo: there is no place for the frame.",
         onceWithValue(imGetSourceVideo, 36, nothing, frame)},
        {"OneBufferForTwoChannels", BuffersOverlap, "imImportAudio7: the buffers of two channels overlap.",
         secondBuffer([](float* first) { return first + 1; })},
        {"NoBuffers", ParameterMissing, "imImportAudio7: the buffer of channel 1 is missing.",
         onceWithValue(imImportAudio7, 12, nothing, sound)},
        {"OneBufferMissing", ParameterMissing, "imImportAudio7: the buffer of channel 2 is missing.",
         secondBuffer([](float*) -> float* { return nullptr; })},
        {"NoAnalysisBuffer", ParameterMissing, "imAnalysis: the buffer is missing.",
         onceWithValue(imAnalysis, 20, nothing, analysis)},
        {"NoPath", ParameterMissing, "imOpenFile8: the path is missing.", [](Host& host) {
             host.path = u"";
             host.init();
             host.open();
             host.end();
         }},
        {"NullPathForInfo", ParameterMissing, "imGetInfo8: the path is missing.",
         onceWithValue(Host::kAccess, 12, nothing, info)},
        {"NoRecord", ParameterMissing, "imGetSourceVideo: the second parameter is missing.",
         within([](Host& host) { host.call(imGetSourceVideo, host.reference, nullptr); })},
        {"NoFirstRecord", ParameterMissing, "imGetInfo8: the first parameter is missing.", within([](Host& host) {
             char record[5376] = {};
             host.call(imGetInfo8, nullptr, record);
         })},
        {"NoReference", ParameterMissing, "imQuietFile: the first parameter is missing.",
         within([](Host& host) { host.call(imQuietFile, nullptr, host.privateData); })},
        {"OtherTypeForInfo", OtherFileType, "imGetInfo8: the file type is not the one that this importer returned.",
         onceWithValue(Host::kAccess, 8, csSDK_int32{0}, info)},
        {"OtherTypeForReopen", OtherFileType, "imOpenFile8: the file type is not the one that this importer returned.",
         onceWithValue(imOpenFile8, 8, csSDK_int32{0}, [](Host& host) { host.quiet(); host.open(); })},
        {"OtherIdForInfo", OtherImporterId,
         "imGetInfo8: the importer's number is not the one of the first opening.",
         onceWithValue(imGetInfo8, 46, csSDK_int32{7}, info)},
        {"FrameOfAnUnknownFile", UnknownPrivateData,
         "imGetSourceVideo: the private data is not from this importer.",
         onceWithValue(imGetSourceVideo, 0, nothing, frame)},
        {"SoundOfAnUnknownFile", UnknownPrivateData,
         "imImportAudio7: the private data is not from this importer.",
         onceWithValue(imImportAudio7, 20, nothing, sound)},
        {"InfoOfAnUnknownFile", UnknownPrivateData,
         "imGetInfo8: the private data is not from this importer.",
         onceWithValue(imGetInfo8, 198, nothing, info)},
        {"CloseOfAnUnknownFile", UnknownPrivateData,
         "imCloseFile: the private data is not from this importer.",
         within([](Host& host) { host.call(imCloseFile, &host.reference, &host); })},
        {"SamplesNotAskedFor", SamplesNotAskedFor, "imDataRateAnalysis: a buffer came before its size was asked for.",
         within([](Host& host) { host.takeSamples(); })},
        {"TooFewSamples", SamplesDoNotFit, "imDataRateAnalysis: the buffer has 88 bytes where 96 were asked for.",
         withValue(Host::kSamples, 16, csSDK_int32{88})},
    };
    for (const SpoiltByte& byte : kSpoiltBytes) {
        cases.push_back(spoiltByte(byte));
    }
    return cases;
}
