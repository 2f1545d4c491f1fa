#include "ImporterTest.h"

#include "TestHome.h"

#include "hostkit/system/Text.h"

#include <fstream>
#include <stdexcept>

void* StandinControl::symbol(const char* name) {
    void* address = hostkit::PluginLibrary::symbolOfLoadedLibrary(CODEC_LIBRARY_NAME, name);
    if (address == nullptr) {
        throw std::runtime_error(std::string("no loaded codec library exports ") + name);
    }
    return address;
}

StandinCounters StandinControl::counters() const {
    StandinCounters counters;
    reinterpret_cast<decltype(&standin_counters)>(symbol("standin_counters"))(&counters);
    return counters;
}

void StandinControl::reset() const {
    reinterpret_cast<decltype(&standin_reset)>(symbol("standin_reset"))();
}

void StandinControl::fail(StandinFunction function, std::uint32_t nth, std::uint32_t count, std::uint32_t code) const {
    if (reinterpret_cast<decltype(&standin_fail)>(symbol("standin_fail"))(function, nth, count, code) != 0) {
        throw std::runtime_error("the codec library refuses to fail like that");
    }
}

std::filesystem::path ImporterTest::pluginPath() const {
    return hostkit::PluginLibrary::programFolder() / hostkit::PluginLibrary::usualFileName();
}

void ImporterTest::SetUp() {
    load();
    ASSERT_EQ(m_session->init().result, imNoErr);
}

void ImporterTest::load() {
    m_host = std::make_unique<hostkit::Host>(profile());
    m_plugin = std::make_unique<hostkit::PluginLibrary>(pluginPath());
    m_session = std::make_unique<hostkit::ImporterSession>(*m_host, m_plugin->entry());
}

void ImporterTest::TearDown() {
    unload();
    EXPECT_EQ(m_host->problems(), m_expectedProblems);
    m_host.reset();
}

void ImporterTest::unload() {
    if (m_plugin == nullptr) {
        return;
    }
    EXPECT_EQ(m_session->shutdown(), imNoErr);
    expectCodecBalanced();
    m_session.reset();
    m_plugin.reset();
}

void ImporterTest::expectCodecBalanced() const {
    if (hostkit::PluginLibrary::symbolOfLoadedLibrary(CODEC_LIBRARY_NAME, "standin_counters") == nullptr) {
        return;   // another codec library is loaded, which has its own counters
    }
    const StandinCounters counters = m_standin.counters();
    EXPECT_EQ(counters.outstandingInits, 0u);
    EXPECT_EQ(counters.openInstances, 0u);
    EXPECT_EQ(counters.runningSessions, 0u);
    EXPECT_EQ(counters.overlappingCalls, 0u);
    EXPECT_EQ(counters.unpreparedOutputs, 0u);
}

std::filesystem::path ImporterTest::write(const std::string& name, const aviwriter::Bytes& bytes) const {
    const std::filesystem::path path = pathOf(name);
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        throw std::runtime_error("the test file cannot be written");
    }
    return path;
}

Lines ImporterTest::log() const {
    Lines lines = m_log.messages();
    const std::string folder = hostkit::toUtf8(m_folder.folder());
    for (std::string& line : lines) {
        line = normalised(line, folder);
    }
    return lines;
}

Lines ImporterTest::logOf(const std::function<void()>& action) const {
    const std::size_t before = log().size();
    action();
    const Lines lines = log();
    return {lines.begin() + static_cast<std::ptrdiff_t>(before), lines.end()};
}

Lines ImporterTest::handlerLogOf(const std::function<void()>& action) const {
    Lines kept;
    for (const std::string& line : logOf(action)) {
        const bool isFrame = line == "----------------------" || line.starts_with("[im") || line.starts_with("    [") ||
                             line.starts_with("m_filePathUtf8: ") || line.starts_with("m_streamIndex:  ");
        if (!isFrame) {
            kept.push_back(line);
        }
    }
    return kept;
}

std::unique_ptr<hostkit::ClipSession> ImporterTest::openClip(const std::filesystem::path& path) {
    auto clip = std::make_unique<hostkit::ClipSession>(*m_session, path);
    if (clip->open().result != imNoErr) {
        throw std::runtime_error("the clip does not open");
    }
    const csSDK_int32 result = clip->info(0).result;
    if (result != imNoErr && result != imIterateStreams) {
        throw std::runtime_error("the clip is not described: " + std::to_string(result));
    }
    return clip;
}

std::unique_ptr<hostkit::ClipSession> ImporterTest::openClip(const std::string& name, const aviwriter::Bytes& bytes) {
    return openClip(write(name, bytes));
}

void ImporterTest::expectNoViolations() {
    EXPECT_EQ(m_host->violations(), Lines{});
}

imFrameFormat frameFormat(PrPixelFormat format, csSDK_int32 width, csSDK_int32 height) {
    imFrameFormat wanted = {};
    wanted.inFrameWidth = width;
    wanted.inFrameHeight = height;
    wanted.inPixelFormat = format;
    return wanted;
}

std::vector<int> firstBytes(const hostkit::FrameAnswer& answer, std::size_t count) {
    const auto view = answer.frame.view();
    return view ? std::vector<int>(view->pixels, view->pixels + count) : std::vector<int>{};
}

// Set before anything of the plug-in is loaded or searched for.
namespace {

class TestHome : public ::testing::Environment {
public:
    void SetUp() override { useTestHome(); }
};

[[maybe_unused]] const auto* const testHome = ::testing::AddGlobalTestEnvironment(new TestHome);

}  // namespace
