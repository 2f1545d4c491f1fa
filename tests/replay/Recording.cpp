#include "Recording.h"

#include "hostkit/sessions/AsyncSession.h"
#include "log/PluginRun.h"

#include <sstream>

namespace recording {

std::string record(const std::function<void(hostkit::ImporterSession&)>& play) {
    PluginRun run;
    run.session().start();
    play(run.session());
    run.session().shutdown();
    run.unload();
    std::string log;
    for (const auto& entry : std::filesystem::directory_iterator(hostkit::pluginLogFolder())) {
        std::ifstream in(entry.path(), std::ios::binary);
        log.append(std::istreambuf_iterator<char>(in), {});
    }
    return log;
}

void playClip(hostkit::ImporterSession& session, const std::filesystem::path& path) {
    using hostkit::ClipSession;
    ClipSession clip(session, path);
    ASSERT_EQ(clip.open().result, imNoErr);
    const auto infos = clip.infos();
    clip.channelLayout();
    clip.audio(0, 100, 2);
    clip.audio(-1, 50, 2);
    const auto info = clip.info(0);
    const auto formats = clip.pixelFormats();
    ASSERT_FALSE(formats.empty());
    clip.analysis(300);
    clip.dataRate();
    const imFrameFormat first{0, 0, formats.front()};
    const imFrameFormat last{16, 8, formats.back()};
    EXPECT_EQ(clip.frame(0, {first}).result, imNoErr);
    EXPECT_EQ(clip.frame(kTicksPerFrame, {last, first}).result, imNoErr);
    EXPECT_EQ(clip.frame(kTicksPerFrame * 1000, {first}).result, imFrameNotFound);
    EXPECT_EQ(clip.frame(0, {}).result, imOtherErr);
    hostkit::AsyncSession async(session, clip);
    ASSERT_EQ(async.create().result, imNoErr);
    async.announce(0, {first});
    async.announce(kTicksPerFrame * 2, {last});
    EXPECT_EQ(async.get(kTicksPerFrame * 2, {first}).result, aiNoError);
    EXPECT_EQ(async.get(kTicksPerFrame, {first}).result, aiNoError);       // was not announced
    EXPECT_EQ(async.get(kTicksPerFrame * 1000, {first}).result, aiUnknownError);
    async.flush();
    async.close();
    clip.quiet();
    clip.open();
    clip.close();
}

replay::RecordedLog read(const std::string& log) {
    std::istringstream in(log);
    return replay::readLog(in);
}

std::vector<std::string> linesOf(const std::string& log) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < log.size();) {
        const std::size_t end = std::min(log.find('\n', start), log.size() - 1) + 1;
        lines.push_back(log.substr(start, end - start));
        start = end;
    }
    return lines;
}

std::string replaced(std::string log, const std::string& part, const std::string& other) {
    const std::size_t at = log.find(part);
    if (at == std::string::npos) {
        ADD_FAILURE() << "'" << part << "' is not in the log";
        return log;
    }
    return log.replace(at, part.size(), other);
}

std::vector<Made> replayed(hostkit::ImporterSession& session, const replay::RecordedLog& log,
                           const std::vector<std::filesystem::path>& files) {
    const replay::FileMap map(log, files);
    replay::Replayer replayer(session, map, log);
    std::vector<Made> calls;
    for (const replay::LoggedCall& logged : log.calls) {
        replay::Step step = replayer.step(logged);
        calls.push_back({step.text, step.skipped, logged.result, step.skipped ? 0 : step.run(), step.assumed});
    }
    replayer.finish();
    return calls;
}

std::vector<std::string> skippedOf(const std::vector<Made>& calls) {
    std::vector<std::string> texts;
    for (const Made& call : calls) {
        if (call.skipped) {
            texts.push_back(call.text + ": " + *call.skipped);
        }
    }
    return texts;
}

std::vector<std::string> differencesOf(const std::vector<Made>& calls) {
    std::vector<std::string> texts;
    for (const Made& call : calls) {
        if (call.differs()) {
            texts.push_back(call.text + ": " + std::to_string(*call.logged) + ", now " + std::to_string(call.now));
        }
    }
    return texts;
}

std::vector<std::string> textsOf(const std::vector<Made>& calls) {
    std::vector<std::string> texts;
    for (const Made& call : calls) {
        texts.push_back(call.text);
    }
    return texts;
}

}  // namespace recording
