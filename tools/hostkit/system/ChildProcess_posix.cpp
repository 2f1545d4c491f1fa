#include "hostkit/system/ChildProcess.h"

#include "hostkit/system/Interrupt.h"
#include "hostkit/system/OutputFile.h"
#include "hostkit/system/Text.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <stdexcept>
#include <thread>

namespace hostkit {

namespace {

constexpr auto kPollInterval = std::chrono::milliseconds(2);

class Redirections {
public:
    Redirections(const OutputFile& output, const OutputFile& errors) {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        redirect(STDOUT_FILENO, output);
        redirect(STDERR_FILENO, errors);
    }
    ~Redirections() { posix_spawn_file_actions_destroy(&m_actions); }
    Redirections(const Redirections&) = delete;
    Redirections& operator=(const Redirections&) = delete;

    const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    void redirect(int descriptor, const OutputFile& file) {
        posix_spawn_file_actions_addopen(&m_actions, descriptor, file.path().c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                         0600);
    }
    posix_spawn_file_actions_t m_actions;
};

pid_t start(const std::filesystem::path& program, std::vector<std::string> words, const Redirections& redirections) {
    words.insert(words.begin(), toUtf8(program));
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    pid_t child = 0;
    const int error = posix_spawn(&child, program.c_str(), redirections.get(), nullptr, pointers.data(), environ);
    if (error != 0) {
        throw std::runtime_error("'" + toUtf8(program) + "' cannot be started (" + std::strerror(error) + ").");
    }
    return child;
}

// Waits for the child; false when the time is up or an interrupt came first.
bool waitFor(pid_t child, int& status, std::chrono::seconds timeLimit) {
    const auto end = std::chrono::steady_clock::now() + timeLimit;
    while (waitpid(child, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() >= end || wasInterrupted()) {
            return false;
        }
        std::this_thread::sleep_for(kPollInterval);
    }
    return true;
}

}  // namespace

ChildResult runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                       std::chrono::seconds timeLimit) {
    const OutputFile output;
    const OutputFile errors;
    const pid_t child = start(program, arguments, Redirections(output, errors));
    ChildResult result;
    int status = 0;
    result.timedOut = !waitFor(child, status, timeLimit);
    if (result.timedOut) {
        kill(child, SIGKILL);
        waitpid(child, &status, 0);
        if (wasInterrupted()) {
            throw Interrupted();
        }
    }
    result.exitCode = WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
    result.output = output.content();
    result.errors = errors.content();
    return result;
}

}  // namespace hostkit
