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

// A pattern up to the very last byte.
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

bool isClear(const char* block, std::size_t size) {
    return std::all_of(block, block + size, [](char byte) { return byte == 0; });
}

bool expectSize(const char* function, csSDK_int32 found, csSDK_uint32 wanted) {
    if (found != static_cast<csSDK_int32>(wanted)) {
        complain(Sentence::MemorySize, {function, std::to_string(found), std::to_string(wanted)});
    }
    return found == static_cast<csSDK_int32>(wanted);
}

bool isGiven(const void* memory, const char* function) {
    if (!memory) {
        complain(Sentence::NoMemory, {function});
    }
    return memory != nullptr;
}

void expectKept(const char* function, const char* block, std::size_t size) {
    if (!isMarked(block, size)) {
        complain(Sentence::ContentLost, {function});
    }
}

// --- Blocks ---------------------------------------------------------------------------------------------------

void checkSecondBlock(const PlugMemoryFuncs& memory, const char* block, csSDK_uint32 size) {
    char* second = memory.newPtrClear(size);
    if (!isGiven(second, "newPtrClear")) {
        return;
    }
    if (second == block) {
        complain(Sentence::MemoryShared, {"newPtrClear"});
        return;
    }
    if (!isClear(second, size)) {
        complain(Sentence::MemoryNotClear, {"newPtrClear"});
    }
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
    if (!isClear(*handle, size)) {
        complain(Sentence::MemoryNotClear, {"newHandleClear"});
    }
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
        const csSDK_int16 failure = memory.setHandleSize(handle, size + kGrowth);
        if (failure != 0) {
            complain(Sentence::CallFailed, {"setHandleSize", std::to_string(failure)});
        } else {
            expectKept("setHandleSize", *handle, size);
            expectSize("getHandleSize after setHandleSize", memory.getHandleSize(handle), size + kGrowth);
        }
    }
    memory.disposeHandle(handle);
}

// --- Basic suite ----------------------------------------------------------------------------------------------

bool isGoodCall(const char* function, SPErr error) {
    if (error != kSPNoError) {
        complain(Sentence::CallFailed, {function, std::to_string(error)});
    }
    return error == kSPNoError;
}

void checkBasicBlocks(const SPBasicSuite& basic) {
    constexpr csSDK_size_t size = 77;
    void* block = nullptr;
    if (!isGoodCall("AllocateBlock", basic.AllocateBlock(size, &block)) || !isGiven(block, "AllocateBlock")) {
        return;
    }
    mark(static_cast<char*>(block), size);
    void* grown = nullptr;
    if (isGoodCall("ReallocateBlock", basic.ReallocateBlock(block, size + kGrowth, &grown))) {
        block = grown;
        if (!isGiven(block, "ReallocateBlock")) {
            return;
        }
        expectKept("ReallocateBlock", static_cast<char*>(block), size);
        mark(static_cast<char*>(block), size + kGrowth);
    }
    isGoodCall("FreeBlock", basic.FreeBlock(block));
}

void checkIsEqual(const SPBasicSuite& basic) {
    // At two addresses, so that only the content is the same.
    const char one[kTextBytes] = "Premiere Time Suite";
    const char same[kTextBytes] = "Premiere Time Suite";
    const SPBoolean forEqual = basic.IsEqual(one, same);
    if (forEqual == 0) {
        complain(Sentence::IsEqual, {std::to_string(forEqual), "equal"});
    }
    const SPBoolean forDifferent = basic.IsEqual(one, "Premiere Time");
    if (forDifferent != 0) {
        complain(Sentence::IsEqual, {std::to_string(forDifferent), "different"});
    }
}

void expectRefused(const SPBasicSuite& basic, const char* name, csSDK_int32 version) {
    int marker = 0;
    const void* suite = &marker;
    const SPErr error = basic.AcquireSuite(name, version, &suite);
    if (error == kSPNoError) {
        complain(Sentence::InventedSuite);
    } else if (suite) {
        complain(Sentence::AddressOfNoSuite);
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
