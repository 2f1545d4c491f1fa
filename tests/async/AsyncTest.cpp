#include "async/support/AsyncTest.h"

#include "async/support/FileUse.h"

#include "hostkit/system/Text.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <map>
#include <stdexcept>
#include <thread>

std::vector<std::uint8_t> bytesOf(const hostkit::HostFrame& frame) {
    const auto view = frame.view();
    return view ? std::vector<std::uint8_t>(view->pixels, view->pixels + view->size) : std::vector<std::uint8_t>{};
}

std::vector<imFrameFormat> only(PrPixelFormat format, csSDK_int32 width, csSDK_int32 height) {
    return {{width, height, static_cast<csSDK_uint32>(format)}};
}

std::vector<imFrameFormat> yuy3() { return only(PrPixelFormat_YUYV_422_8u_709); }
std::vector<imFrameFormat> uyv7() { return only(PrPixelFormat_UYVY_422_8u_709); }

aviwriter::SampleOptions smallVideo(std::uint32_t frames) {
    aviwriter::SampleOptions options;
    options.width = 32;
    options.height = 16;
    options.frames = frames;
    options.layout.index = aviwriter::IndexKind::idx1;
    return options;
}

aviwriter::Bytes withFrameBeyondTheEnd(const aviwriter::SampleOptions& options, std::uint32_t frame) {
    aviwriter::Bytes file = aviwriter::sampleBytes(options);
    aviwriter::overwrite(file, aviwriter::positionOf(file, "idx1") + 8 + 16 * frame + 12, aviwriter::u32(16'000'000));
    return file;
}

AsyncTest::AsyncTest(hostkit::HostProfile profile, bool logged) : m_run(std::move(profile), logged) {}

void AsyncTest::SetUp() {
    standin_reset();
    ASSERT_EQ(session().init().result, imNoErr);
}

void AsyncTest::TearDown() {
    m_gate.open();
    host().faults().clear();
    m_asyncClips.clear();
    m_clips.clear();
    EXPECT_EQ(session().shutdown(), imNoErr);
    m_run.unload();
    EXPECT_EQ(host().problems(), m_expectedProblems);
    EXPECT_EQ(codec().openInstances, 0u);
    EXPECT_EQ(codec().runningSessions, 0u);
    EXPECT_EQ(codec().outstandingInits, 0u);
    EXPECT_EQ(codec().overlappingCalls, 0u);
    EXPECT_EQ(codec().unpreparedOutputs, 0u);
    for (const auto& file : m_files) {
        EXPECT_FALSE(isInUse(file)) << hostkit::toUtf8(file);
    }
}

// --- Files and importers ----------------------------------------------------------------------------------------

std::filesystem::path AsyncTest::write(const std::string& name, const aviwriter::Bytes& bytes) {
    const std::filesystem::path path = m_folder.folder() / name;
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        throw std::runtime_error("the test file cannot be written");
    }
    m_files.push_back(path);
    return path;
}

hostkit::ClipSession& AsyncTest::openClip(const std::filesystem::path& path, csSDK_int32 streamIndex) {
    m_clips.push_back(std::make_unique<hostkit::ClipSession>(session(), path,
                                                             hostkit::ClipOptions{.streamIndex = streamIndex}));
    hostkit::ClipSession& clip = *m_clips.back();
    if (clip.open().result != imNoErr) {
        throw std::runtime_error("the clip does not open");
    }
    clip.info(0);
    return clip;
}

hostkit::ClipSession& AsyncTest::openClip(const aviwriter::SampleOptions& options) {
    return openClip(write("clip" + std::to_string(m_files.size()) + ".avi", aviwriter::sampleBytes(options)));
}

hostkit::Answer<imAsyncImporterCreationRec> AsyncTest::create(void* importer) {
    hostkit::HostRecord<imAsyncImporterCreationRec> record;
    record->inPrivateData = importer;
    return session().exchangeFirst(imCreateAsyncImporter, std::move(record));
}

AsyncClip& AsyncTest::openAsync(const hostkit::ClipSession& clip) {
    const auto created = create(clip.privateData());
    if (created.result != imNoErr) {
        throw std::runtime_error("no asynchronous importer: " + std::to_string(created.result));
    }
    m_asyncClips.push_back(std::make_unique<AsyncClip>(host(), *created.record));
    return *m_asyncClips.back();
}

AsyncClip& AsyncTest::openAsync(const aviwriter::SampleOptions& options) { return openAsync(openClip(options)); }

void AsyncTest::expectFrame(AsyncClip& async, hostkit::ClipSession& clip, int frame) {
    EXPECT_EQ(async.announce(timeOf(frame), yuy3()), aiNoError);
    const auto collected = async.collect(timeOf(frame), yuy3());
    const auto reference = clip.frame(timeOf(frame), yuy3());
    EXPECT_EQ(collected.result, aiNoError);
    EXPECT_EQ(reference.result, imNoErr);
    EXPECT_EQ(bytesOf(collected.frame), bytesOf(reference.frame));
}

// --- The log ----------------------------------------------------------------------------------------------------

std::vector<AsyncTest::LogLine> AsyncTest::logLines() const {
    std::vector<LogLine> lines;
    const std::string folder = hostkit::toUtf8(m_folder.folder());
    for (const std::string& line : m_log.lines()) {
        const std::size_t begin = std::min(line.find("] ["), line.size());
        const std::size_t end = std::min(line.find("] ", begin + 1), line.size());
        std::string text = withoutPointers(std::string(hostkit::withoutLogPrefix(line)));
        if (const std::size_t at = text.find(folder); at != std::string::npos) {
            text.replace(at, folder.size() + 1, "<folder>/");
        }
        lines.push_back({line.substr(begin, end - begin), text});
    }
    return lines;
}

Lines AsyncTest::messages() const {
    Lines texts;
    for (const LogLine& line : logLines()) {
        texts.push_back(line.text);
    }
    return texts;
}

Lines AsyncTest::messagesOf(const std::function<void()>& action) const {
    const auto before = static_cast<std::ptrdiff_t>(logLines().size());
    action();
    const Lines all = messages();
    return {all.begin() + before, all.end()};
}

LoggedLines AsyncTest::linesOf(const std::function<void()>& action) const {
    const std::size_t before = logLines().size();
    action();
    const std::vector<LogLine> all = logLines();
    LoggedLines logged;
    std::map<std::string, Lines> others;
    for (std::size_t i = before; i < all.size(); ++i) {
        Lines& lines = all[i].thread == all[0].thread ? logged.caller : others[all[i].thread];
        lines.push_back(all[i].text);
    }
    for (auto& [thread, lines] : others) {
        logged.others.push_back(std::move(lines));
    }
    std::sort(logged.others.begin(), logged.others.end());
    return logged;
}

std::ptrdiff_t AsyncTest::logged(const std::string& line) const {
    const Lines all = messages();
    return std::count(all.begin(), all.end(), line);
}

bool AsyncTest::waitUntilLogged(const std::string& line, std::ptrdiff_t times) const {
    const auto latest = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (logged(line) < times) {
        if (std::chrono::steady_clock::now() > latest) {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

// --- Holding and failing ----------------------------------------------------------------------------------------

void AsyncTest::holdNextDecode() {
    const auto visitor = [](void* gate) { static_cast<Gate*>(gate)->pass(); };
    ASSERT_EQ(standin_visit(kStandinDecompress, visitor, &m_gate), 0u);
}

void AsyncTest::holdHostCall(hostkit::HostCall call) {
    host().faults().observe([this, call](hostkit::HostCall made) {
        if (made == call) {
            m_gate.pass();
        }
    });
}

void AsyncTest::failCodec(StandinFunction function, std::uint32_t times) {
    ASSERT_EQ(standin_fail(function, 1, times, 77), 0u);
}

StandinCounters AsyncTest::codec() {
    StandinCounters counters;
    standin_counters(&counters);
    return counters;
}
