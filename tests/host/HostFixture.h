// Shared by the tests of the entry point: a small clip, the codec library's counters, expected log texts.
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

// A file in a temporary folder.
class ClipFile {
public:
    explicit ClipFile(const aviwriter::SampleOptions& options = smallClip());

    const std::filesystem::path& path() const { return m_path; }

private:
    TempFolder m_folder;
    std::filesystem::path m_path;
};

// The host's number for a code such as "YUY2".
csSDK_uint32 codeOf(const char* characters);

// The format in which the tests ask for frames of the small clip.
std::vector<imFrameFormat> smallFrame();

// What the codec library holds now, and its calls since the last reset.
StandinCounters codecCounters();

// Expects that nothing in the codec library is open, and that no calls overlapped.
void expectCodecAtRest();

// The lines of a file in the folder "golden" in the program's folder.
Lines goldenLines(const std::string& name);

// Expects equal lines; the failure names the first one that differs.
void expectSameLines(const Lines& actual, const Lines& expected);
