// The heap memory of a log line, a line for which there is no memory, and a thread that is inside a line while it waits
// for memory.
#include "avi/CountingHeap.h"
#include "hostkit/plugin/PluginLog.h"
#include "log/Log.h"
#include "log/LogWriter.h"
#include "log/ProfileSandbox.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <future>
#include <string>
#include <thread>
#include <vector>

namespace {

class LogLineMemory : public testing::Test {
protected:
    LogLineMemory() {
        ConfigureLog("log_memory_test", true, false);
        Log("the first line opens the file");
    }
    ~LogLineMemory() override {
        CloseLog();
        ConfigureLog("log_memory_test", false, false);
    }

    static std::size_t allocationsOf(const char* message) {
        heap::startCounting();
        Log("%s", message);
        return heap::allocations();
    }

    // The messages of the only log file.
    std::vector<std::string> messages() const {
        std::vector<std::string> all;
        for (const auto& file : std::filesystem::directory_iterator(m_sandbox.logFolder())) {
            for (const std::string& line : hostkit::readLogLines(file.path())) {
                all.emplace_back(hostkit::withoutLogPrefix(line));
            }
        }
        return all;
    }

    ProfileSandbox m_sandbox;
};

// A thread that stays inside a line until it is released.
class LineInProgress {
public:
    LineInProgress() {
        s_inside = {};
        s_go = {};
        m_thread = std::thread([] {
            heap::visitNext([] {
                s_inside.set_value();
                s_go.get_future().wait();
            });
            Log("the long line");
        });
        s_inside.get_future().wait();
    }
    void finish() {
        s_go.set_value();
        m_thread.join();
    }

private:
    // Not semaphores: those of libstdc++ 12 miss a release where the system has no futex.
    static inline std::promise<void> s_inside;
    static inline std::promise<void> s_go;
    std::thread m_thread;
};

TEST_F(LogLineMemory, IsOneBufferForAShortLine) { EXPECT_EQ(allocationsOf("short"), 1u); }

TEST_F(LogLineMemory, IsOneBufferForALongLine) {
    EXPECT_EQ(allocationsOf(std::string(100'000, 'x').c_str()), 1u);
}

TEST_F(LogLineMemory, WhenMissingDropsTheLine) {
    heap::startCounting();
    heap::failFrom(0);
    Log("no memory for this");
    heap::failNever();
    Log("the second line");
    EXPECT_EQ(messages().size(), 4u);
    EXPECT_EQ(messages().back(), "the second line");
}

TEST_F(LogLineMemory, WhenMissingForTheClosingLineDropsOnlyThat) {
    heap::startCounting();
    heap::failFrom(0);
    CloseLog();
    heap::failNever();
    EXPECT_EQ(messages().back(), "the first line opens the file");
}

TEST_F(LogLineMemory, BlocksOtherLinesWhileAllocated) {
    LineInProgress line;
    std::thread other([] { Log("after it"); });
    line.finish();
    other.join();
    EXPECT_EQ(messages().size(), 5u);
}

TEST_F(LogLineMemory, DoesNotBlockTheEndOfTheModule) {
    LineInProgress line;
    StopWaitingForLog();
    Log("dropped");
    LogWriter* const left = logSettings.logger;
    CloseLog();
    EXPECT_EQ(logSettings.logger, nullptr);
    line.finish();   // written to a file that is still open
    EXPECT_EQ(messages().back(), "the long line");
    EXPECT_EQ(messages().size(), 4u);
    delete left;
}

TEST_F(LogLineMemory, DoesNotBlockACloseOnceAllocated) {
    LineInProgress line;
    StopWaitingForLog();
    line.finish();
    CloseLog();
    EXPECT_EQ(messages().back(), "Log closed");
}

}  // namespace
