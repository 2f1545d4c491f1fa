#include "importhost/clips/SoundReader.h"

#include "commandline/OpenFailure.h"
#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"
#include "importhost/clips/SoundFormat.h"
#include "importhost/clips/VideoClip.h"
#include "importhost/console/Program.h"
#include "importhost/console/Refusal.h"

#include <algorithm>
#include <bit>

namespace importhost {

namespace {

constexpr float kHighestRate = 1e6f;        // Hz; far above any sound, and safe for calculations with sample numbers

}  // namespace

bool isUndelivered(float sample) {
    return std::bit_cast<std::uint32_t>(sample) == std::bit_cast<std::uint32_t>(hostkit::undeliveredSample());
}

SoundReader::SoundReader(Editor& editor, const std::filesystem::path& path, csSDK_int32 streamIndex)
    : m_clip(editor.session(), path, {.streamIndex = streamIndex}), m_name("'" + hostkit::toUtf8(path) + "'") {
    const csSDK_int32 opened = m_clip.open().result;
    if (opened != imNoErr) {
        throw ClipFailure(m_name + " cannot be opened: " + hostkit::resultText(opened) + ": " + openFailure(path) +
                          ".");
    }
    // Like the editor: one stream after the other, as long as the results promise another one.
    for (csSDK_int32 stream = 0; stream <= streamIndex; ++stream) {
        m_info = m_clip.info(stream);
        const bool isLast = m_info->result == imNoErr || m_info->result == imBadStreamIndex;
        if (!isLast && m_info->result != imIterateStreams) {
            throw ClipFailure(m_name + " cannot be described: " + hostkit::resultText(m_info->result) + ": " +
                              describeRefusal(path) + ".");
        }
        if (isLast && stream < streamIndex) {
            throw UsageError(m_name + " has " + std::to_string(stream + 1) +
                             (stream == 0 ? " stream" : " streams") + ", counted from 0.");
        }
    }
    if (!m_info->record->hasAudio) {
        throw ClipFailure(noSoundText(path, streamIndex));
    }
    const imAudioInfoRec7 sound = m_info->record->audInfo;
    if (sound.numChannels < 1 || sound.numChannels > kMaxAudioChannelCount) {
        throw ClipFailure(m_name + " has " + std::to_string(sound.numChannels) + " channels; a host takes 1 to 32.");
    }
    if (!(sound.sampleRate >= 1.0f && sound.sampleRate <= kHighestRate)) {
        throw ClipFailure(m_name + " has sound of no usable sample rate.");
    }
    const hostkit::LayoutAnswer layout = m_clip.channelLayout();
    if (layout.result == imNoErr) {
        m_labels.assign(layout.labels.begin(), layout.labels.begin() + sound.numChannels);
    }
}

std::uint32_t SoundReader::sampleRate() const {
    return static_cast<std::uint32_t>(m_info->record->audInfo.sampleRate + 0.5f);
}

std::vector<std::vector<float>> SoundReader::read(std::int64_t first, std::uint32_t count) {
    hostkit::AudioAnswer answer = m_clip.audio(first, count, channels());
    const std::string where = " sample frames from " + std::to_string(first) + " on";
    if (answer.result != imNoErr) {
        throw ClipFailure("No sound for " + std::to_string(count) + where + ": " +
                          hostkit::resultText(answer.result) + ".");
    }
    for (const std::vector<float>& samples : answer.channels) {
        if (std::any_of(samples.begin(), samples.end(), isUndelivered)) {
            throw ClipFailure("The plug-in left samples out in " + std::to_string(count) + where + ".");
        }
    }
    return std::move(answer.channels);
}

}  // namespace importhost
