#include "replay/LogReader.h"

#include "replay/LineScan.h"

#include <array>
#include <deque>
#include <functional>
#include <map>

namespace replay {

namespace {

constexpr std::string_view kRule = "----------------------";
constexpr std::string_view kAsyncEnd = "QuorvaneAsyncImporter::~QuorvaneAsyncImporter()";

// Approximate memory of a message or a call in addition to its text.
constexpr std::size_t kMessageOverhead = 64;
constexpr std::size_t kCallOverhead = 256;

constexpr csSDK_int32 kExceptionResult = 99;

struct AsyncHandler {
    std::string_view handler;
    const char* name;
    csSDK_int32 selector;
};

constexpr std::array<AsyncHandler, 3> kAsyncHandlers = {{
    {"[OnInitiateAsyncRead]", "aiInitiateAsyncRead", aiInitiateAsyncRead},
    {"[OnGetFrame]", "aiGetFrame", aiGetFrame},
    {"[OnFlush]", "aiFlush", aiFlush},
}};

// Reads one line of any length, but keeps only its start. Returns false at the end of the stream.
bool takeLine(std::istream& in, std::size_t limit, std::string& line, bool& wasCut) {
    line.clear();
    std::streambuf& buffer = *in.rdbuf();
    int c = buffer.sbumpc();
    if (c == std::char_traits<char>::eof()) {
        return false;
    }
    for (; c != std::char_traits<char>::eof() && c != '\n'; c = buffer.sbumpc()) {
        if (line.size() < limit) {
            line.push_back(static_cast<char>(c));
        } else {
            wasCut = true;
        }
    }
    return true;
}

class Reader {
public:
    explicit Reader(const LogLimits& limits) : m_limits(limits) {}

    RecordedLog read(std::istream& in) {
        std::string line;
        bool wasCut = false;
        while (!m_isOver && takeLine(in, m_limits.lineBytes, line, wasCut)) {
            ++m_lineNumber;
            takeText(line);
        }
        if (m_threads.empty()) {
            throw NotALog("No line of it begins with a time and a thread number, as those of the plug-in's log do.");
        }
        if (wasCut) {
            m_log.remarks.push_back("Lines of more than " + std::to_string(m_limits.lineBytes) + " bytes were cut.");
        }
        if (m_strayLines > 0) {
            m_log.remarks.push_back("Lines that belong to no call: " + std::to_string(m_strayLines) + ".");
        }
        m_log.threads = m_threads.size();
        return std::move(m_log);
    }

private:
    enum class State {
        Idle,
        Ruled,          // the rule before a call was read
        InCall,
        InDecode,       // of a background decode
        InClose,        // which has no result line
    };

    struct Thread {
        State state = State::Idle;
        std::size_t call = 0;
    };

    // A message may have several lines; only the first has time and thread.
    void takeText(std::string_view text) {
        if (const auto line = scanLine(text)) {
            const auto [found, isNew] = m_threads.try_emplace(std::string(line->thread));
            if (isNew) {
                spend(kCallOverhead);
            }
            m_latest = nullptr;
            takeMessage(found->second, line->message);
            return;
        }
        if (text.ends_with('\r')) {
            text.remove_suffix(1);
        }
        if (m_latest != nullptr) {
            spend(kMessageOverhead + text.size());
            m_latest->append("\n").append(text);
        } else if (!text.empty()) {
            ++m_strayLines;
        }
    }

    void takeMessage(Thread& thread, std::string_view message) {
        if (takeFrame(thread, message)) {
            return;
        }
        if (message == kRule) {
            thread.state = State::Ruled;
        } else if (thread.state == State::Ruled) {
            beginCall(thread, message);
        } else if (thread.state == State::InCall) {
            takeInCall(thread, m_log.calls[thread.call], message);
        } else if (message == kAsyncEnd) {
            begin(thread, {Entry::Async, aiClose, "aiClose", m_lineNumber, {}, {}, {}}, State::InClose);
            keep(m_log.calls[thread.call].messages, message);
        } else if (const auto time = numberAfter<PrTime>(message, "inFrameTime: ")) {
            beginDecode(thread, *time, message);
        } else if (thread.state == State::InDecode) {
            keep(m_log.calls[thread.call].decode, message);
        } else if (thread.state == State::InClose) {
            keep(m_log.calls[thread.call].messages, message);
        } else {
            ++m_strayLines;
        }
    }

    // Handles the lines around all calls.
    bool takeFrame(Thread& thread, std::string_view message) {
        if (message == "Log opened") {
            if (m_wasOpened) {
                m_log.remarks.push_back("Line " + std::to_string(m_lineNumber) +
                                        " begins another log, which was left out.");
                m_isOver = true;
            }
            m_wasOpened = true;
        } else if (message == "Log closed") {
            m_log.isComplete = true;
        } else if (const auto application = textAfter(message, "Application: "); application && m_log.calls.empty()) {
            m_log.application = *application;
        } else if (message != "Module init" && message != "Module destroy") {
            return false;
        }
        thread.state = State::Idle;
        return true;
    }

    void beginCall(Thread& thread, std::string_view message) {
        if (const auto header = scanNamedCode(message); header && header->rest.empty()) {
            begin(thread, {Entry::Importer, header->code, std::string(header->name), m_lineNumber, {}, {}, {}},
                  State::InCall);
            return;
        }
        for (const AsyncHandler& row : kAsyncHandlers) {
            if (message == row.handler) {
                begin(thread, {Entry::Async, row.selector, row.name, m_lineNumber, {}, {}, {}}, State::InCall);
                return;
            }
        }
        thread.state = State::Idle;
        ++m_strayLines;
    }

    void begin(Thread& thread, LoggedCall call, State state) {
        spend(kCallOverhead + call.name.size());
        thread = {state, m_log.calls.size()};
        m_log.calls.push_back(std::move(call));
    }

    void takeInCall(Thread& thread, LoggedCall& call, std::string_view message) {
        if (const auto result = resultOf(call, message)) {
            call.result = *result;
            thread.state = State::Idle;
            return;
        }
        keep(call.messages, message);
        if (isFatal(call, message)) {
            call.result = kExceptionResult;
            thread.state = State::Idle;
        } else if (call.entry == Entry::Async) {
            noteRequest(thread.call, message);
        }
    }

    // "    [imNoErr] (0)"; "    OnGetFrame: [aiNoError] (0), [imNoErr] (0)".
    static std::optional<csSDK_int32> resultOf(const LoggedCall& call, std::string_view message) {
        if (!message.starts_with("    ")) {
            return std::nullopt;
        }
        message.remove_prefix(4);
        if (call.entry == Entry::Async) {
            const std::size_t colon = message.find(": ");
            if (!message.starts_with("On") || colon == std::string_view::npos) {
                return std::nullopt;
            }
            message.remove_prefix(colon + 2);
        }
        const auto result = scanNamedCode(message);
        const bool isWhole = result && (result->rest.empty() || call.entry == Entry::Async);
        return isWhole ? std::optional<csSDK_int32>(result->code) : std::nullopt;
    }

    static bool isFatal(const LoggedCall& call, std::string_view message) {
        return message.starts_with(call.entry == Entry::Async ? "xAsyncImportEntry: FATAL: Unhandled exception"
                                                              : "FATAL: Unhandled exception");
    }

    // Remembers which call requested the frame of a time, because its background decode logs only the time.
    void noteRequest(std::size_t call, std::string_view message) {
        if (message.starts_with("REQUEST: Adding: ") || message.starts_with("REQUEST: ERROR: Frame not found: ")) {
            if (const auto time = numberOf<PrTime>(message.substr(message.rfind(' ') + 1))) {
                spend(kMessageOverhead);
                m_requests[*time].push_back(call);
            }
        }
    }

    void beginDecode(Thread& thread, PrTime time, std::string_view message) {
        const auto asked = m_requests.find(time);
        if (asked == m_requests.end()) {
            thread.state = State::Idle;
            ++m_strayLines;
            return;
        }
        thread = {State::InDecode, asked->second.front()};
        asked->second.pop_front();
        if (asked->second.empty()) {
            m_requests.erase(asked);
        }
        keep(m_log.calls[thread.call].decode, message);
    }

    void keep(std::vector<std::string>& messages, std::string_view message) {
        spend(kMessageOverhead + message.size());
        messages.emplace_back(message);
        m_latest = &messages.back();
    }

    void spend(std::size_t bytes) {
        m_keptBytes += bytes;
        if (m_keptBytes > m_limits.keptBytes && !m_isOver) {
            m_isOver = true;
            m_log.remarks.push_back("The log is too long: it was read up to line " + std::to_string(m_lineNumber) +
                                    ".");
        }
    }

    const LogLimits m_limits;
    RecordedLog m_log;
    std::map<std::string, Thread, std::less<>> m_threads;
    std::map<PrTime, std::deque<std::size_t>> m_requests;
    std::string* m_latest = nullptr;        // the message that lines without time and thread continue
    std::size_t m_lineNumber = 0;
    std::size_t m_strayLines = 0;
    std::size_t m_keptBytes = 0;
    bool m_wasOpened = false;
    bool m_isOver = false;
};

}  // namespace

RecordedLog readLog(std::istream& in, const LogLimits& limits) { return Reader(limits).read(in); }

}  // namespace replay
