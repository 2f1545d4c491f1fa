// Writes log lines to a new file and, if requested, to a console window. Lines are written whole; thread-safe. If the
// file could not be opened, lines are dropped.
#pragma once

#include "log/LogAttributes.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <memory>
#include <mutex>

class LogWriter {
public:
    // Creates a new file named after `name` and the time, and writes the opening lines. Throws std::bad_alloc; failing
    // to create the file is not an error.
    LogWriter(const char* name, bool console);
    LogWriter(const LogWriter&) = delete;
    LogWriter& operator=(const LogWriter&) = delete;

    // Writes "[time] [thread] message" as one line. Throws std::bad_alloc if there is no memory for the line.
    void writeLine(const char* format, std::va_list arguments);

    // From now on, a line that would have to wait for another thread is dropped.
    void stopWaiting() { m_mayWait.store(false, std::memory_order_relaxed); }

    // Writes the closing line and closes the file; the writer can then be destroyed. Returns false if that would have
    // to wait for another thread, which may be gone while holding the lock: the writer must then never be destroyed.
    bool close();

private:
    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::unique_lock<std::mutex> lock();
    void write(const char* format, std::va_list arguments);
    LOG_PRINTF_FORMAT(2, 3)
    void writeText(const char* format, ...);

    std::unique_ptr<std::FILE, CloseFile> m_file;
    bool m_console = false;
    std::atomic<bool> m_mayWait{true};
    std::mutex m_lock;
};
