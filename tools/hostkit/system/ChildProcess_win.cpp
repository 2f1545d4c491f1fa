#include "hostkit/system/ChildProcess.h"

#include "hostkit/system/Interrupt.h"
#include "hostkit/system/OutputFile.h"
#include "hostkit/system/Text.h"

#include <windows.h>

#include <memory>
#include <mutex>
#include <stdexcept>

namespace hostkit {

namespace {

constexpr int kMostAttempts = 3;
constexpr DWORD kPauseBetweenAttempts = 200;        // milliseconds
constexpr DWORD kPollInterval = 50;                 // milliseconds
constexpr DWORD kPatienceWithTheDying = 10000;      // milliseconds

struct CloseHandleOf {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandleOf>;

// A word in the form from which a program's start-up code makes the same word again: backslashes count double
// before a quotation mark, and only there.
std::wstring quoted(const std::wstring& word) {
    std::wstring out = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t character : word) {
        if (character == L'\\') {
            ++backslashes;
            continue;
        }
        out.append(character == L'"' ? 2 * backslashes + 1 : backslashes, L'\\');
        out.push_back(character);
        backslashes = 0;
    }
    out.append(2 * backslashes, L'\\');
    return out + L"\"";
}

std::wstring wide(const std::string& utf8) { return pathFromUtf8(utf8).wstring(); }

std::wstring commandLineOf(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
    std::wstring line = quoted(program.wstring());
    for (const std::string& argument : arguments) {
        line += L" " + quoted(wide(argument));
    }
    return line;
}

Handle inheritable(const wchar_t* path, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES security = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE handle = CreateFileW(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE, &security, disposition,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        throw std::runtime_error("A file for a program's output cannot be opened.");
    }
    return Handle(handle);
}

// A job whose processes end when its last handle is closed, at the latest with this process, however that ends.
HANDLE jobOfThisProcess() {
    static const Handle job = [] {
        Handle made(CreateJobObjectW(nullptr, nullptr));
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        SetInformationJobObject(made.get(), JobObjectExtendedLimitInformation, &limits, sizeof(limits));
        return made;
    }();
    return job.get();
}

// Wine, when busy, now and then answers with an internal error and has started nothing.
bool create(const std::filesystem::path& program, std::wstring& line, STARTUPINFOW& startup,
            PROCESS_INFORMATION& process) {
    for (int attempt = 1;; ++attempt) {
        if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                           &process)) {
            return true;
        }
        if (GetLastError() != ERROR_INTERNAL_ERROR || attempt == kMostAttempts) {
            return false;
        }
        Sleep(kPauseBetweenAttempts);
    }
}

// Whatever handles are inheritable go to each process that starts: one at a time, or a child holds the files of
// another for as long as it runs.
std::mutex startMutex;

Handle start(const std::filesystem::path& program, const std::vector<std::string>& arguments, const OutputFile& output,
             const OutputFile& errors) {
    const std::lock_guard lock(startMutex);
    const Handle none = inheritable(L"NUL", GENERIC_READ, OPEN_EXISTING);
    const Handle out = inheritable(output.path().c_str(), GENERIC_WRITE, CREATE_ALWAYS);
    const Handle err = inheritable(errors.path().c_str(), GENERIC_WRITE, CREATE_ALWAYS);
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = none.get();
    startup.hStdOutput = out.get();
    startup.hStdError = err.get();
    PROCESS_INFORMATION process = {};
    std::wstring line = commandLineOf(program, arguments);
    if (!create(program, line, startup, process)) {
        throw std::runtime_error(std::string("'") + toUtf8(program) + "' cannot be started (error " +
                                 std::to_string(GetLastError()) + ").");
    }
    AssignProcessToJobObject(jobOfThisProcess(), process.hProcess);
    CloseHandle(process.hThread);
    return Handle(process.hProcess);
}

// Waits for the process; false when the time is up or an interrupt came first.
bool waitFor(HANDLE process, std::chrono::seconds timeLimit) {
    const auto end = std::chrono::steady_clock::now() + timeLimit;
    while (WaitForSingleObject(process, kPollInterval) == WAIT_TIMEOUT) {
        if (std::chrono::steady_clock::now() >= end || wasInterrupted()) {
            return false;
        }
    }
    return true;
}

}  // namespace

ChildResult runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                       std::chrono::seconds timeLimit) {
    const OutputFile output;
    const OutputFile errors;
    const Handle process = start(program, arguments, output, errors);
    ChildResult result;
    result.timedOut = !waitFor(process.get(), timeLimit);
    if (result.timedOut) {
        TerminateProcess(process.get(), 1);
        WaitForSingleObject(process.get(), kPatienceWithTheDying);
        if (wasInterrupted()) {
            throw Interrupted();
        }
    }
    DWORD code = 0;
    GetExitCodeProcess(process.get(), &code);
    result.exitCode = static_cast<int>(code);
    result.output = output.content();
    result.errors = errors.content();
    return result;
}

}  // namespace hostkit
