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
    : FrameClip(editor.session(), path), m_path(path) {
    if (openResult() != imNoErr) {
        fail(path, "cannot be opened: " + hostkit::resultText(openResult()) + ": " + openFailure(path));
    }
    if (!isDescribed()) {
        fail(path, "cannot be described: " + hostkit::resultText(infoResult()) + ": " + describeRefusal(path));
    }
    if (!info().hasVideo) {
        fail(path, "has no pictures");
    }
    if (formats().empty()) {
        fail(path, "is offered in no pixel format");
    }
}

void VideoClip::requireFrames() const {
    if (frameCount() <= 0) {
        fail(m_path, "has no frames");
    }
}

double VideoClip::secondsOf(std::int64_t index) const {
    if (info().vidScale <= 0) {
        return 0.0;
    }
    return static_cast<double>(index) * info().vidSampleSize / info().vidScale;
}

}  // namespace importhost
