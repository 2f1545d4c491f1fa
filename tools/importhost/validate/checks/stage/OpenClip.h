// A clip of the run, opened and described as the editor does before it asks for pictures or sound.
#pragma once

#include "hostkit/sessions/FrameClip.h"
#include "importhost/validate/checks/stage/PlayedPlugin.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace importhost::validate {

// What a check needs of a clip.
enum class Need { Nothing, Pictures, Sound };

class OpenClip : public hostkit::FrameClip {
public:
    // Both must outlive it.
    OpenClip(PlayedPlugin& plugin, const Clip& clip)
        : FrameClip(plugin.session(), clip.path), m_plugin(plugin), m_clip(clip) {}

    PlayedPlugin& plugin() { return m_plugin; }
    const Clip& clip() const { return m_clip; }
    const std::string& name() const { return m_clip.name; }

    // True if it is described and has pictures in an offered format, or sound.
    bool has(Need need);

    std::int64_t pixels() const;        // of one frame, at least 1

    // Why it is not described.
    std::string refusal() const;

private:
    PlayedPlugin& m_plugin;
    const Clip& m_clip;
};

// Calls `look` with every clip that has what is needed, one after another, each closed again; the step is the clip's
// name. A good sample that cannot be opened fails the check. Without any such clip the check is skipped.
void forEachClip(PlayedPlugin& plugin, Need need, const std::function<void(OpenClip&)>& look);

// The same with a plug-in of its own.
void forEachClip(CheckRun& run, Need need, const std::function<void(OpenClip&)>& look);

// The first such clip, opened; the check is skipped if there is none.
std::unique_ptr<OpenClip> firstClip(PlayedPlugin& plugin, Need need);

// Quiets the clip and opens it again, as the editor does when it loses the focus and gets it back.
void refocus(OpenClip& clip);

// The number of frames to look at, by level; fewer if pictures are big.
int frameBudget(const CheckRun& run, const OpenClip& clip, int atLowest, int atHighest);

// The delivered rows without padding; empty for no frame.
std::vector<std::uint8_t> pixelsOf(const hostkit::HostFrame& frame);

// A number that stands for them, because a user's frames may be too big to keep. The same for all without pixels.
std::uint64_t digestOf(const hostkit::HostFrame& frame);

}  // namespace importhost::validate
