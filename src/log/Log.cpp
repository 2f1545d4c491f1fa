#include "log/Log.h"

#include "log/LogSystem.h"
#include "log/LogWriter.h"

#include <cstdarg>
#include <exception>
#include <memory>

constinit LogSettings logSettings;

namespace {

LogWriter& writer() {
    LogWriter* existing = logSettings.logger.load(std::memory_order_acquire);
    if (existing != nullptr) {
        return *existing;
    }
    // Two simultaneous first lines create two writers; the second one is destroyed again.
    auto created = std::make_unique<LogWriter>(logSettings.name, logSettings.console);
    if (logSettings.logger.compare_exchange_strong(existing, created.get(), std::memory_order_acq_rel)) {
        return *created.release();
    }
    created->close();
    return *existing;
}

// A line that cannot be written for lack of memory is dropped: the log never disturbs the work it describes.
template <class Work>
void neverFail(Work work) noexcept {
    try {
        work();
    } catch (const std::exception&) {
    }
}

}  // namespace

void WriteLogLine(const char* format, ...) noexcept {
    std::va_list arguments;
    va_start(arguments, format);
    neverFail([&] { writer().writeLine(format, arguments); });
    va_end(arguments);
}

void ConfigureLog(const char* name, bool enabled, bool console) {
    logSettings.name = name;
    logSettings.enabled.store(enabled, std::memory_order_relaxed);
    logSettings.console = console;
}

void ReadLogSwitch() {
    if (logSystem::switchIsOn()) {
        logSettings.enabled.store(true, std::memory_order_relaxed);
    }
}

void StopWaitingForLog() {
    if (LogWriter* writer = logSettings.logger.load(std::memory_order_acquire)) {
        writer->stopWaiting();
    }
}

void CloseLog() {
    neverFail([] {
        std::unique_ptr<LogWriter> writer(logSettings.logger.exchange(nullptr, std::memory_order_acq_rel));
        if (writer != nullptr && !writer->close()) {
            static_cast<void>(writer.release());   // left as it is for ever
        }
    });
}
