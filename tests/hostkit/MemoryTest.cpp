#include "hostkit/host/Host.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace hostkit;

namespace {

using Sentences = std::vector<std::string>;

class Memory : public testing::Test {
protected:
    Host host;
    PlugMemoryFuncs& functions = *host.stdParms()->piSuites->memFuncs;
};

TEST_F(Memory, ABlockHasExactlyTheRequestedSize) {
    char* block = functions.newPtr(1031);
    EXPECT_EQ(functions.getPtrSize(block), 1031);
    functions.disposePtr(block);
    EXPECT_EQ(host.problems(), Sentences{});
}

TEST_F(Memory, ANewBlockIsNotZeroed) {
    char* block = functions.newPtr(4);
    EXPECT_EQ(std::memcmp(block, "\xCD\xCD\xCD\xCD", 4), 0);
    functions.disposePtr(block);
}

TEST_F(Memory, AClearedBlockIsZeroed) {
    char* block = functions.newPtrClear(4);
    EXPECT_EQ(std::memcmp(block, "\0\0\0\0", 4), 0);
    functions.disposePtr(block);
}

TEST_F(Memory, ALeakedBlockIsAProblem) {
    functions.newPtr(516);
    EXPECT_EQ(host.problems(), Sentences{"A block of 516 bytes was never freed."});
    EXPECT_EQ(host.violations(), Sentences{});
}

TEST_F(Memory, AnOverrunShowsWhenTheBlockIsFreed) {
    char* block = functions.newPtr(516);
    block[516] = 0;
    functions.disposePtr(block);
    EXPECT_EQ(host.problems(), Sentences{"A block of 516 bytes was overrun."});
}

TEST_F(Memory, FreeingTwiceIsAProblem) {
    char* block = functions.newPtr(1);
    functions.disposePtr(block);
    functions.disposePtr(block);
    EXPECT_EQ(host.problems(), Sentences{"A block was freed that the host never gave out, or twice."});
}

TEST_F(Memory, AGrownBlockKeepsItsContent) {
    char* block = functions.newPtr(3);
    std::memcpy(block, "abc", 3);
    functions.setPtrSize(&block, 1000);
    EXPECT_EQ(std::memcmp(block, "abc", 3), 0);
    EXPECT_EQ(functions.getPtrSize(block), 1000);
    functions.disposePtr(block);
    EXPECT_EQ(host.problems(), Sentences{});
}

TEST_F(Memory, AHandleLeadsToItsBlock) {
    char** handle = functions.newHandle(10);
    EXPECT_EQ(functions.getHandleSize(handle), 10);
    EXPECT_EQ(functions.setHandleSize(handle, 20), 0);
    EXPECT_EQ(functions.getHandleSize(handle), 20);
    functions.disposeHandle(handle);
    EXPECT_EQ(host.problems(), Sentences{});
}

TEST_F(Memory, BlocksOfTheBasicSuiteAreCountedToo) {
    void* block = nullptr;
    EXPECT_EQ(host.basicSuite()->AllocateBlock(24, &block), 0);
    EXPECT_EQ(host.memory().aliveBlocks(), 1u);
    EXPECT_EQ(host.basicSuite()->FreeBlock(block), 0);
    EXPECT_EQ(host.memory().aliveBlocks(), 0u);
}

}  // namespace
