// What the checks of pictures share: clips as films, and what came of a request in few bytes. Inner header.
#pragma once

#include "importhost/validate/checks/stage/OpenClip.h"
#include "importhost/validate/checks/stage/OwnSample.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace importhost::validate {

// What came of a frame request, small enough to keep one for every frame.
struct Seen {
    csSDK_int32 result = 0;
    std::uint32_t format = 0;           // this and the rest: of a frame, else 0
    int width = 0;
    int height = 0;
    std::uint64_t digest = 0;           // of the pixels, padding left out

    friend bool operator==(const Seen&, const Seen&) = default;
};
std::ostream& operator<<(std::ostream& out, const Seen& seen);
Seen seen(const hostkit::FrameAnswer& answer);
inline Seen refusal(csSDK_int32 result) { return {.result = result}; }

// An open clip whose frames have times.
class Film {
public:
    // Nothing for a rate whose frames last no tick, or so long that twice the clip is beyond ticks of 64 bits.
    static std::optional<Film> of(OpenClip& clip);

    OpenClip& clip() const { return *m_clip; }
    std::int64_t frames() const { return m_clip->frameCount(); }

    // A frame's duration cut to whole ticks: this importer counts times in it.
    PrTime ticksPerFrame() const { return m_ticksPerFrame; }
    PrTime startOf(std::int64_t index) const { return index * m_ticksPerFrame; }
    PrTime middleOf(std::int64_t index) const { return startOf(index) + m_ticksPerFrame / 2; }

    // The picture at a time or in the middle of a frame, at the clip's own size.
    Seen at(PrTime time, PrPixelFormat format) const;
    Seen frame(std::int64_t index, PrPixelFormat format) const { return at(middleOf(index), format); }
    Seen frame(std::int64_t index) const { return frame(index, firstFormat()); }
    PrPixelFormat firstFormat() const { return m_clip->formats().front(); }

private:
    Film(OpenClip& clip, PrTime ticksPerFrame) : m_clip(&clip), m_ticksPerFrame(ticksPerFrame) {}

    OpenClip* m_clip;
    PrTime m_ticksPerFrame;
};

// forEachClip for clips that are films; skips the check when there is none. Of a damaged clip not every frame need be
// delivered, but those that are must be right: it is for demands that do not expect a picture.
enum class Films { Whole, DamagedToo };
void forEachFilm(PlayedPlugin& plugin, Films films, const std::function<void(const Film&)>& look);
void forEachFilm(CheckRun& run, Films films, const std::function<void(const Film&)>& look);

inline int frameBudget(const CheckRun& run, const Film& film, int atLowest, int atHighest) {
    return frameBudget(run, film.clip(), atLowest, atHighest);
}

// Numbers of frames from the first to the last, `most` of them at most, evenly spread.
std::vector<std::int64_t> spread(std::int64_t count, int most);

// The picture must be there. Data that cannot be read or decoded are the file's fault: in a user's file that is a
// warning. Anything else, and any refusal of a sample's frame, is a failure.
bool expectDelivered(CheckRun& run, const Film& film, const std::string& what, const Seen& found);

// "frame 3 in yuy2"
std::string frameText(std::int64_t index, PrPixelFormat format);

// A small own clip with five frames.
inline constexpr std::uint32_t kOwnFrames = 5;
aviwriter::SampleOptions ownSample(std::uint32_t rate = 25, std::uint32_t scale = 1,
                                   std::set<std::uint32_t> dropped = {});

// An own clip with pictures, opened. Fails the check and returns null if it is not imported; skips the check if the
// user's own files are looked at: their codec library need not know this program's streams.
std::unique_ptr<OpenClip> openOwn(PlayedPlugin& plugin, const Clip& clip);

// --- The checks, by file ----------------------------------------------------------------------------------------

void frameFirstAndLast(CheckRun& run);          // FrameTimeChecks.cpp
void frameOutside(CheckRun& run);
void frameBoundaries(CheckRun& run);
void frameRates(CheckRun& run);

void frameEveryPixel(CheckRun& run);            // FrameFormatChecks.cpp
void frameSizes(CheckRun& run);
void frameFormatChoice(CheckRun& run);
void frameFormatSwitch(CheckRun& run);
void frameStrides(CheckRun& run);

void frameRepeats(CheckRun& run);               // FrameOrderChecks.cpp
void frameSeeks(CheckRun& run);
void frameDropped(CheckRun& run);
void frameTwoClips(CheckRun& run);
void frameAfterQuiet(CheckRun& run);

void frameTruePicture(CheckRun& run);           // FramePictureChecks.cpp

}  // namespace importhost::validate
