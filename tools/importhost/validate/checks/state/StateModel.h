// What a plug-in's answers must be, by what was asked of it before: a small model of the protocol.
#pragma once

#include "hostkit/sessions/RecordStorage.h"
#include "importhost/validate/checks/stage/ErrorEvents.h"
#include "importhost/validate/checks/stage/OpenClip.h"
#include "importhost/validate/checks/stage/Outcome.h"

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace importhost::validate {

// A frame as it is asked for. Equal ones must be answered alike, by whomever and whenever.
struct FrameWish {
    std::int64_t frame = 0;         // may lie outside the clip
    imFrameFormat format{};

    auto key() const {
        return std::tuple(frame, hostkit::valueOf(format.inFrameWidth), hostkit::valueOf(format.inFrameHeight),
                          hostkit::valueOf(format.inPixelFormat));
    }
};

// One file: how it describes itself when nothing is in the way, and every answer that it gave so far.
class KnownFile {
public:
    // Opens it, asks for each stream and one beyond, and closes it.
    KnownFile(PlayedPlugin& plugin, const Clip& clip);

    struct Stream {
        Outcome described;
        imFileInfoRec8 info{};
    };

    const Clip& clip() const { return *m_clip; }
    csSDK_int32 opened() const { return m_opened; }
    const std::vector<Stream>& streams() const { return m_streams; }
    const std::vector<PrPixelFormat>& formats() const { return m_formats; }

    // The asynchronous importer describes stream 0 for itself.
    csSDK_int32 createdAsync() const;

    // The first answer is taken for the right one; all later ones must be equal. Null when there was none yet.
    const Outcome* frame(const FrameWish& wish) const;
    void rememberFrame(const FrameWish& wish, const Outcome& outcome) { m_frames.emplace(wish.key(), outcome); }

    // The same for anything else, by a text that names it.
    const Outcome& remembered(const std::string& what, const Outcome& outcome);

private:
    const Clip* m_clip;
    csSDK_int32 m_opened = imOtherErr;
    std::vector<Stream> m_streams;
    std::vector<PrPixelFormat> m_formats;
    std::map<decltype(FrameWish().key()), Outcome> m_frames;
    std::map<std::string, Outcome> m_others;
};

// What a clip was asked last, and with it what it may be asked now.
struct ClipState {
    enum class File { Closed, Open, Quiet };
    File file = File::Closed;
    std::optional<std::size_t> stream;          // the one that was described last; none after a failure
    bool hasVideo = false;
    bool hasAudio = false;
    PrAudioSample soundPosition = 0;            // where a request without a position goes on

    void describe(std::size_t index, const KnownFile::Stream& known);
};

// A frame that was announced to an asynchronous importer. `isSure` unless something was failing meanwhile.
struct Announced {
    FrameWish wish;
    bool isSure = true;
};

// Those of one importer, the oldest first. Who collects a frame gets the oldest announced one of that number,
// in the format in which it was announced.
class AnnouncedFrames {
public:
    void add(const FrameWish& wish, bool isSure) { m_frames.push_back({wish, isSure}); }
    void clear() { m_frames.clear(); }
    void doubtAll();
    Announced take(const FrameWish& wish);

private:
    std::deque<Announced> m_frames;
};

// How an asynchronous importer answers for a frame that the clip itself answers so.
csSDK_int32 asyncResultFor(csSDK_int32 result);

}  // namespace importhost::validate
