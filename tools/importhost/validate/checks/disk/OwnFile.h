// A clip that a check may change, delete and restore, and the frames that it had.
#pragma once

#include "importhost/validate/checks/frames/FrameParts.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace importhost::validate {

using Bytes = std::vector<std::uint8_t>;

// Overwrites the file in place. False if the system refuses.
bool overwrite(const std::filesystem::path& path, const Bytes& bytes);

// A file in the check's own folder: a copy of the first small clip that has pictures, or a sample.
class OwnFile {
public:
    // Throws std::runtime_error if it cannot be written, as restore() does.
    explicit OwnFile(PlayedPlugin& plugin);
    ~OwnFile();
    OwnFile(const OwnFile&) = delete;
    OwnFile& operator=(const OwnFile&) = delete;

    // The whole file, opened. If it cannot be, fails the check and returns null; skips the check if it is a sample that
    // the user's codec does not know.
    std::unique_ptr<OpenClip> open(PlayedPlugin& plugin) const;

    const Clip& clip() const { return m_clip; }
    const std::filesystem::path& path() const { return m_clip.path; }
    const Bytes& bytes() const { return m_bytes; }      // whole, whatever became of the file
    void restore();

private:
    Clip m_clip;
    Bytes m_bytes;
    bool m_isSample = false;
};

// Calls `look` with such a file, opened, in a plug-in of its own.
void withOwnFile(CheckRun& run, const std::function<void(OwnFile& file, OpenClip& clip)>& look);

struct Frames {
    std::vector<std::int64_t> numbers;
    std::vector<Seen> seen;                 // what came of each

    std::int64_t delivered() const;         // a broken file's need not all be
};

// Some frames from all over the clip, the last one with them.
Frames framesOf(OpenClip& clip);

std::string frameText(std::int64_t frame);

// Every frame that was delivered is what it was, or cannot be read. Returns how many cannot.
std::int64_t expectFramesOrNone(CheckRun& run, OpenClip& clip, const Frames& frames);

// Every frame that was delivered is what it was.
void expectFrames(CheckRun& run, OpenClip& clip, const Frames& frames);

}  // namespace importhost::validate
