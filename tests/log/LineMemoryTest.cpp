// What a line of the log takes of the heap.
#include "avi/CountingHeap.h"
#include "log/Log.h"
#include "log/ProfileSandbox.h"

#include <gtest/gtest.h>

#include <string>

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

    ProfileSandbox m_sandbox;
};

TEST_F(LogLineMemory, IsOneBufferForAShortLine) { EXPECT_EQ(allocationsOf("short"), 1u); }

TEST_F(LogLineMemory, IsOneBufferForALongLine) {
    EXPECT_EQ(allocationsOf(std::string(100'000, 'x').c_str()), 1u);
}

}  // namespace
