// Makes the calls of a log again, one after another on one thread, in the order in which they began.
#pragma once

#include "replay/AsyncSteps.h"

namespace replay {

class Replayer {
public:
    // Both must outlive this. Starts the plug-in when the log does not begin with its start.
    Replayer(hostkit::ImporterSession& importer, const FileMap& files, const RecordedLog& log);
    ~Replayer();
    Replayer(const Replayer&) = delete;
    Replayer& operator=(const Replayer&) = delete;

    bool startedByItself() const { return m_startedByItself; }

    // The call, ready to be made. Each step is to be run, unless it is skipped, before the next one is asked for.
    Step step(const LoggedCall& call);

    // Closes what the log left open and shuts the plug-in down when the log does not. Gives what that was: sentences.
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

// Suites that the user's host did not give, as far as the log tells: those that were asked for and never given.
std::vector<hostkit::SuiteId> refusedSuitesOf(const RecordedLog& log);

}  // namespace replay
