#include "log/LogWriter.h"

#include "log/LogFolder.h"
#include "log/LogSettings.h"
#include "log/LogSystem.h"

#include <cstring>
#include <ctime>
#include <exception>
#include <memory>
#include <mutex>
#include <string>

// Formats come from callers whose own formats the compiler has checked.
#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#endif

namespace {

// Files of one name and second: counters 0 to 999.
constexpr int kMaxLogFiles = 1000;

// Room in a line's buffer beside the message: the prefix, the line end and the terminator.
constexpr std::size_t kLineOverhead = 128;

// The time as text; kept here, because a line should take no memory but its own.
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
        if (std::FILE* taken = folder.open(baseName.c_str(), counter, "r")) {
            std::fclose(taken);
        } else if (std::FILE* file = folder.open(baseName.c_str(), counter, "w")) {
            return file;
        }
    }
    return nullptr;
}

}  // namespace

LogWriter::LogWriter(const char* name, bool console) noexcept {
    try {
        open(name, console);
        writeText("Log opened");
        writeText("Application: %s", logSystem::applicationPath().c_str());
    } catch (const std::exception&) {
        // No memory for a name: opening is tried only once.
    }
}

LogWriter::~LogWriter() {
    writeText("Log closed");
}

void LogWriter::open(const char* name, bool console) {
    const std::string baseName = std::string(name) + "_" + TimeText("%Y%m%d_%H%M%S").text();
    const LogFolder folder;
    if (!folder.found()) {
        return;
    }
    m_file.reset(openNewFile(folder, baseName));
    if (m_file != nullptr) {
        std::setvbuf(m_file.get(), nullptr, _IONBF, 0);   // a crash loses no line
    }
    m_console = console;
    if (m_console) {
        logSystem::openConsole();
    }
}

void LogWriter::writeText(const char* format, ...) noexcept {
    std::va_list arguments;
    va_start(arguments, format);
    try {
        writeLine(format, arguments);
    } catch (const std::exception&) {
        // A line that cannot be written is dropped.
    }
    va_end(arguments);
}

void LogWriter::writeLine(const char* format, std::va_list arguments) {
    std::unique_lock lock(m_lock, std::defer_lock);
    if (!logSettings.unloading.load(std::memory_order_relaxed)) {
        lock.lock();
    } else if (!lock.try_lock()) {
        return;
    }
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
