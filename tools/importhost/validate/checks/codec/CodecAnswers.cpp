// A codec that answers, but not with the truth.
#include "importhost/validate/checks/codec/CodecTopics.h"
#include "importhost/validate/checks/stage/Codec.h"

#include "hostkit/sessions/AsyncSession.h"
#include "hostkit/sessions/Names.h"
#include "importhost/validate/checks/stage/OpenClip.h"

namespace importhost::validate {

namespace {

struct Size {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

std::string text(Size size) { return std::to_string(size.width) + " x " + std::to_string(size.height); }

// Close to the true size, far from it, and such as no frame has.
std::vector<Size> otherSizes(const imFileInfoRec8& info) {
    const auto width = static_cast<std::uint32_t>(info.vidInfo.imageWidth);
    const auto height = static_cast<std::uint32_t>(info.vidInfo.imageHeight);
    return {{width + 1, height}, {width, height + 1},   {width * 2, height * 2}, {width / 2, height / 2},
            {height, width + 1}, {0, 0},                {0, height},             {width, 0},
            {1, 1},              {1024, 1024},        {0x7FFFFFFF, 1},         {0x7FFFFFFF, 0x7FFFFFFF},
            {0x80000000, 8},     {0xFFFFFFFE, 0xFFFFFFFE}};
}

bool hasSize(const hostkit::HostFrame& frame, Size size) {
    const auto view = frame.view();
    return view && static_cast<std::uint32_t>(view->width()) == size.width &&
           static_cast<std::uint32_t>(view->height()) == size.height;
}

bool isRefusal(csSDK_int32 result) { return result == imOtherErr || result == imBadCompression; }

void expectRefusedOrRight(CheckRun& run, const std::string& what, const hostkit::FrameAnswer& answer,
                          const std::vector<std::uint8_t>& right) {
    if (answer.result == imNoErr) {
        run.expect(pixelsOf(answer.frame) == right, what + ": it was delivered, but not with its pixels");
    } else {
        run.expect(isRefusal(answer.result), what + ": found " + hostkit::resultText(answer.result) +
                                                 ", wanted imOtherErr (5) or imBadCompression (8)");
    }
}

// The codec begins with another size than it described.
void lieAtTheBeginning(CheckRun& run, PlayedPlugin& plugin, Codec& codec, OpenClip& clip, Size size,
                       const std::vector<std::uint8_t>& right) {
    run.step(clip.clip().name + ", decoding begins with " + text(size));
    clip.session().info(0);         // ends the session before
    codec.answer(kStandinDecompressBegin, size.width, size.height, kStandinUnchanged);
    expectRefusedOrRight(run, "frame 0", clip.frame(0), right);
    expectRefusedOrRight(run, "frame 0, asked for again", clip.frame(0), right);
    imFrameFormat any = clip.wanted();
    any.inFrameWidth = any.inFrameHeight = 0;
    const auto answer = clip.session().frame(clip.timeOf(0), {any});
    run.expect(answer.result != imNoErr || pixelsOf(answer.frame) == right || hasSize(answer.frame, size),
               "frame 0 at any size was delivered, but neither with its pixels nor at the size that the codec stated");

    hostkit::AsyncSession async(plugin.session(), clip.session());
    if (async.create().result == imNoErr) {
        const auto ahead = async.get(clip.timeOf(0), {clip.wanted()});
        run.expect(ahead.result == aiUnknownError || (ahead.result == aiNoError && pixelsOf(ahead.frame) == right),
                   "frame 0 of the asynchronous importer: found " + hostkit::asyncResultText(ahead.result) +
                       ", wanted aiUnknownError (2) or its pixels");
    }
}

// The codec describes another size than it begins with. What it decodes has room in a frame of a larger one.
void lieInTheDescription(CheckRun& run, Codec& codec, OpenClip& clip, Size size) {
    const imImageInfoRec& truth = clip.info().vidInfo;
    const bool isRoom = size.width >= static_cast<std::uint32_t>(truth.imageWidth) &&
                        size.height >= static_cast<std::uint32_t>(truth.imageHeight);
    run.step(clip.clip().name + ", described as " + text(size));
    codec.answer(kStandinDecompressQuery, size.width, size.height, kStandinUnchanged);
    const auto info = clip.session().info(0);
    if (info.result == imBadFile || info.result == imOtherErr) {
        return;
    }
    run.expectResult("the answer to imGetInfo8", info.result, clip.infoResult());
    const imFrameFormat wanted = {info->vidInfo.imageWidth, info->vidInfo.imageHeight,
                                  static_cast<csSDK_uint32>(clip.formats().front())};
    const auto answer = clip.session().frame(clip.timeOf(0), {wanted});
    run.expect(isRefusal(answer.result) || (isRoom && answer.result == imNoErr && hasSize(answer.frame, size)),
               "frame 0 of that size: found " + hostkit::resultText(answer.result) +
                   ", wanted imOtherErr (5) or imBadCompression (8)");
}

void expectWell(CheckRun& run, Codec& codec, OpenClip& clip, const std::vector<std::uint8_t>& right) {
    codec.reset();
    run.expectResult("the answer to imGetInfo8 when the codec tells the truth again", clip.session().info(0).result,
                     clip.infoResult());
    const auto answer = clip.frame(0);
    run.expect(answer.result == imNoErr && pixelsOf(answer.frame) == right,
               "frame 0 is not what it was before: " + hostkit::resultText(answer.result));
}

}  // namespace

// --- codec-tells-other-sizes ------------------------------------------------------------------------------------

void codecTellsOtherSizes(CheckRun& run) {
    PlayedPlugin plugin(run);
    Codec codec(run);
    const auto clip = firstClip(plugin, Need::Pictures);
    const auto first = clip->frame(0);
    if (first.result != imNoErr) {
        run.skip("the first frame of " + clip->clip().name + " cannot be had at all");
    }
    const std::vector<std::uint8_t> right = pixelsOf(first.frame);
    for (const Size size : otherSizes(clip->info())) {
        lieAtTheBeginning(run, plugin, codec, *clip, size, right);
        expectWell(run, codec, *clip, right);
        lieInTheDescription(run, codec, *clip, size);
        expectWell(run, codec, *clip, right);
    }
}

// --- codec-tells-unknown-type -----------------------------------------------------------------------------------

void codecTellsUnknownType(CheckRun& run) {
    PlayedPlugin plugin(run);
    Codec codec(run);
    forEachClip(plugin, Need::Pictures, [&](OpenClip& clip) {
        for (const std::uint32_t type : {0U, 1U, 100U, 116U, 117U, 9999U, 0x80000000U}) {
            codec.answer(kStandinDecompressQuery, kStandinUnchanged, kStandinUnchanged, type);
            const std::string described = " of a stream of type " + std::to_string(type);
            run.expectResult("the description" + described, clip.session().info(0).result, imOtherErr);
            hostkit::AsyncSession async(plugin.session(), clip.session());
            run.expectResult("the asynchronous importer" + described, async.create().result, imOtherErr);
        }
        codec.reset();
        run.expectResult("the description when the codec tells the truth again", clip.session().info(0).result,
                         clip.infoResult());
    });
}

}  // namespace importhost::validate
