// What the tests of the entry point share: a small clip, the codec library's counters, expected log texts.
#pragma once

#include "aviwriter/Sample.h"
#include "hostkit/sessions/ClipSession.h"
#include "log/PluginRun.h"
#include "standin/Control.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

inline constexpr csSDK_int32 kFileType = 0x41564956;
inline constexpr char kRule[] = "----------------------";

// 32 x 16 pixels, YUV 4:2:2, three frames at 25 per second, 16-bit stereo sound at 8000 Hz.
aviwriter::SampleOptions smallClip();

// A file of its own folder, gone with it.
class ClipFile {
public:
    explicit ClipFile(const aviwriter::SampleOptions& options = smallClip());

    const std::filesystem::path& path() const { return m_path; }

private:
    TempFolder m_folder;
    std::filesystem::path m_path;
};

// "YUY2" as the host's number.
csSDK_uint32 codeOf(const char* characters);

// The format in which the tests ask for frames of the small clip.
std::vector<imFrameFormat> smallFrame();

// What the codec library holds now and was asked since the last reset.
StandinCounters codecCounters();

// Nothing of the codec library is open, and no call was lost.
void expectCodecAtRest();

// The lines of a file in the folder "golden" beside the program.
Lines goldenLines(const std::string& name);

// Equal, or a failure that names the first line that differs.
void expectSameLines(const Lines& actual, const Lines& expected);
