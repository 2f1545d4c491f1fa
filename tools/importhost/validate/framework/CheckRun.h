// One run of one check: what it is to look at, and where it says what it found.
#pragma once

#include "hostkit/sessions/AsyncSession.h"
#include "importhost/validate/framework/CallTrace.h"
#include "importhost/validate/framework/Check.h"
#include "importhost/validate/framework/Clip.h"
#include "importhost/validate/framework/Event.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace importhost::validate {

// What all checks of a run have in common.
struct RunOptions {
    std::filesystem::path plugin;
    std::vector<std::filesystem::path> files;       // the user's; none: own samples
    int level = kUsualLevel;
    std::uint64_t seed = 0;
    std::optional<std::chrono::seconds> timeLimit;  // else each check's own
    std::filesystem::path workFolder;               // exists; holds the samples and what checks write
};

// How long a check may take: what the user says, or else its own limit, and more for many files of the user's.
std::chrono::seconds timeLimitOf(const RunOptions& options, const Check& check);

// Thrown to leave a check early; caught by runCheck.
struct LeaveCheck {};

class CheckRun {
public:
    // `folder` exists and is this check's own; all must outlive the run.
    CheckRun(const RunOptions& options, const Check& check, std::filesystem::path folder, EventSink& sink,
             CallTrace& trace);
    CheckRun(const CheckRun&) = delete;
    CheckRun& operator=(const CheckRun&) = delete;

    // --- What to look at ---

    const std::filesystem::path& plugin() const { return m_options.plugin; }
    const std::filesystem::path& folder() const { return m_folder; }
    bool hasOwnSamples() const { return m_options.files.empty(); }
    const std::vector<Clip>& clips() const { return m_clips; }      // the user's files, or the samples of this level
    int level() const { return m_options.level; }

    // A number between those for the lowest and the highest level, as this level has it: how often to try.
    int effort(int atLowest, int atHighest) const;

    // True until half of the time limit has passed since the check began: a loop that more rounds would only make
    // surer ends when it turns false, and says how far it came.
    bool hasTime() const { return std::chrono::steady_clock::now() < m_enough; }

    // Seeded by the run's seed and the check's id: the same whichever checks run beside it.
    std::mt19937_64& random() { return m_random; }
    std::uint64_t below(std::uint64_t limit);                       // 0 to limit - 1

    // --- What was found; safe on any thread ---

    // What is being done from here on; failures name it.
    void step(const std::string& text);
    void note(const std::string& text);
    void warn(const std::string& text);
    void fail(const std::string& text);

    // The plug-in does not import this file of the user's: no fault of the plug-in's, but what its user wants to know
    // first.
    void notImported(const Clip& clip);

    // From here on fail() makes notes: for a check that measures, and leaves what is wrong to others.
    void failNoMore() { m_failsNoMore = true; }

    // Ends the check: there is nothing here that it could look at.
    [[noreturn]] void skip(const std::string& reason);

    // Fail in words unless the plug-in did well; return whether it did. Results are told by their names.
    bool expect(bool holds, const std::string& otherwise);
    template <class Found, class Wanted>
    bool expectEqual(const std::string& what, const Found& found, const Wanted& wanted);
    bool expectResult(const std::string& what, csSDK_int32 found, csSDK_int32 wanted = imNoErr);
    bool expectAsyncResult(const std::string& what, csSDK_int32 found, csSDK_int32 wanted = aiNoError);

    // The same for what a damaged file can be the cause of: a warning for a user's file, else a failure.
    bool expectOf(const Clip& clip, bool holds, const std::string& otherwise);

    bool hasFailed() const { return m_failures > 0; }
    CallTrace& trace() { return m_trace; }

private:
    void tell(EventKind kind, const std::string& text);

    const RunOptions& m_options;
    std::filesystem::path m_folder;
    EventSink& m_sink;
    CallTrace& m_trace;
    std::vector<Clip> m_clips;
    std::mt19937_64 m_random;
    std::chrono::steady_clock::time_point m_enough;
    std::atomic<int> m_failures = 0;
    std::atomic<bool> m_failsNoMore = false;
    std::mutex m_stepMutex;
    std::string m_step;
};

template <class Found, class Wanted>
bool CheckRun::expectEqual(const std::string& what, const Found& found, const Wanted& wanted) {
    if (found == wanted) {
        return true;
    }
    std::ostringstream text;
    text << what << ": found " << found << ", wanted " << wanted;
    fail(text.str());
    return false;
}

// Runs the check to its end; whatever leaves it becomes a failure.
void runCheck(const RunOptions& options, const Check& check, const std::filesystem::path& folder, EventSink& sink);

}  // namespace importhost::validate
