// What a desk does, each action with what the plug-in must answer in the present state.
#include "importhost/validate/checks/state/Desk.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>

namespace importhost::validate {

// --- The file ---------------------------------------------------------------------------------------------------

void Desk::openSome() {
    m_async = nullptr;
    m_announced.clear();
    m_file = &m_files[m_run.below(m_files.size())];
    m_state = {};
    m_clip = std::make_unique<hostkit::ClipSession>(m_plugin.session(), m_file->clip().path);
    csSDK_int32 result = imNoErr;
    const std::string refusal = whileRefusing(Suffering::Opening, [&] { result = m_clip->open().result; });
    if (!refusal.empty() && result != m_file->opened()) {
        expectRefused("opening", result, {imBadFile, kExceptionResult}, refusal);
        result = m_clip->open().result;
    }
    expectResult("opening" + std::string(refusal.empty() ? "" : ", tried again"), result, m_file->opened());
    if (result == imNoErr) {
        m_state.file = ClipState::File::Open;
    }
}

// The asynchronous importer stays: it has the file open for itself.
void Desk::close() {
    expectResult("closing", m_clip->close(), imNoErr);
    m_state = {};
}

void Desk::quiet() {
    expectResult("quieting", m_clip->quiet(), imNoErr);
    m_state.file = ClipState::File::Quiet;
}

void Desk::openAgain() {
    csSDK_int32 result = imNoErr;
    const std::string refusal = whileRefusing(Suffering::Opening, [&] { result = m_clip->open().result; });
    if (!refusal.empty() && result != imNoErr) {
        expectRefused("opening the quiet clip", result, {imBadFile, kExceptionResult}, refusal);
        result = m_clip->open().result;
    }
    expectResult("opening the quiet clip", result, imNoErr);
    m_state.file = ClipState::File::Open;
}

// --- Description ------------------------------------------------------------------------------------------------

// Mostly stream 0, as that is the one with pictures.
void Desk::describe() { describeStream(m_run.below(5) != 0 ? 0 : m_run.below(m_file->streams().size())); }

void Desk::describeStream(std::size_t stream) {
    const auto index = static_cast<csSDK_int32>(stream);
    const std::string what = "the description of stream " + std::to_string(stream);
    std::optional<hostkit::Answer<imFileInfoRec8>> answer;
    const std::string refusal = whileRefusing(Suffering::Describing, [&] { answer = m_clip->info(index); });
    if (!refusal.empty()) {
        // What could be had meanwhile may be less than the whole: it is asked for once more.
        expectRefused(what, answer->result,
                      {imNoErr, imIterateStreams, imBadStreamIndex, imBadFile, imOtherErr, kExceptionResult}, refusal);
        answer = m_clip->info(index);
    }
    const KnownFile::Stream& known = m_file->streams()[stream];
    expectUsual(m_run, where() + ": " + what, outcomeOf(*answer), known.described);
    m_state.describe(stream, known);
}

void Desk::formats() {
    const auto count = static_cast<std::uint64_t>(m_file->formats().size());
    const auto index = static_cast<std::size_t>(m_run.below(count + 2));
    const auto answer = m_clip->pixelFormat(static_cast<csSDK_int32>(index));
    const std::string what = "pixel format " + std::to_string(index);
    if (!m_state.hasVideo) {
        expectResult(what, answer.result, kExceptionResult);
    } else if (index >= count) {
        expectResult(what, answer.result, imBadFormatIndex);
    } else {
        expectResult(what, answer.result, imNoErr);
        m_run.expect(answer->outPixelFormat == static_cast<csSDK_uint32>(m_file->formats()[index]),
                     where() + ": " + what + " is another one than before");
    }
}

void Desk::layout() {
    const auto answer = m_clip->channelLayout();
    if (!m_state.hasAudio) {
        expectResult("the channel layout", answer.result, kExceptionResult);
        return;
    }
    expectRemembered("the channel layout of stream " + std::to_string(*m_state.stream), outcomeOf(answer));
}

void Desk::analyse() {
    const auto text = m_clip->analysis();
    const auto rates = m_clip->dataRate();
    if (!m_state.hasVideo) {
        expectResult("the analysis text", text.result, kExceptionResult);
        expectResult("the data rates", rates.sizeCall.result, kExceptionResult);
        return;
    }
    expectRemembered("the analysis text", outcomeOf(text));
    expectRemembered("the data rates", outcomeOf(rates));
}

// --- Pictures and sound -----------------------------------------------------------------------------------------

void Desk::frame() {
    if (!m_state.hasVideo) {
        imFrameFormat any{};
        expectResult("a frame without pictures", m_clip->frame(0, {any}).result, kExceptionResult);
        return;
    }
    if (m_file->formats().empty()) {
        return;
    }
    const FrameWish wish = someFrame();
    Outcome outcome;
    const std::string refusal = whileRefusing(Suffering::Showing, [&] { outcome = askForFrame(wish); });
    if (refusal.empty() || outcome.result == imNoErr) {
        expectFrame(wish, outcome, "");
        return;
    }
    expectRefused("a frame", outcome.result,
                  {imOtherErr, imBadCompression, imFrameNotFound, imFileReadFailed, kExceptionResult}, refusal);
    expectFrame(wish, askForFrame(wish), ", asked for again");
}

// At a place, or going on where the sound before ended: both must give the same.
void Desk::sound() {
    if (!m_state.hasAudio) {
        expectResult("sound without sound", m_clip->audio(0, 10, 2).result, kExceptionResult);
        return;
    }
    const imFileInfoRec8 info = currentInfo();
    const csSDK_int32 channels = std::clamp<csSDK_int32>(info.audInfo.numChannels, 0, kMaxAudioChannelCount);
    const PrAudioSample places[] = {0, 1, 333, info.audDuration / 2, info.audDuration - 20, info.audDuration + 50};
    const csSDK_uint32 sizes[] = {1, 64, 500};
    const csSDK_uint32 size = sizes[m_run.below(std::size(sizes))];
    const bool goesOn = m_run.below(3) == 0;
    const PrAudioSample place = goesOn ? m_state.soundPosition
                                       : std::max<PrAudioSample>(0, places[m_run.below(std::size(places))]);
    const std::string what = "the sound of stream " + std::to_string(*m_state.stream) + ", " + std::to_string(size) +
                             " samples at " + std::to_string(place);
    std::optional<hostkit::AudioAnswer> answer;
    const std::string refusal = whileRefusing(
        Suffering::Sounding, [&] { answer = m_clip->audio(goesOn ? -1 : place, size, channels); });
    if (!refusal.empty()) {
        expectRefused("sound", answer->result, {imNoErr, imDecompressionError, kExceptionResult}, refusal);
        answer = m_clip->audio(place, size, channels);
    }
    expectRemembered(what, outcomeOf(*answer));
    if (goesOn) {
        expectRemembered(what, outcomeOf(m_clip->audio(place, size, channels)));
    }
    m_state.soundPosition = place + size;
}

// --- Asynchronous importers -------------------------------------------------------------------------------------

void Desk::createAsync() {
    auto async = std::make_unique<hostkit::AsyncSession>(m_plugin.session(), *m_clip);
    csSDK_int32 result = imNoErr;
    const std::string refusal = whileRefusing(Suffering::Describing, [&] { result = async->create().result; });
    if (!refusal.empty()) {
        expectRefused("making an asynchronous importer", result, {imNoErr, imBadFile, imOtherErr, kExceptionResult},
                      refusal);
        async->close();
        result = async->create().result;
    }
    expectResult("making an asynchronous importer", result, m_file->createdAsync());
    if (result == imNoErr && !m_file->formats().empty()) {
        m_async = std::move(async);
        m_announced.clear();
    }
}

void Desk::announce() {
    const FrameWish wish = someFrame();
    csSDK_int32 result = aiNoError;
    const std::string refusal = whileRefusing(
        Suffering::Showing, [&] { result = m_async->announce(timeOf(wish.frame), {wish.format}).result; });
    if (refusal.empty()) {
        expectResult("announcing a frame", result, aiNoError);
    } else {
        expectRefused("announcing a frame", result, {aiNoError, kExceptionResult}, refusal);
    }
    if (result == aiNoError) {
        m_announced.add(wish, refusal.empty());
    }
}

void Desk::collect() {
    const FrameWish wish = someFrame();
    const Announced announced = m_announced.take(wish);
    const Outcome answer = outcomeOf(m_async->get(timeOf(wish.frame), {wish.format}));
    if (!announced.isSure && answer.result != aiNoError) {
        m_run.expect(answer.result == aiUnknownError || answer.result == kExceptionResult,
                     where() + ": collecting a frame that something refused: " +
                         hostkit::asyncResultText(answer.result));
        return;
    }
    const Outcome* known = m_file->frame(announced.wish);
    if (!known) {
        if (answer.result == aiNoError) {
            m_file->rememberFrame(announced.wish, answer);
        }
        return;
    }
    m_run.expectAsyncResult(where() + ": collecting frame " + std::to_string(wish.frame), answer.result,
                            asyncResultFor(known->result));
    m_run.expect(answer.digest == known->digest || answer.result != aiNoError,
                 where() + ": frame " + std::to_string(wish.frame) + " is another one when it is collected");
}

void Desk::flush() {
    m_run.expectAsyncResult(where() + ": flushing", m_async->flush());
    m_announced.clear();
}

void Desk::closeAsync() {
    m_run.expectAsyncResult(where() + ": closing the asynchronous importer", m_async->close());
    m_async = nullptr;
    m_announced.clear();
}

// --- Calls that concern no clip ---------------------------------------------------------------------------------

void Desk::senseless() {
    switch (m_run.below(4)) {
        case 0: expectResult("imGetSupports8", m_plugin.session().supports8(), malSupports8); break;
        case 1: expectResult("import format 1", m_plugin.session().format(1).result, imBadFormatIndex); break;
        case 2: expectResult("import format 0", m_plugin.session().format(0).result, imNoErr); break;
        default: {
            const csSDK_int32 selectors[] = {-1, 2, 66, 81, 4711};
            const csSDK_int32 selector = selectors[m_run.below(std::size(selectors))];
            expectResult("selector " + std::to_string(selector), m_plugin.session().call(selector), imUnsupported);
        }
    }
}

}  // namespace importhost::validate
