// Repeats the calls of a log, one at a time on one thread, in the order in which they began.
#pragma once

#include "replay/AsyncSteps.h"

namespace replay {

class Replayer {
public:
    // All must outlive this object. Starts the plug-in if the log does not begin with its start.
    Replayer(hostkit::ImporterSession& importer, const FileMap& files, const RecordedLog& log);
    ~Replayer();
    Replayer(const Replayer&) = delete;
    Replayer& operator=(const Replayer&) = delete;

    bool startedByItself() const { return m_startedByItself; }

    // Prepares the call. Run each step, unless it is skipped, before requesting the next.
    Step step(const LoggedCall& call);

    // Closes what the log left open, and shuts the plug-in down if the log does not. Returns what that was, as
    // sentences.
    std::vector<std::string> finish();

private:
    std::optional<Step> moduleStep(const LoggedCall& call, const Arguments& arguments);
    Step unknownStep(const LoggedCall& call);

    hostkit::ImporterSession& m_importer;
    ClipBook m_clips;
    FileSteps m_fileSteps;
    AsyncSteps m_asyncSteps;
    bool m_startedByItself = false;
    bool m_isRunning = false;
};

// Suites that the user's host did not provide, according to the log: those that were requested but never acquired.
std::vector<hostkit::SuiteId> refusedSuitesOf(const RecordedLog& log);

}  // namespace replay
