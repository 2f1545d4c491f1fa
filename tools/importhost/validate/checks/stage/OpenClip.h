// A clip opened and described as the editor does before it asks for pictures or sound.
#pragma once

#include "hostkit/sessions/ClipSession.h"
#include "importhost/validate/checks/stage/PlayedPlugin.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace importhost::validate {

// What a check wants to look at in a clip.
enum class Need { Nothing, Pictures, Sound };

class OpenClip {
public:
    // Opens the clip and asks for stream 0. `open` tells whether that went well.
    OpenClip(PlayedPlugin& plugin, const Clip& clip);

    const Clip& clip() const { return m_clip; }
    hostkit::ClipSession& session() { return m_session; }
    csSDK_int32 openResult() const { return m_openResult; }
    csSDK_int32 infoResult() const { return m_info ? m_info->result : imOtherErr; }
    bool isDescribed() const;           // opened, and stream 0 described

    // The following need a described clip.
    const imFileInfoRec8& info() const { return *m_info->record.get(); }
    bool has(Need need) const;
    std::int64_t frameCount() const { return hostkit::frameCount(info()); }
    std::int64_t pixels() const;        // of one frame, at least 1
    PrTime timeOf(std::int64_t index) const;

    // The formats that the plug-in offers, in its order; asked for once.
    const std::vector<PrPixelFormat>& formats();

    // A frame by its number, at the clip's own size.
    hostkit::FrameAnswer frame(std::int64_t index, PrPixelFormat format);
    hostkit::FrameAnswer frame(std::int64_t index) { return frame(index, formats().front()); }

    imFrameFormat wanted(PrPixelFormat format) const;

private:
    const Clip& m_clip;
    PrTime m_ticksPerSecond;
    hostkit::ClipSession m_session;
    csSDK_int32 m_openResult;
    std::optional<hostkit::Answer<imFileInfoRec8>> m_info;
    std::optional<std::vector<PrPixelFormat>> m_formats;
};

// Does `look` with every clip that has what is needed, one after another, each closed again; the step is the clip's
// name. A good sample that cannot be opened fails the check. When no clip serves the check is skipped.
void forEachClip(CheckRun& run, PlayedPlugin& plugin, Need need, const std::function<void(OpenClip&)>& look);

// The first clip that has it, opened; the check is skipped when there is none.
std::unique_ptr<OpenClip> firstClip(CheckRun& run, PlayedPlugin& plugin, Need need);

// As many frames as the level asks for, fewer where pictures are big.
int frameBudget(const CheckRun& run, const OpenClip& clip, int atLowest, int atHighest);

// The delivered rows without padding, to compare frames by; empty for no frame.
std::vector<std::uint8_t> pixelsOf(const hostkit::HostFrame& frame);

// A number that stands for them: a user's frames may be too big to keep. The same for all that have no pixels.
std::uint64_t digestOf(const hostkit::HostFrame& frame);

}  // namespace importhost::validate
