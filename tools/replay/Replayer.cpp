#include "replay/Replayer.h"

#include "hostkit/system/Text.h"
#include "replay/LineScan.h"

#include <map>

namespace replay {

namespace {

// Size of the record passed to calls of unknown form.
constexpr std::size_t kBlankRecordBytes = 16384;

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

struct Acquisition {
    hostkit::SuiteId suite;
    bool given = false;
};

// "Acquiring suite: r: 0, v: 1, n: 'Premiere Time Suite', ptr: 0x55556c07ce80".
std::optional<Acquisition> scanAcquisition(std::string_view message) {
    const auto result = textAfter(message, "Acquiring suite: r: ");
    const std::size_t version = result ? result->find(", v: ") : std::string_view::npos;
    const std::size_t name = result ? result->find(", n: '") : std::string_view::npos;
    const std::size_t end = result ? result->rfind("', ptr: ") : std::string_view::npos;
    if (version == std::string_view::npos || name == std::string_view::npos || end == std::string_view::npos ||
        name < version + 5 || end < name + 6) {
        return std::nullopt;
    }
    const auto number = numberOf<csSDK_int32>(result->substr(version + 5, name - version - 5));
    if (!number) {
        return std::nullopt;
    }
    return Acquisition{{std::string(result->substr(name + 6, end - name - 6)), *number},
                       result->substr(0, version) == "0"};
}

}  // namespace

Replayer::Replayer(hostkit::ImporterSession& importer, const FileMap& files, const RecordedLog& log)
    : m_importer(importer), m_fileSteps(importer, files, m_clips), m_asyncSteps(importer, m_fileSteps, m_clips) {
    const bool startIsLogged =
        !log.calls.empty() && log.calls.front().entry == Entry::Importer && log.calls.front().selector == imInit;
    if (!startIsLogged) {
        m_importer.init();
        m_startedByItself = true;
        m_isRunning = true;
    }
}

Replayer::~Replayer() { finish(); }

Step Replayer::step(const LoggedCall& call) {
    const Arguments arguments = argumentsOf(call);
    if (call.entry == Entry::Async) {
        return m_asyncSteps.step(call, arguments);
    }
    if (call.selector == imCreateAsyncImporter) {
        return m_asyncSteps.createStep(call, arguments);
    }
    if (auto step = moduleStep(call, arguments)) {
        return std::move(*step);
    }
    if (auto step = m_fileSteps.step(call, arguments)) {
        return std::move(*step);
    }
    return unknownStep(call);
}

std::optional<Step> Replayer::moduleStep(const LoggedCall& call, const Arguments& arguments) {
    Step step{call.name, {}, {}, {}};
    switch (call.selector) {
    case imInit:
        step.run = [this] {
            m_isRunning = true;
            return m_importer.init().result;
        };
        return step;
    case imShutdown:
        step.run = [this] {
            m_isRunning = false;
            return m_importer.shutdown();
        };
        return step;
    case imGetSupports8: step.run = [this] { return m_importer.supports8(); }; return step;
    case imGetIndFormat:
        if (!arguments.formatIndex) {
            return skippedStep(step.text, kNotTold);
        }
        step.text.append(" ").append(std::to_string(*arguments.formatIndex));
        step.run = [this, index = static_cast<csSDK_int32>(*arguments.formatIndex)] {
            return m_importer.format(index).result;
        };
        return step;
    case imGetSubTypeNames:
        if (!arguments.fileType) {
            return skippedStep(step.text, kNotTold);
        }
        step.text.append(" ").append(hostkit::codeTextHighFirst(static_cast<csSDK_uint32>(*arguments.fileType)));
        step.run = [this, type = *arguments.fileType] { return m_importer.subTypeNames(type).result; };
        return step;
    default: return std::nullopt;
    }
}

Step Replayer::unknownStep(const LoggedCall& call) {
    Step step{printable(call.name) + " (" + std::to_string(call.selector) + ")", {"blank records"}, {}, {}};
    step.run = [this, selector = call.selector] {
        hostkit::RecordStorage first(kBlankRecordBytes);
        hostkit::RecordStorage second(kBlankRecordBytes);
        return m_importer.call(selector, first.data(), second.data());
    };
    return step;
}

std::vector<std::string> Replayer::finish() {
    std::vector<std::string> left;
    if (m_asyncSteps.size() > 0) {
        left.push_back(counted(m_asyncSteps.size(), "asynchronous importer") + " left open by the log: closed.");
        m_asyncSteps.clear();
    }
    if (m_clips.size() > 0) {
        left.push_back(counted(m_clips.size(), "file") + " left open by the log: closed.");
        m_clips.clear();
    }
    if (m_isRunning) {
        left.emplace_back("No shutdown in the log: the plug-in was shut down.");
        m_importer.shutdown();
        m_isRunning = false;
    }
    return left;
}

std::vector<hostkit::SuiteId> refusedSuitesOf(const RecordedLog& log) {
    std::map<hostkit::SuiteId, bool> given;
    for (const LoggedCall& call : log.calls) {
        for (const std::string& message : call.messages) {
            if (const auto acquisition = scanAcquisition(message)) {
                bool& known = given[acquisition->suite];
                known = known || acquisition->given;
            }
        }
    }
    std::vector<hostkit::SuiteId> refused;
    for (const auto& [suite, wasGiven] : given) {
        if (!wasGiven) {
            refused.push_back(suite);
        }
    }
    return refused;
}

}  // namespace replay
