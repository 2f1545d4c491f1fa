#include "log/LogWriter.h"

#include "log/LogFolder.h"
#include "log/LogSystem.h"

#include <cstring>
#include <ctime>
#include <memory>
#include <mutex>
#include <string>

// The callers' formats have already been checked by the compiler.
#if defined(__GNUC__) || defined(__clang__)
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#endif

namespace {

// Files with the same name and second: counters 0 to 999.
constexpr int kMaxLogFiles = 1000;

// Space in a line's buffer apart from the message: prefix, line end and terminator.
constexpr std::size_t kLineOverhead = 128;

// The time as text in a local buffer: a line should allocate no memory but its own.
class TimeText {
public:
    explicit TimeText(const char* format) {
        const std::tm now = logSystem::localTime();
        m_text[std::strftime(m_text, sizeof m_text, format, &now)] = '\0';
    }

    const char* text() const { return m_text; }

private:
    char m_text[64];
};

std::FILE* openNewFile(const LogFolder& folder, const std::string& baseName) {
    for (int counter = 0; counter < kMaxLogFiles; ++counter) {
        if (std::FILE* taken = folder.open(baseName.c_str(), counter, false)) {
            std::fclose(taken);
        } else if (std::FILE* file = folder.open(baseName.c_str(), counter, true)) {
            return file;
        }
    }
    return nullptr;
}

}  // namespace

LogWriter::LogWriter(const char* name, bool console) {
    const std::string baseName = std::string(name) + "_" + TimeText("%Y%m%d_%H%M%S").text();
    const LogFolder folder;
    if (!folder.found()) {
        return;
    }
    m_file.reset(openNewFile(folder, baseName));
    if (m_file != nullptr) {
        std::setvbuf(m_file.get(), nullptr, _IONBF, 0);   // so that a crash loses no line
    }
    m_console = console;
    if (m_console) {
        logSystem::openConsole();
    }
    writeText("Log opened");
    writeText("Application: %s", logSystem::applicationPath().c_str());
}

bool LogWriter::close() {
    const auto held = lock();
    if (!held) {
        return false;
    }
    writeText("Log closed");
    m_file.reset();
    return true;
}

void LogWriter::writeLine(const char* format, std::va_list arguments) {
    if (const auto held = lock()) {
        write(format, arguments);
    }
}

// The returned lock is not owned if waiting is off and another thread holds it.
std::unique_lock<std::mutex> LogWriter::lock() {
    return m_mayWait.load(std::memory_order_relaxed) ? std::unique_lock(m_lock)
                                                     : std::unique_lock(m_lock, std::try_to_lock);
}

void LogWriter::writeText(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    write(format, arguments);
    va_end(arguments);
}

void LogWriter::write(const char* format, std::va_list arguments) {
    const TimeText time("%Y-%m-%d %H:%M:%S");

    std::va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0) {
        return;
    }
    const std::size_t capacity = static_cast<std::size_t>(length) + kLineOverhead;
    const auto line = std::make_unique<char[]>(capacity);
    const int prefix = std::snprintf(line.get(), capacity, "[%s] [%lu] ", time.text(), logSystem::threadNumber());
    std::vsnprintf(line.get() + prefix, capacity - static_cast<std::size_t>(prefix), format, arguments);
    std::strcat(line.get(), "\n");

    if (m_console) {
        logSystem::writeConsole(line.get());
    }
    if (m_file != nullptr) {
        std::fputs(line.get(), m_file.get());
    }
}
