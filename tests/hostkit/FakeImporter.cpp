// An importer of text files. A clip's first word is "fake"; the others choose its streams and its bad manners:
//   formats=bgra,yuy2  sound=3  scale=30000 size=1001 frames=10  missing-frames
//   leak-suite  leak-frame  overrun-frame  overrun-record  overrun-sound  overrun-text  unlisted-field  throw
// Pictures are 8 x 6. In bgra a pixel is B = 16 x, G = 16 y from the top, R = frame, A = 255; in any other format
// every byte of a row is the frame number.
#include "sdk/SdkImporter.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#ifdef _WIN32
#define FAKE_EXPORT extern "C" __declspec(dllexport)
#else
#define FAKE_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

constexpr csSDK_int32 kWidth = 8;
constexpr csSDK_int32 kHeight = 6;
constexpr csSDK_int32 kFileType = 0x46414B45;
constexpr char kSubTypes[2][2] = {"A", "B"};

struct Clip {
    SPBasicSuite* basic = nullptr;
    const PrSDKPPixCreatorSuite* creator = nullptr;
    const PrSDKPPixSuite* frames = nullptr;
    const PrSDKTimeSuite* time = nullptr;
    std::vector<std::string> words;
    std::vector<csSDK_uint32> formats;
    csSDK_int32 scale = 25;
    csSDK_int32 sampleSize = 1;
    csSDK_int32 frameCount = 10;
    csSDK_int32 soundStreams = 1;

    bool does(const std::string& word) const {
        for (const std::string& own : words) {
            if (own == word) {
                return true;
            }
        }
        return false;
    }
};

SPBasicSuite* basicSuiteOf(imStdParms* stdParms) { return stdParms->piSuites->utilFuncs->getSPBasicSuite(); }

template <class Suite>
const Suite* acquire(SPBasicSuite* basic, const char* name, csSDK_int32 version) {
    const void* suite = nullptr;
    basic->AcquireSuite(name, version, &suite);
    return static_cast<const Suite*>(suite);
}

std::vector<csSDK_uint32> formatList(const std::string& text) {
    std::vector<csSDK_uint32> formats;
    for (std::size_t at = 0; at + 4 <= text.size(); at += 5) {
        formats.push_back(fourCC({text[at], text[at + 1], text[at + 2], text[at + 3], 0}));
    }
    return formats;
}

void readWord(Clip& clip, const std::string& word) {
    const std::size_t equals = word.find('=');
    clip.words.push_back(word);
    if (equals == std::string::npos) {
        return;
    }
    const std::string name = word.substr(0, equals);
    const std::string value = word.substr(equals + 1);
    if (name == "formats") clip.formats = formatList(value);
    if (name == "sound") clip.soundStreams = std::stoi(value);
    if (name == "scale") clip.scale = std::stoi(value);
    if (name == "size") clip.sampleSize = std::stoi(value);
    if (name == "frames") clip.frameCount = std::stoi(value);
}

bool readClip(Clip& clip, const prUTF16Char* path) {
    std::ifstream in{std::filesystem::path(std::u16string(path))};
    std::string word;
    if (!(in >> word) || word != "fake") {
        return false;
    }
    clip.formats = formatList("bgra,yuy2");
    while (in >> word) {
        readWord(clip, word);
    }
    return true;
}

csSDK_int32 openFile(imStdParms* stdParms, imFileRef* fileRef, imFileOpenRec8* record) {
    if (!record->privatedata) {
        auto clip = new Clip;
        if (!readClip(*clip, record->fileinfo.filepath)) {
            delete clip;
            return imBadFile;
        }
        clip->basic = basicSuiteOf(stdParms);
        clip->creator = acquire<PrSDKPPixCreatorSuite>(clip->basic, kPrSDKPPixCreatorSuite, 1);
        clip->frames = acquire<PrSDKPPixSuite>(clip->basic, kPrSDKPPixSuite, 1);
        clip->time = acquire<PrSDKTimeSuite>(clip->basic, kPrSDKTimeSuite, 1);
        record->privatedata = clip;
    }
    record->fileinfo.filetype = kFileType;
    record->fileinfo.fileref = *fileRef = record->privatedata;
    return imNoErr;
}

csSDK_int32 closeFile(imFileRef* fileRef, Clip* clip) {
    *fileRef = imInvalidHandleValue();
    clip->basic->ReleaseSuite(kPrSDKTimeSuite, 1);
    clip->basic->ReleaseSuite(kPrSDKPPixSuite, 1);
    if (!clip->does("leak-suite")) {
        clip->basic->ReleaseSuite(kPrSDKPPixCreatorSuite, 1);
    }
    delete clip;
    return imNoErr;
}

csSDK_int32 getFormat(csSDK_int32 index, imIndFormatRec* record) {
    if (index != 0) {
        return imBadFormatIndex;
    }
    record->filetype = kFileType;
    std::strcpy(record->FormatName, "Fake clip");
    std::strcpy(record->FormatShortName, "Fake");
    std::strcpy(record->PlatformExtension, "fake");
    return imNoErr;
}

csSDK_int32 getSubTypes(imStdParms* stdParms, imSubTypeDescriptionRec** out) {
    constexpr csSDK_uint32 count = sizeof(kSubTypes) / sizeof(kSubTypes[0]);
    *out = reinterpret_cast<imSubTypeDescriptionRec*>(
        stdParms->piSuites->memFuncs->newPtr(count * static_cast<csSDK_uint32>(sizeof(imSubTypeDescriptionRec))));
    for (csSDK_uint32 i = 0; i < count; ++i) {
        (*out)[i].subType = kSubTypes[i][0];
        (*out)[i].subTypeName[0] = static_cast<prUTF16Char>(kSubTypes[i][0]);
        (*out)[i].subTypeName[1] = 0;
    }
    return imNoErr;
}

csSDK_int32 getInfo(imFileInfoRec8* record) {
    const Clip& clip = *static_cast<Clip*>(record->privatedata);
    record->accessModes = kSeparateSequentialAudio;
    record->hasDataRate = 1;
    record->hasVideo = record->streamIdx == 0;
    record->hasAudio = record->streamIdx < clip.soundStreams;
    if (record->hasVideo) {
        record->vidInfo.imageWidth = kWidth;
        record->vidInfo.imageHeight = kHeight;
        record->vidInfo.depth = 24;
        record->vidInfo.subType = kSubTypes[0][0];
        record->vidInfo.alphaType = alphaNone;
        record->vidInfo.pixelAspectNum = record->vidInfo.pixelAspectDen = 1;
        record->vidInfo.supportsGetSourceVideo = 1;
        record->vidScale = clip.scale;
        record->vidSampleSize = clip.sampleSize;
        record->vidDuration = clip.frameCount * clip.sampleSize;
    }
    if (record->hasAudio) {
        record->audInfo = {2, 48000.0f, kPrAudioSampleType_16BitInt};
        record->audDuration = 96000;
    }
    if (clip.does("unlisted-field")) {
        record->vidInfo.noDuration = 1;
    }
    if (clip.does("overrun-record")) {
        reinterpret_cast<char*>(record)[sizeof(imFileInfoRec8) + 8] = 1;
    }
    if (clip.soundStreams > record->streamIdx + 1) {
        return imIterateStreams;
    }
    return record->streamIdx > 0 ? imBadStreamIndex : imNoErr;
}

csSDK_int32 getPixelFormat(csSDK_int32 index, imIndPixelFormatRec* record) {
    const Clip& clip = *static_cast<Clip*>(record->privatedata);
    if (index >= static_cast<csSDK_int32>(clip.formats.size())) {
        return imBadFormatIndex;
    }
    record->outPixelFormat = clip.formats[static_cast<std::size_t>(index)];
    return imNoErr;
}

csSDK_int32 getAnalysis(imAnalysisRec* record) {
    const Clip& clip = *static_cast<Clip*>(record->privatedata);
    std::snprintf(record->buffer, static_cast<std::size_t>(record->buffersize), "\nVideo stream:\nFake pictures\n");
    if (clip.does("overrun-text")) {
        record->buffer[record->buffersize] = 0;
    }
    return imNoErr;
}

csSDK_int32 getDataRate(imDataRateAnalysisRec* record) {
    const Clip& clip = *static_cast<Clip*>(record->privatedata);
    if (!record->buffer) {
        record->buffersize = clip.frameCount * static_cast<csSDK_int32>(sizeof(imDataSample));
        return imNoErr;
    }
    for (csSDK_int32 i = 0; i < clip.frameCount; ++i) {
        record->buffer[i] = {static_cast<csSDK_uint32>(clip.sampleSize) | kDataSampleKeyFrame,
                             static_cast<csSDK_uint32>(100 * (i + 1))};
    }
    record->baserate = 0;
    return imNoErr;
}

csSDK_int32 getLayout(imGetAudioChannelLayoutRec* record) {
    record->outChannelLabels[0] = kPrAudioChannelLabel_FrontLeft;
    record->outChannelLabels[1] = kPrAudioChannelLabel_FrontRight;
    return imNoErr;
}

void paint(const Clip& clip, PPixHand frame, csSDK_int64 number) {
    char* pixels = nullptr;
    csSDK_int32 rowBytes = 0;
    PrPixelFormat format = PrPixelFormat_Invalid;
    clip.frames->GetPixels(frame, PrPPixBufferAccess_WriteOnly, &pixels);
    clip.frames->GetRowBytes(frame, &rowBytes);
    clip.frames->GetPixelFormat(frame, &format);
    for (csSDK_int32 row = 0; row < kHeight; ++row) {
        char* bytes = pixels + static_cast<std::ptrdiff_t>(row) * rowBytes;
        if (format != PrPixelFormat_BGRA_4444_8u) {
            std::memset(bytes, static_cast<int>(number), static_cast<std::size_t>(rowBytes));
            continue;
        }
        for (csSDK_int32 x = 0; x < kWidth; ++x) {
            bytes[4 * x] = static_cast<char>(16 * x);
            bytes[4 * x + 1] = static_cast<char>(16 * (kHeight - 1 - row));
            bytes[4 * x + 2] = static_cast<char>(number);
            bytes[4 * x + 3] = static_cast<char>(255);
        }
    }
    if (clip.does("overrun-frame")) {
        pixels[static_cast<std::ptrdiff_t>(kHeight) * rowBytes] = 0;
    }
}

csSDK_int32 getFrame(imSourceVideoRec* record) {
    const Clip& clip = *static_cast<Clip*>(record->inPrivateData);
    if (clip.does("throw")) {
        throw std::runtime_error("no pictures today");
    }
    PrTime ticks = 0;
    clip.time->GetTicksPerSecond(&ticks);
    const csSDK_int64 number = record->inFrameTime / (clip.sampleSize * ticks / clip.scale);
    if (number < 0 || number >= clip.frameCount || clip.does("missing-frames")) {
        return imFrameNotFound;
    }
    const auto format = static_cast<PrPixelFormat>(record->inFrameFormats[0].inPixelFormat);
    prRect bounds;
    bounds.right = kWidth;
    bounds.bottom = kHeight;
    PPixHand frame = nullptr;
    if (clip.creator->CreatePPix(&frame, PrPPixBufferAccess_WriteOnly, format, &bounds) < 0) {
        return imOtherErr;
    }
    paint(clip, frame, number);
    if (clip.does("leak-frame")) {
        clip.creator->CreatePPix(&frame, PrPPixBufferAccess_WriteOnly, format, &bounds);
    }
    *record->outFrame = frame;
    return imNoErr;
}

csSDK_int32 getSound(imImportAudioRec7* record) {
    const Clip& clip = *static_cast<Clip*>(record->privateData);
    const csSDK_uint32 count = record->size + (clip.does("overrun-sound") ? 1 : 0);
    for (csSDK_uint32 i = 0; i < count; ++i) {
        record->buffer[0][i] = static_cast<float>(record->position + i);
        record->buffer[1][i] = -static_cast<float>(record->position + i);
    }
    return imNoErr;
}

csSDK_int32 index(void* parameter) { return static_cast<csSDK_int32>(reinterpret_cast<std::intptr_t>(parameter)); }

}  // namespace

FAKE_EXPORT csSDK_int32 xImportEntry(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    switch (selector) {
        case imInit:
            static_cast<imImportInfoRec*>(param1)->priority = 200;
            static_cast<imImportInfoRec*>(param1)->avoidAudioConform = 1;
            return imNoErr;
        case imShutdown: return imNoErr;
        case imGetSupports8: return malSupports8;
        case imGetIndFormat: return getFormat(index(param1), static_cast<imIndFormatRec*>(param2));
        case imGetSubTypeNames: return getSubTypes(stdParms, static_cast<imSubTypeDescriptionRec**>(param2));
        case imOpenFile8:
            return openFile(stdParms, static_cast<imFileRef*>(param1), static_cast<imFileOpenRec8*>(param2));
        case imQuietFile: *static_cast<imFileRef*>(param1) = imInvalidHandleValue(); return imNoErr;
        case imCloseFile: return closeFile(static_cast<imFileRef*>(param1), static_cast<Clip*>(param2));
        case imGetInfo8: return getInfo(static_cast<imFileInfoRec8*>(param2));
        case imGetIndPixelFormat: return getPixelFormat(index(param1), static_cast<imIndPixelFormatRec*>(param2));
        case imAnalysis: return getAnalysis(static_cast<imAnalysisRec*>(param2));
        case imDataRateAnalysis: return getDataRate(static_cast<imDataRateAnalysisRec*>(param2));
        case imGetAudioChannelLayout: return getLayout(static_cast<imGetAudioChannelLayoutRec*>(param2));
        case imGetSourceVideo: return getFrame(static_cast<imSourceVideoRec*>(param2));
        case imImportAudio7: return getSound(static_cast<imImportAudioRec7*>(param2));
        default: return imUnsupported;
    }
}
