#include "importhost/clips/VideoClip.h"

#include "commandline/OpenFailure.h"
#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"
#include "importhost/console/Refusal.h"

namespace importhost {

namespace {

[[noreturn]] void fail(const std::filesystem::path& path, const std::string& why) {
    throw ClipFailure("'" + hostkit::toUtf8(path) + "' " + why + ".");
}

}  // namespace

VideoClip::VideoClip(Editor& editor, const std::filesystem::path& path)
    : m_path(path), m_clip(editor.session(), path), m_ticksPerSecond(editor.host().profile().ticksPerSecond) {
    const csSDK_int32 opened = m_clip.open().result;
    if (opened != imNoErr) {
        fail(path, "cannot be opened: " + hostkit::resultText(opened) + ": " + openFailure(path));
    }
    m_info = m_clip.info(0);
    if (m_info->result != imNoErr && m_info->result != imIterateStreams) {
        fail(path, "cannot be described: " + hostkit::resultText(m_info->result) + ": " + describeRefusal(path));
    }
    if (!info().hasVideo) {
        fail(path, "has no pictures");
    }
    m_formats = m_clip.pixelFormats();
    if (m_formats.empty()) {
        fail(path, "is offered in no pixel format");
    }
}

void VideoClip::requireFrames() const {
    if (frameCount() <= 0) {
        fail(m_path, "has no frames");
    }
}

hostkit::FrameAnswer VideoClip::frame(std::int64_t index, PrPixelFormat format) {
    return m_clip.frame(timeOf(index), {wanted(format)});
}

PrTime VideoClip::timeOf(std::int64_t index) const { return hostkit::timeOfFrame(info(), index, m_ticksPerSecond); }

imFrameFormat VideoClip::wanted(PrPixelFormat format) const {
    return {info().vidInfo.imageWidth, info().vidInfo.imageHeight, format};
}

double VideoClip::secondsOf(std::int64_t index) const {
    if (info().vidScale <= 0) {
        return 0.0;
    }
    return static_cast<double>(index) * info().vidSampleSize / info().vidScale;
}

}  // namespace importhost
