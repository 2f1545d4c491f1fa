// What imGetInfo8 tells, stream by stream, now and later.
#include "importhost/validate/checks/protocol/ClipFacts.h"
#include "importhost/validate/checks/protocol/ProtocolParts.h"
#include "importhost/validate/checks/stage/ErrorEvents.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace importhost::validate {

namespace {

using Streams = std::vector<hostkit::Answer<imFileInfoRec8>>;

constexpr std::uint8_t kPattern = 0x5A;

csSDK_int32 streamCount(const Streams& streams) { return static_cast<csSDK_int32>(streams.size()); }

// A record filled with a pattern instead of zeros, for the host to set its own fields in.
template <class T>
hostkit::HostRecord<T> patterned(std::size_t size = sizeof(T)) {
    hostkit::HostRecord<T> record(size);
    std::memset(record.data(), kPattern, record.size());
    return record;
}

hostkit::Answer<imFileInfoRec8> patternedInfo(PlayedPlugin& plugin, OpenClip& clip) {
    const std::u16string path = clip.clip().path.u16string();
    auto record = patterned<imFileInfoRec8>(plugin.host().profile().recordSizes().fileInfo);
    record->privatedata = clip.session().privateData();
    record->prefs = nullptr;
    record->streamIdx = 0;
    hostkit::HostRecord<imFileAccessRec8> access;
    access->filepath = path.c_str();
    access->fileref = clip.session().fileRef();
    return plugin.session().exchange(imGetInfo8, std::move(record), access.data());
}

csSDK_int32 patternedOpen(PlayedPlugin& plugin, const std::filesystem::path& file) {
    const std::u16string path = file.u16string();
    imFileRef fileRef = imInvalidHandleValue();
    auto record = patterned<imFileOpenRec8>();
    record->fileinfo.filepath = path.c_str();
    record->fileinfo.fileref = fileRef;
    record->privatedata = nullptr;
    record->inReadWrite = kPrOpenFileAccess_ReadOnly;
    record->inStreamIdx = 0;
    const auto answer = plugin.session().exchange(imOpenFile8, std::move(record), &fileRef);
    if (answer->privatedata) {
        plugin.session().call(imCloseFile, &fileRef, answer->privatedata);
    }
    return answer.result;
}

csSDK_int32 patternedFormat(PlayedPlugin& plugin, hostkit::ClipSession& clip) {
    auto record = patterned<imIndPixelFormatRec>();
    record->privatedata = clip.privateData();
    record->prefs = nullptr;
    return plugin.session().exchange(imGetIndPixelFormat, std::move(record), nullptr).result;
}

csSDK_int32 patternedDataRate(PlayedPlugin& plugin, hostkit::ClipSession& clip) {
    auto record = patterned<imDataRateAnalysisRec>();
    record->privatedata = clip.privateData();
    record->prefs = nullptr;
    record->buffer = nullptr;
    return plugin.session().exchange(imDataRateAnalysis, std::move(record), clip.fileRef()).result;
}

// A stream that the file does not have is told as a sound of nothing.
void expectNoStream(CheckRun& run, OpenClip& clip, csSDK_int32 stream) {
    const auto info = clip.session().info(stream);
    const std::string what = "stream " + std::to_string(stream);
    run.expectResult("the answer to " + what, info.result, imBadStreamIndex);
    run.expectEqual("pictures in " + what, static_cast<int>(info->hasVideo), 0);
    run.expectEqual("the sample type of " + what, hostkit::valueOf(info->audInfo.sampleType),
                    csSDK_int32{kPrAudioSampleType_Other});
    run.expectEqual("sample frames in " + what, hostkit::valueOf(info->audDuration), PrAudioSample{0});
}

}  // namespace

void streamsIterate(CheckRun& run) {
    forEachClip(run, Need::Nothing, [&](OpenClip& clip) {
        const Streams streams = clip.session().infos();
        if (clip.clip().made) {
            run.expectEqual("streams until the list ends", streams.size(),
                            std::max<std::size_t>(clip.clip().made->audio.size(), 1));
        }
        run.expectResult("the answer to the last of " + std::to_string(streams.size()) + " streams",
                         streams.back().result, streams.size() > 1 ? imBadStreamIndex : imNoErr);
        for (std::size_t stream = 1; stream < streams.size(); ++stream) {
            const std::string what = "stream " + std::to_string(stream);
            run.expectEqual("pictures in " + what, static_cast<int>(streams[stream]->hasVideo), 0);
            run.expectEqual("sound in " + what, static_cast<int>(streams[stream]->hasAudio), 1);
        }
    });
}

void streamsDirect(CheckRun& run) {
    const int tries = run.effort(4, 20);
    forEachClip(run, Need::Nothing, [&](OpenClip& clip) {
        const Streams streams = clip.session().infos();
        for (int i = 0; i < tries; ++i) {
            const auto stream = static_cast<std::size_t>(run.below(streams.size()));
            expectSame(run, "stream " + std::to_string(stream) + " asked for directly",
                       streamFacts(clip.session().info(static_cast<csSDK_int32>(stream))),
                       streamFacts(streams[stream]));
        }
        const csSDK_int32 count = streamCount(streams);
        for (const csSDK_int32 stream : {count, count + 1, 1000, std::numeric_limits<csSDK_int32>::max(), -1, -2,
                                         std::numeric_limits<csSDK_int32>::min()}) {
            expectNoStream(run, clip, stream);
        }
        expectSame(run, "stream 0 after streams that are none", streamFacts(clip.session().info(0)),
                   streamFacts(streams.front()));
    });
}

void infoAgain(CheckRun& run) {
    forEachClip(run, Need::Nothing, [&](OpenClip& clip) {
        const Facts first = streamFacts(clip.session().info(0));
        const Facts whole = clipFacts(clip);
        expectSame(run, "after pictures, sound and texts", streamFacts(clip.session().info(0)), first);
        clip.session().info(1);
        expectSame(run, "after another stream", clipFacts(clip), whole);
    });
}

void callsBeforeInfo(CheckRun& run) {
    PlayedPlugin plugin(run);
    forEachClip(plugin, Need::Nothing, [&](OpenClip& clip) {
        hostkit::ClipSession early(plugin.session(), clip.clip().path);
        run.expectResult("the answer to opening it once more", early.open().result);
        expectNoPictures(plugin, early);
        expectNoSound(plugin, early);
        run.expectResult("the answer to describing it after all", early.info(0).result, clip.infoResult());
        early.info(1);      // a sound alone, if anything
        expectNoPictures(plugin, early);
    });
}

void hostFieldsStay(CheckRun& run) {
    PlayedPlugin plugin(run);
    run.step("imInit");
    const auto init = plugin.session().exchangeFirst(imInit, patterned<imImportInfoRec>());
    run.expectResult("the answer", init.result, plugin.started().init.result);
    run.step("imGetIndFormat");
    plugin.session().exchange(imGetIndFormat, patterned<imIndFormatRec>(), nullptr);
    forEachClip(plugin, Need::Pictures, [&](OpenClip& clip) {
        const Facts wanted = streamFacts(clip.session().info(0));
        run.expectResult("the answer to opening it", patternedOpen(plugin, clip.clip().path));
        expectSame(run, "described in a record that is not empty", streamFacts(patternedInfo(plugin, clip)), wanted);
        run.expectResult("the answer to the first pixel format", patternedFormat(plugin, clip.session()));
        run.expectResult("the answer to the data rates", patternedDataRate(plugin, clip.session()));
    });
}

}  // namespace importhost::validate
