#include "importhost/validate/framework/CheckRun.h"

#include "hostkit/sessions/Names.h"

#include "importhost/validate/framework/Places.h"

#include <algorithm>
#include <exception>

namespace importhost::validate {

namespace {

// A check that fails at each of a million frames has said enough long before.
constexpr int kMostFailures = 25;

// The same for the same text on every system, unlike std::hash.
std::uint64_t hashOf(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char character : text) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001B3U;
    }
    return hash;
}

// As many files as a check's own limit is made for.
constexpr std::size_t kUsualFiles = 4;

}  // namespace

std::chrono::seconds timeLimitOf(const RunOptions& options, const Check& check) {
    const auto many = static_cast<std::chrono::seconds::rep>(std::max(options.files.size(), kUsualFiles));
    return options.timeLimit.value_or(check.timeLimit * many / static_cast<std::chrono::seconds::rep>(kUsualFiles));
}

CheckRun::CheckRun(const RunOptions& options, const Check& check, std::filesystem::path folder, EventSink& sink,
                   CallTrace& trace)
    : m_options(options),
      m_folder(std::move(folder)),
      m_sink(sink),
      m_trace(trace),
      m_clips(clipsOf(options.files, samplesFolder(options.workFolder), options.level)),
      m_random(options.seed ^ hashOf(check.id)),
      m_enough(std::chrono::steady_clock::now() + std::chrono::milliseconds(timeLimitOf(options, check)) / 2) {}

int CheckRun::effort(int atLowest, int atHighest) const {
    return atLowest + (atHighest - atLowest) * (level() - kLowestLevel) / (kHighestLevel - kLowestLevel);
}

std::uint64_t CheckRun::below(std::uint64_t limit) { return limit == 0 ? 0 : m_random() % limit; }

void CheckRun::step(const std::string& text) {
    {
        const std::lock_guard lock(m_stepMutex);
        m_step = text;
    }
    m_sink.take({EventKind::Step, text});
}

void CheckRun::tell(EventKind kind, const std::string& text) {
    std::string whole;
    {
        const std::lock_guard lock(m_stepMutex);
        whole = m_step.empty() ? text : m_step + ": " + text;
    }
    m_sink.take({kind, whole});
}

void CheckRun::note(const std::string& text) { tell(EventKind::Note, text); }

void CheckRun::warn(const std::string& text) { tell(EventKind::Warning, text); }

void CheckRun::fail(const std::string& text) {
    if (m_failsNoMore) {
        note(text);
        return;
    }
    const int before = m_failures++;
    if (before == 0) {
        for (const std::string& call : m_trace.latest()) {
            m_sink.take({EventKind::Call, call});
        }
    }
    if (before < kMostFailures) {
        tell(EventKind::Failure, text);
    } else if (before == kMostFailures) {
        m_sink.take({EventKind::Failure, "more failures are not shown"});
    }
}

void CheckRun::notImported(const Clip& clip) { m_sink.take({EventKind::NotImported, clip.name}); }

void CheckRun::skip(const std::string& reason) {
    m_sink.take({EventKind::Skip, reason});
    throw LeaveCheck();
}

bool CheckRun::expect(bool holds, const std::string& otherwise) {
    if (!holds) {
        fail(otherwise);
    }
    return holds;
}

bool CheckRun::expectResult(const std::string& what, csSDK_int32 found, csSDK_int32 wanted) {
    return expectEqual(what, hostkit::resultText(found), hostkit::resultText(wanted));
}

bool CheckRun::expectAsyncResult(const std::string& what, csSDK_int32 found, csSDK_int32 wanted) {
    return expectEqual(what, hostkit::asyncResultText(found), hostkit::asyncResultText(wanted));
}

bool CheckRun::expectOf(const Clip& clip, bool holds, const std::string& otherwise) {
    if (clip.kind != ClipKind::Unknown) {
        return expect(holds, otherwise);
    }
    if (!holds) {
        warn(otherwise);
    }
    return holds;
}

void runCheck(const RunOptions& options, const Check& check, const std::filesystem::path& folder, EventSink& sink) {
    CallTrace trace(traceFile(folder));
    try {
        CheckRun run(options, check, folder, sink, trace);
        check.run(run);
    } catch (const LeaveCheck&) {
        // It has said why.
    } catch (const std::exception& error) {
        sink.take({EventKind::Failure, error.what()});
    }
    sink.take({EventKind::End, ""});
}

}  // namespace importhost::validate
