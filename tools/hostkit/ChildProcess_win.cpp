#include "hostkit/ChildProcess.h"

#include "hostkit/OutputFile.h"
#include "hostkit/Text.h"

#include <windows.h>

#include <memory>
#include <stdexcept>

namespace hostkit {

namespace {

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

Handle start(const std::filesystem::path& program, const std::vector<std::string>& arguments, const OutputFile& output,
             const OutputFile& errors) {
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
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process)) {
        throw std::runtime_error(std::string("'") + toUtf8(program) + "' cannot be started (error " +
                                 std::to_string(GetLastError()) + ").");
    }
    CloseHandle(process.hThread);
    return Handle(process.hProcess);
}

}  // namespace

ChildResult runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                       std::chrono::seconds timeLimit) {
    const OutputFile output;
    const OutputFile errors;
    const Handle process = start(program, arguments, output, errors);
    ChildResult result;
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(timeLimit).count();
    result.timedOut = WaitForSingleObject(process.get(), static_cast<DWORD>(milliseconds)) == WAIT_TIMEOUT;
    if (result.timedOut) {
        TerminateProcess(process.get(), 1);
        WaitForSingleObject(process.get(), INFINITE);
    }
    DWORD code = 0;
    GetExitCodeProcess(process.get(), &code);
    result.exitCode = static_cast<int>(code);
    result.output = output.content();
    result.errors = errors.content();
    return result;
}

}  // namespace hostkit
