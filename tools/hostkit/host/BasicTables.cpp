// The tables that are reached from the standard parameters: callbacks, basic suite, memory and utility functions.
#include "hostkit/host/HostTables.h"
#include "hostkit/system/Text.h"

#include <cstring>

namespace hostkit {

namespace {

constexpr std::uint8_t kUndefinedContent = 0xCD;
constexpr csSDK_int32 kPiInterfaceVersion = 9;

// --- Basic suite --------------------------------------------------------------------------------------------

SPErr acquireSuite(const char* name, csSDK_int32 version, const void** suite) {
    const auto forced = enter(HostCall::AcquireSuite, "'", name, "', ", version);
    if (forced) {
        *suite = nullptr;
        return *forced;
    }
    return Host::current().acquire(name, version, suite);
}

SPErr releaseSuite(const char* name, csSDK_int32 version) {
    const auto forced = enter(HostCall::ReleaseSuite, "'", name, "', ", version);
    return forced ? *forced : Host::current().release(name, version);
}

SPBoolean isEqual(const char* token1, const char* token2) {
    const auto forced = enter(HostCall::IsEqual, "'", token1, "', '", token2, "'");
    return forced ? *forced : std::strcmp(token1, token2) == 0;
}

SPErr allocateBlock(csSDK_size_t size, void** block) {
    const auto forced = enter(HostCall::AllocateBlock, size);
    *block = forced ? nullptr : Host::current().memory().allocate(static_cast<std::size_t>(size), kUndefinedContent);
    return forced.value_or(kSPNoError);
}

SPErr freeBlock(void* block) {
    const auto forced = enter(HostCall::FreeBlock);
    if (!forced) {
        Host::current().memory().free(static_cast<char*>(block));
    }
    return forced.value_or(kSPNoError);
}

SPErr reallocateBlock(void* block, csSDK_size_t newSize, void** newBlock) {
    const auto forced = enter(HostCall::ReallocateBlock, newSize);
    if (!forced) {
        char* moved = static_cast<char*>(block);
        Host::current().memory().resize(moved, static_cast<std::size_t>(newSize));
        *newBlock = moved;
    }
    return forced.value_or(kSPNoError);
}

SPErr undefined() { return enter(HostCall::Undefined).value_or(kSuiteNotImplemented); }

// --- Memory functions -----------------------------------------------------------------------------------------

char* newPtr(csSDK_uint32 size) {
    return enter(HostCall::NewPtr, size) ? nullptr : Host::current().memory().allocate(size, kUndefinedContent);
}

char* newPtrClear(csSDK_uint32 size) {
    return enter(HostCall::NewPtrClear, size) ? nullptr : Host::current().memory().allocate(size, 0);
}

void setPtrSize(PrMemoryPtr* block, csSDK_uint32 newSize) {
    if (!enter(HostCall::SetPtrSize, newSize)) {
        Host::current().memory().resize(*block, newSize);
    }
}

csSDK_int32 getPtrSize(char* block) {
    const auto forced = enter(HostCall::GetPtrSize);
    return forced ? *forced : static_cast<csSDK_int32>(Host::current().memory().sizeOf(block));
}

void disposePtr(char* block) {
    if (!enter(HostCall::DisposePtr)) {
        Host::current().memory().free(block);
    }
}

char** newHandle(csSDK_uint32 size) {
    return enter(HostCall::NewHandle, size) ? nullptr
                                            : Host::current().memory().allocateHandle(size, kUndefinedContent);
}

char** newHandleClear(csSDK_uint32 size) {
    return enter(HostCall::NewHandleClear, size) ? nullptr : Host::current().memory().allocateHandle(size, 0);
}

csSDK_int16 setHandleSize(PrMemoryHandle handle, csSDK_uint32 newSize) {
    if (enter(HostCall::SetHandleSize, newSize)) {
        return -1;
    }
    Host::current().memory().resize(*handle, newSize);
    return 0;
}

csSDK_int32 getHandleSize(PrMemoryHandle handle) {
    const auto forced = enter(HostCall::GetHandleSize);
    return forced ? *forced : static_cast<csSDK_int32>(Host::current().memory().sizeOf(*handle));
}

void disposeHandle(PrMemoryHandle handle) {
    if (!enter(HostCall::DisposeHandle)) {
        Host::current().memory().freeHandle(handle);
    }
}

void lockHandle(PrMemoryHandle) { enter(HostCall::LockHandle); }
void unlockHandle(PrMemoryHandle) { enter(HostCall::UnlockHandle); }

// --- Utility functions: only the basic suite is of use to an importer -----------------------------------------

csSDK_size_t getSettings(csSDK_uint32 selector) {
    enter(HostCall::GetSettings, selector);
    return 0;
}

void getSerialNumber(char* buffer) {
    enter(HostCall::GetSerialNumber);
    buffer[0] = '\0';
}

csSDK_int32 getFileTimebase(void*, csSDK_int32, void*) {
    return enter(HostCall::GetFileTimebase).value_or(kSuiteNotImplemented);
}

csSDK_int32 getFileVideo(void*, csSDK_int32, PPixHand, prRect*, csSDK_int32) {
    return enter(HostCall::GetFileVideo).value_or(kSuiteNotImplemented);
}

csSDK_int32 getFileAudioSecond(void*, csSDK_int32, char*, csSDK_int16, csSDK_int32, csSDK_int16) {
    return enter(HostCall::GetFileAudioSecond).value_or(kSuiteNotImplemented);
}

void* getPlugInResFile() {
    enter(HostCall::GetPlugInResFile);
    return nullptr;
}

csSDK_int32 getFileVideoBounds(void*, prRect*) {
    return enter(HostCall::GetFileVideoBounds).value_or(kSuiteNotImplemented);
}

SPBasicSuite* getSPBasicSuite() { return enter(HostCall::GetSPBasicSuite) ? nullptr : basicTable(); }

csSDK_int32 getFileExtString(csSDK_uint32, char*, csSDK_uint32) {
    return enter(HostCall::GetFileExtString).value_or(kSuiteNotImplemented);
}

// --- Class data -------------------------------------------------------------------------------------------------

csSDK_int32 setClassData(csSDK_uint32 classID, void*) {
    return enter(HostCall::SetClassData, classID).value_or(kSuiteNotImplemented);
}

void* getClassData(csSDK_uint32 classID) {
    enter(HostCall::GetClassData, classID);
    return nullptr;
}

}  // namespace

SPBasicSuite* basicTable() {
    static SPBasicSuite table = {acquireSuite, releaseSuite, isEqual, allocateBlock, freeBlock, reallocateBlock,
                                 undefined};
    return &table;
}

PlugMemoryFuncs* memoryTable() {
    static PlugMemoryFuncs table = {newPtr, setPtrSize, getPtrSize, disposePtr, newHandle, setHandleSize,
                                    getHandleSize, disposeHandle, newPtrClear, newHandleClear, lockHandle,
                                    unlockHandle};
    return &table;
}

piSuites* piSuitesTable() {
    static PlugUtilFuncs utilities = {getSettings, getSerialNumber, getFileTimebase, getFileVideo, getFileAudioSecond,
                                      getPlugInResFile, getFileVideoBounds, getSPBasicSuite, getFileExtString};
    static piSuites table = {kPiInterfaceVersion, memoryTable(), nullptr, nullptr, &utilities, nullptr};
    return &table;
}

imCallbackFuncs* callbackTable() {
    static ClassDataFuncs classData = {setClassData, getClassData};
    static imCallbackFuncs table = {&classData, 0, 0};
    return &table;
}

}  // namespace hostkit
