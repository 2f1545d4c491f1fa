#include "probe/MemoryChecks.h"

#include "probe/Complaints.h"

#include <algorithm>
#include <string>

namespace hostprobe {

namespace {

// One byte, an odd number, a subtype record, and more than a page.
constexpr csSDK_uint32 kSizes[] = {1, 7, 516, 5001};
constexpr csSDK_uint32 kGrowth = 3000;
constexpr std::size_t kTextBytes = 64;

// A pattern up to the last byte.
void mark(char* block, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
        block[i] = static_cast<char>(i * 7 + 1);
    }
}

bool isMarked(const char* block, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
        if (block[i] != static_cast<char>(i * 7 + 1)) {
            return false;
        }
    }
    return true;
}

bool expectSize(const char* function, csSDK_int32 found, csSDK_uint32 wanted) {
    return expect(found == static_cast<csSDK_int32>(wanted), Sentence::MemorySize,
                  {function, std::to_string(found), std::to_string(wanted)});
}

bool isGiven(const void* memory, const char* function) { return expect(memory, Sentence::NoMemory, {function}); }

void expectClear(const char* function, const char* block, std::size_t size) {
    expect(std::all_of(block, block + size, [](char byte) { return byte == 0; }), Sentence::MemoryNotClear, {function});
}

void expectKept(const char* function, const char* block, std::size_t size) {
    expect(isMarked(block, size), Sentence::ContentLost, {function});
}

// --- Blocks ---------------------------------------------------------------------------------------------------

void checkSecondBlock(const PlugMemoryFuncs& memory, const char* block, csSDK_uint32 size) {
    char* second = memory.newPtrClear(size);
    if (!isGiven(second, "newPtrClear") || !expect(second != block, Sentence::MemoryShared, {"newPtrClear"})) {
        return;
    }
    expectClear("newPtrClear", second, size);
    expectSize("getPtrSize", memory.getPtrSize(second), size);
    memory.disposePtr(second);
}

void checkBlock(const PlugMemoryFuncs& memory, csSDK_uint32 size) {
    char* block = memory.newPtr(size);
    if (!isGiven(block, "newPtr")) {
        return;
    }
    if (expectSize("getPtrSize", memory.getPtrSize(block), size)) {
        mark(block, size);
        checkSecondBlock(memory, block, size);
        memory.setPtrSize(&block, size + kGrowth);
        expectKept("setPtrSize", block, size);
        expectSize("getPtrSize after setPtrSize", memory.getPtrSize(block), size + kGrowth);
    }
    memory.disposePtr(block);
}

// --- Handles --------------------------------------------------------------------------------------------------

bool isGivenHandle(char** handle, const char* function) {
    return isGiven(handle ? *handle : nullptr, function);
}

void checkClearHandle(const PlugMemoryFuncs& memory, csSDK_uint32 size) {
    char** handle = memory.newHandleClear(size);
    if (!isGivenHandle(handle, "newHandleClear")) {
        return;
    }
    expectClear("newHandleClear", *handle, size);
    memory.disposeHandle(handle);
}

void checkHandle(const PlugMemoryFuncs& memory, csSDK_uint32 size) {
    char** handle = memory.newHandle(size);
    if (!isGivenHandle(handle, "newHandle")) {
        return;
    }
    if (expectSize("getHandleSize", memory.getHandleSize(handle), size)) {
        memory.lockHandle(handle);
        mark(*handle, size);
        memory.unlockHandle(handle);
        if (expectZero("setHandleSize", memory.setHandleSize(handle, size + kGrowth))) {
            expectKept("setHandleSize", *handle, size);
            expectSize("getHandleSize after setHandleSize", memory.getHandleSize(handle), size + kGrowth);
        }
    }
    memory.disposeHandle(handle);
}

// --- Basic suite ----------------------------------------------------------------------------------------------

void checkBasicBlocks(const SPBasicSuite& basic) {
    constexpr csSDK_size_t size = 77;
    void* block = nullptr;
    if (!expectZero("AllocateBlock", basic.AllocateBlock(size, &block)) || !isGiven(block, "AllocateBlock")) {
        return;
    }
    mark(static_cast<char*>(block), size);
    void* grown = nullptr;
    if (expectZero("ReallocateBlock", basic.ReallocateBlock(block, size + kGrowth, &grown))) {
        block = grown;
        if (!isGiven(block, "ReallocateBlock")) {
            return;
        }
        expectKept("ReallocateBlock", static_cast<char*>(block), size);
        mark(static_cast<char*>(block), size + kGrowth);
    }
    expectZero("FreeBlock", basic.FreeBlock(block));
}

void checkIsEqual(const SPBasicSuite& basic) {
    // At two addresses, so that only the content is the same.
    const char one[kTextBytes] = "Premiere Time Suite";
    const char same[kTextBytes] = "Premiere Time Suite";
    const SPBoolean forEqual = basic.IsEqual(one, same);
    expect(forEqual != 0, Sentence::IsEqual, {std::to_string(forEqual), "equal"});
    const SPBoolean forDifferent = basic.IsEqual(one, "Premiere Time");
    expect(forDifferent == 0, Sentence::IsEqual, {std::to_string(forDifferent), "different"});
}

void expectRefused(const SPBasicSuite& basic, const char* name, csSDK_int32 version) {
    int marker = 0;
    const void* suite = &marker;
    if (expect(basic.AcquireSuite(name, version, &suite) != kSPNoError, Sentence::InventedSuite)) {
        expect(!suite, Sentence::AddressOfNoSuite);
    }
}

}  // namespace

void checkMemory(const PlugMemoryFuncs& memory) {
    for (const csSDK_uint32 size : kSizes) {
        checkBlock(memory, size);
        checkHandle(memory, size);
        checkClearHandle(memory, size);
    }
}

void checkBasicSuite(const SPBasicSuite& basic) {
    checkBasicBlocks(basic);
    checkIsEqual(basic);
    expectRefused(basic, "Premiere Suite That Nobody Made", 1);
    expectRefused(basic, kPrSDKTimeSuite, 9999);
}

}  // namespace hostprobe
