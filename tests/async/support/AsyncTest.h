// Loads the plug-in for each test, with its log on, in a host that tracks all resources; opens clips and their
// asynchronous importers; holds decodes at a gate.
//
// After a test everything is closed and the plug-in is unloaded. Then nothing may be left: no frame, no suite, no codec
// instance, no open file; and no two codec calls may have overlapped on one handle.
#pragma once

#include "AsyncClip.h"
#include "Gate.h"

#include "aviwriter/Sample.h"
#include "log/PluginRun.h"
#include "standin/Control.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

// At 25 frames per second in the default host.
constexpr PrTime kFrameTicks = 10160640000;
constexpr PrTime timeOf(int frame) { return kFrameTicks * frame; }

// The lines of a call, by the threads that wrote them.
struct LoggedLines {
    Lines caller;                    // the test's own thread, which started the plug-in
    std::vector<Lines> others;       // every other thread, sorted
};

// The whole buffer of a delivered frame; empty without a frame.
std::vector<std::uint8_t> bytesOf(const hostkit::HostFrame& frame);

// The format that most tests ask for, at the video's own size; and another one.
std::vector<imFrameFormat> yuy3();
std::vector<imFrameFormat> uyv7();
std::vector<imFrameFormat> only(PrPixelFormat format, csSDK_int32 width = 0, csSDK_int32 height = 0);

// 32 x 16 pixels, YUV 4:2:2, `frames` frames at 25 per second, no sound.
aviwriter::SampleOptions smallVideo(std::uint32_t frames = 6);

// The same file, except that its index states 16 MB for frame number `frame`.
aviwriter::Bytes withFrameBeyondTheEnd(const aviwriter::SampleOptions& options, std::uint32_t frame);

class AsyncTest : public ::testing::Test {
protected:
    explicit AsyncTest(hostkit::HostProfile profile = {}, bool logged = true);

    void SetUp() override;
    void TearDown() override;

    hostkit::Host& host() { return m_run.host(); }
    hostkit::ImporterSession& session() { return m_run.session(); }

    std::filesystem::path write(const std::string& name, const aviwriter::Bytes& bytes);

    // An opened and described clip; lives until the end of the test.
    hostkit::ClipSession& openClip(const std::filesystem::path& path, csSDK_int32 streamIndex = 0);
    hostkit::ClipSession& openClip(const aviwriter::SampleOptions& options);

    // Calls imCreateAsyncImporter for a file object. openAsync() expects an importer, which lives until the end of the
    // test.
    hostkit::Answer<imAsyncImporterCreationRec> create(void* importer);
    AsyncClip& openAsync(const hostkit::ClipSession& clip);
    AsyncClip& openAsync(const aviwriter::SampleOptions& options = smallVideo());

    // Expects the importer to work after a failure: the announced and collected frame equals the synchronous one.
    void expectFrame(AsyncClip& async, hostkit::ClipSession& clip, int frame);

    // All lines so far, and those of an action, without pointers and folders.
    Lines messages() const;
    Lines messagesOf(const std::function<void()>& action) const;
    LoggedLines linesOf(const std::function<void()>& action) const;
    std::ptrdiff_t logged(const std::string& line) const;

    // Waits until a line has been logged `times` times. Returns false after a minute.
    bool waitUntilLogged(const std::string& line, std::ptrdiff_t times = 1) const;

    // Holds the codec's next decode inside the codec, or every call of a host function, until the gate is opened.
    void holdNextDecode();
    void holdHostCall(hostkit::HostCall call);
    Gate& gate() { return m_gate; }

    // Makes calls of a codec function fail, from the next one on.
    void failCodec(StandinFunction function, std::uint32_t times = 1);
    static StandinCounters codec();

    // Sets the problems that the host is expected to report at the end (default: none).
    void expectProblems(const Lines& problems) { m_expectedProblems = problems; }

private:
    struct LogLine {
        std::string thread;
        std::string text;
    };
    std::vector<LogLine> logLines() const;

    Gate m_gate;
    TempFolder m_folder;
    PluginRun m_run;
    hostkit::PluginLog m_log;
    std::vector<std::filesystem::path> m_files;
    std::vector<std::unique_ptr<hostkit::ClipSession>> m_clips;
    std::vector<std::unique_ptr<AsyncClip>> m_asyncClips;
    Lines m_expectedProblems;
};
