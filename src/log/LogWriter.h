// Writes log lines to a new file of its own, and to a console window if asked. Lines are written whole, from any
// thread. A writer whose file could not be opened drops its lines.
#pragma once

#include "log/LogAttributes.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <memory>
#include <mutex>

class LogWriter {
public:
    // Opens a file that did not exist before, named after `name` and the time, and writes the opening lines. Throws
    // std::bad_alloc; a file that does not open is no error.
    LogWriter(const char* name, bool console);
    LogWriter(const LogWriter&) = delete;
    LogWriter& operator=(const LogWriter&) = delete;

    // Writes "[time] [thread] message" as one line. Throws std::bad_alloc when there is no memory for the line.
    void writeLine(const char* format, std::va_list arguments);

    // From now on a line is dropped that would have to wait for another thread's.
    void stopWaiting() { m_mayWait.store(false, std::memory_order_relaxed); }

    // Writes the closing line and closes the file; the writer can then be destroyed. False where that would have to
    // wait for a thread, which may be gone with the lock: then the writer must be left as it is for ever.
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
