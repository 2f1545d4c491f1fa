// The plug-in loaded afresh for each test, with its log on, in a host that keeps books; clips and their asynchronous
// importers; decodes held at a gate.
//
// When a test is over, everything is closed and the plug-in unloaded. Then nothing may be left over: no frame, no
// suite, no codec instance, no open file; and the codec was never called twice at once.
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
    Lines caller;                    // the thread that started the plug-in, which is the test's own
    std::vector<Lines> others;       // each of the rest, sorted
};

// A delivered frame's whole buffer; empty without a frame.
std::vector<std::uint8_t> bytesOf(const hostkit::HostFrame& frame);

// The one format that most tests ask for, at the video's own size; and another.
std::vector<imFrameFormat> yuy3();
std::vector<imFrameFormat> uyv7();
std::vector<imFrameFormat> only(PrPixelFormat format, csSDK_int32 width = 0, csSDK_int32 height = 0);

// 32 x 16 pixels, YUV 4:2:2, so many frames at 25 per second, no sound.
aviwriter::SampleOptions smallVideo(std::uint32_t frames = 6);

// The file, but its index says that frame number `frame` has 16 MB.
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

    // The answer of imCreateAsyncImporter for a file object; and the importer it must give, which lives until then too.
    hostkit::Answer<imAsyncImporterCreationRec> create(void* importer);
    AsyncClip& openAsync(const hostkit::ClipSession& clip);
    AsyncClip& openAsync(const aviwriter::SampleOptions& options = smallVideo());

    // Unchanged importer behaviour after a failure: the frame is announced, collected, and as the synchronous one.
    void expectFrame(AsyncClip& async, hostkit::ClipSession& clip, int frame);

    // All lines so far, and those of an action: without pointers and folders.
    Lines messages() const;
    Lines messagesOf(const std::function<void()>& action) const;
    LoggedLines linesOf(const std::function<void()>& action) const;
    std::ptrdiff_t logged(const std::string& line) const;

    // Waits until a line has been logged so often; false when it is not within a minute.
    bool waitUntilLogged(const std::string& line, std::ptrdiff_t times = 1) const;

    // Holds the codec's next decode inside the codec, or every call of a host function, until the gate is opened.
    void holdNextDecode();
    void holdHostCall(hostkit::HostCall call);
    Gate& gate() { return m_gate; }

    // Makes calls of a codec function fail, from the next one on.
    void failCodec(StandinFunction function, std::uint32_t times = 1);
    static StandinCounters codec();

    // What the host complains of in the end; nothing unless said here.
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
