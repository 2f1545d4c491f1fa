// Opening, description and closing of files.
#include "probe/AsyncImporters.h"
#include "probe/Clips.h"
#include "probe/Complaints.h"
#include "probe/Expectations.h"
#include "probe/InventedClip.h"
#include "probe/Names.h"
#include "probe/RecordPromises.h"
#include "probe/Selectors.h"
#include "probe/SuiteChecks.h"

#include <algorithm>
#include <atomic>

namespace hostprobe {

namespace {

// A number that no other opening had, in place of a system's handle.
imFileRef newReference() {
    static std::atomic<std::uintptr_t> last = 0x1000;
    return reinterpret_cast<imFileRef>(last += 8);
}

void storeReference(Clip& clip, void* variable, imFileRef reference) {
    clip.reference = reference;
    putAt(variable, 0, reference);
}

std::u16string pathOf(const std::string& call, const void* access) {
    const auto* path = static_cast<const prUTF16Char*>(pointerAt(access, kAccessPath));
    return expect(path && path[0] != 0, Sentence::ParameterMissing, {call, "the path"}) ? path : u"";
}

void expectPath(const Clip& clip, const std::string& call, const void* access) {
    const std::u16string path = pathOf(call, access);
    expect(path.empty() || path == clip.path, Sentence::OtherPath, {call});
}

void expectFileType(const std::string& call, const void* access) {
    expect(int32At(access, kAccessType) == kFileType, Sentence::OtherFileType, {call});
}

void checkOpenRecord(const void* record) {
    expectZeros("imOpenFile8", RecordKind::FileOpen, record, hostVersion());
    const csSDK_int32 access = int32At(record, kOpenAccess);
    expect(access == kPrOpenFileAccess_ReadOnly || access == kPrOpenFileAccess_ReadWrite, Sentence::BadValue,
           {"imOpenFile8", "inReadWrite"});
    expect(int32At(record, kOpenStream) >= 0, Sentence::BadValue, {"imOpenFile8", "inStreamIdx"});
}

void openFirst(imStdParms* stdParms, Clip& clip, const void* record) {
    checkSuites(basicSuiteOf(stdParms));
    clip.path = pathOf("imOpenFile8", record);
    clip.importerId = int32At(record, kOpenImporterId);
    clip.streamOfOpening = int32At(record, kOpenStream);
    clip.frames.emplace(basicSuiteOf(stdParms));
}

void openAgain(Clip& clip, const void* record) {
    expectPath(clip, "imOpenFile8", record);
    expectFileType("imOpenFile8", record);
    expect(int32At(record, kOpenImporterId) == clip.importerId, Sentence::OtherImporterId, {"imOpenFile8"});
    expect(int32At(record, kOpenStream) == clip.streamOfOpening, Sentence::OtherStream);
}

void describe(const StreamFacts& stream, void* record) {
    putAt<csSDK_int8>(record, kInfoHasVideo, stream.hasVideo);
    putAt<csSDK_int8>(record, kInfoHasAudio, 1);
    if (stream.hasVideo) {
        putAt(record, kInfoWidth, kWidth);
        putAt(record, kInfoHeight, kHeight);
        putAt<csSDK_int16>(record, kInfoDepth, 32);
        putAt(record, kInfoSubType, kSubType);
        putAt(record, kInfoAlphaType, alphaStraight);
        putAt<csSDK_uint32>(record, kInfoAspectNum, 1);
        putAt<csSDK_uint32>(record, kInfoAspectDen, 1);
        putAt<csSDK_int32>(record, kInfoAsync, 1);
        putAt<csSDK_int32>(record, kInfoSourceVideo, 1);
        putAt(record, kInfoScale, kFramesPerSecond);
        putAt<csSDK_int32>(record, kInfoSampleSize, 1);
        putAt(record, kInfoDuration, kFrameCount);
        putAt<csSDK_int8>(record, kInfoHasDataRate, 1);
    }
    putAt(record, kInfoChannels, stream.channels);
    putAt(record, kInfoSampleRate, kSoundRate);
    putAt(record, kInfoSampleType, kPrAudioSampleType_32BitFloat);
    putAt(record, kInfoAudioDuration, kSoundLength);
    putAt(record, kInfoAccessModes, kRandomAccessImport);
}

void checkInfoRecords(const Clip& clip, const void* access, const void* record) {
    expectZeros("imGetInfo8", RecordKind::FileAccess, access, hostVersion());
    expectZeros("imGetInfo8", RecordKind::FileInfo, record, hostVersion());
    expectPath(clip, "imGetInfo8", access);
    expectFileType("imGetInfo8", access);
    expect(int32At(record, kInfoImporterId) == clip.importerId, Sentence::OtherImporterId, {"imGetInfo8"});
    expect(fieldAt<unsigned char>(record, kInfoIgnoreGrowing) <= 1, Sentence::BadValue,
           {"imGetInfo8", "ignoreGrowing"});
}

}  // namespace

csSDK_int32 onOpenFile(imStdParms* stdParms, void* reference, void* record) {
    checkOpenRecord(record);
    void* privateData = pointerAt(record, kOpenPrivateData);
    const bool isFirst = privateData == nullptr;
    const ClipCall call(imOpenFile8, isFirst ? addClip() : privateData);
    Clip* clip = call.clip();
    if (!clip) {
        return imBadFile;
    }
    if (isFirst) {
        openFirst(stdParms, *clip, record);
    } else {
        openAgain(*clip, record);
        call.expectReference(pointerAt(reference, 0));
    }
    clip->state = Clip::State::Open;
    storeReference(*clip, reference, newReference());
    putAt(record, kAccessType, kFileType);
    putAt(record, kAccessReference, clip->reference);
    putAt<void*>(record, kOpenPrivateData, clip);
    return imNoErr;
}

csSDK_int32 onQuietFile(void* reference, void* privateData) {
    return answerFor({imQuietFile, privateData, pointerAt(reference, 0)}, [=](Clip& clip) {
        clip.state = Clip::State::Quiet;
        storeReference(clip, reference, imInvalidHandleValue());
        return imNoErr;
    });
}

csSDK_int32 onCloseFile(void* reference, void* privateData) {
    return answerFor({imCloseFile, privateData, pointerAt(reference, 0)}, [=](Clip& clip) {
        clip.state = Clip::State::Closed;
        clip.frames.reset();
        storeReference(clip, reference, imInvalidHandleValue());
        return imNoErr;
    });
}

csSDK_int32 onGetInfo(void* access, void* record) {
    void* const privateData = pointerAt(record, kInfoPrivateData);
    return answerFor({imGetInfo8, privateData, pointerAt(access, kAccessReference)}, [=](Clip& clip) {
        checkInfoRecords(clip, access, record);
        const csSDK_int32 stream = int32At(record, kInfoStream);
        if (!expect(stream >= 0 && stream < clip.promisedStreams, Sentence::StreamNotPromised,
                    {std::to_string(stream)})) {
            return imBadStreamIndex;
        }
        describe(kStreams[stream], record);
        clip.isDescribed = true;
        clip.stream = stream;
        clip.promisedStreams = std::clamp(stream + 2, clip.promisedStreams, kStreamCount);
        return stream + 1 == kStreamCount ? imBadStreamIndex : imIterateStreams;
    });
}

csSDK_int32 onGetIndPixelFormat(csSDK_int32 index, void* record) {
    return answerFor({imGetIndPixelFormat, pointerAt(record, kPixelFormatPrivateData)}, [=](Clip& clip) {
        expectZeros("imGetIndPixelFormat", RecordKind::PixelFormat, record, hostVersion());
        expect(index == 0 || index == clip.nextPixelFormat, Sentence::IndexOutOfTurn,
               {"imGetIndPixelFormat", std::to_string(index)});
        const bool isOffered = index >= 0 && index < kOfferedCount;
        clip.nextPixelFormat = isOffered ? index + 1 : 0;
        if (isOffered) {
            putAt(record, kPixelFormatOut, kOffered[index]);
        }
        return isOffered ? imNoErr : imBadFormatIndex;
    });
}

csSDK_int32 onCreateAsyncImporter(imStdParms* stdParms, void* record) {
    return answerFor({imCreateAsyncImporter, pointerAt(record, kCreationPrivateData)}, [=](Clip&) {
        expect(expected().async, Sentence::AsyncUnexpected);
        expectZeros("imCreateAsyncImporter", RecordKind::AsyncCreation, record, hostVersion());
        createAsyncImporter(basicSuiteOf(stdParms), record);
        return imNoErr;
    });
}

}  // namespace hostprobe
