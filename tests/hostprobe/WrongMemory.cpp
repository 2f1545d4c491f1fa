// Hosts whose memory functions or basic suite do not do what they say. Each is wrong for one size only, so that one
// complaint comes of it.
#include "WrongCase.h"

#include <cstring>

using enum hostprobe::Sentence;
using Host = PlayedHost;

namespace {

const HostTables& good() { return Host::current().good; }

template <class Spoil>
auto spoilt(Spoil spoil) {
    return [spoil](Host& host) {
        spoil(host.used);
        host.play();
    };
}

char* latestBlock = nullptr;

WrongCases wrongBlocks() {
    return {
        {"NoBlock", NoMemory, "newPtr gave no memory.",
         spoilt([](HostTables& used) { used.memory.newPtr = [](csSDK_uint32) -> char* { return nullptr; }; })},
        {"NoClearBlock", NoMemory, "newPtrClear gave no memory.",
         spoilt([](HostTables& used) { used.memory.newPtrClear = [](csSDK_uint32) -> char* { return nullptr; }; })},
        {"SameBlockTwice", MemoryShared, "newPtrClear gave memory that is in use.", spoilt([](HostTables& used) {
             used.memory.newPtr = [](csSDK_uint32 size) { return latestBlock = good().memory.newPtr(size); };
             used.memory.newPtrClear = [](csSDK_uint32) { return latestBlock; };
         })},
        {"SizeOffByOne", MemorySize, "getPtrSize gave 8 for 7 bytes.", spoilt([](HostTables& used) {
             used.memory.getPtrSize = [](char* block) {
                 const csSDK_int32 size = good().memory.getPtrSize(block);
                 return size == 7 ? 8 : size;
             };
         })},
        {"SizeRoundedUp", MemorySize, "getPtrSize gave 520 for 516 bytes.", spoilt([](HostTables& used) {
             used.memory.getPtrSize = [](char* block) {
                 const csSDK_int32 size = good().memory.getPtrSize(block);
                 return size == 516 ? 520 : size;
             };
         })},
        {"BlockThatDoesNotGrow", MemorySize, "getPtrSize after setPtrSize gave 7 for 3007 bytes.",
         spoilt([](HostTables& used) {
             used.memory.setPtrSize = [](PrMemoryPtr* block, csSDK_uint32 size) {
                 if (size != 3007) {
                     good().memory.setPtrSize(block, size);
                 }
             };
         })},
        {"BlockThatForgets", ContentLost, "setPtrSize lost the content.", spoilt([](HostTables& used) {
             used.memory.setPtrSize = [](PrMemoryPtr* block, csSDK_uint32 size) {
                 good().memory.setPtrSize(block, size);
                 **block = 0;
             };
         })},
        {"BlockThatIsNotClear", MemoryNotClear, "newPtrClear gave memory that is not zero.",
         spoilt([](HostTables& used) { used.memory.newPtrClear = used.memory.newPtr; })},
    };
}

WrongCases wrongHandles() {
    return {
        {"NoHandle", NoMemory, "newHandle gave no memory.",
         spoilt([](HostTables& used) { used.memory.newHandle = [](csSDK_uint32) -> char** { return nullptr; }; })},
        {"NoClearHandle", NoMemory, "newHandleClear gave no memory.", spoilt([](HostTables& used) {
             used.memory.newHandleClear = [](csSDK_uint32) -> char** { return nullptr; };
         })},
        {"HandleThatIsNotClear", MemoryNotClear, "newHandleClear gave memory that is not zero.",
         spoilt([](HostTables& used) { used.memory.newHandleClear = used.memory.newHandle; })},
        {"HandleSizeOffByOne", MemorySize, "getHandleSize gave 6 for 7 bytes.", spoilt([](HostTables& used) {
             used.memory.getHandleSize = [](PrMemoryHandle handle) {
                 const csSDK_int32 size = good().memory.getHandleSize(handle);
                 return size == 7 ? 6 : size;
             };
         })},
        {"HandleThatDoesNotGrow", MemorySize, "getHandleSize after setHandleSize gave 7 for 3007 bytes.",
         spoilt([](HostTables& used) {
             used.memory.setHandleSize = [](PrMemoryHandle handle, csSDK_uint32 size) {
                 return size == 3007 ? csSDK_int16{0} : good().memory.setHandleSize(handle, size);
             };
         })},
        {"HandleThatForgets", ContentLost, "setHandleSize lost the content.", spoilt([](HostTables& used) {
             used.memory.setHandleSize = [](PrMemoryHandle handle, csSDK_uint32 size) {
                 const csSDK_int16 result = good().memory.setHandleSize(handle, size);
                 **handle = 0;
                 return result;
             };
         })},
        {"HandleThatCannotGrow", CallFailed, "setHandleSize failed with -1.", spoilt([](HostTables& used) {
             used.memory.setHandleSize = [](PrMemoryHandle, csSDK_uint32) { return csSDK_int16{-1}; };
         })},
    };
}

WrongCases wrongBasicSuite() {
    return {
        {"NoBasicBlock", NoMemory, "AllocateBlock gave no memory.", spoilt([](HostTables& used) {
             used.basic.AllocateBlock = [](csSDK_size_t, void** block) {
                 *block = nullptr;
                 return kSPNoError;
             };
         })},
        {"AllocateBlockFails", CallFailed, "AllocateBlock failed with 1.", spoilt([](HostTables& used) {
             used.basic.AllocateBlock = [](csSDK_size_t, void**) { return SPErr{1}; };
         })},
        {"ReallocateBlockFails", CallFailed, "ReallocateBlock failed with 1.", spoilt([](HostTables& used) {
             used.basic.ReallocateBlock = [](void*, csSDK_size_t, void**) { return SPErr{1}; };
         })},
        {"NoGrownBlock", NoMemory, "ReallocateBlock gave no memory.", spoilt([](HostTables& used) {
             used.basic.ReallocateBlock = [](void* block, csSDK_size_t, void** grown) {
                 *grown = nullptr;
                 return good().basic.FreeBlock(block);
             };
         })},
        {"BasicBlockThatForgets", ContentLost, "ReallocateBlock lost the content.", spoilt([](HostTables& used) {
             used.basic.ReallocateBlock = [](void* block, csSDK_size_t size, void** grown) {
                 const SPErr error = good().basic.ReallocateBlock(block, size, grown);
                 *static_cast<char*>(*grown) = 0;
                 return error;
             };
         })},
        {"FreeBlockFails", CallFailed, "FreeBlock failed with 1.", spoilt([](HostTables& used) {
             used.basic.FreeBlock = [](void* block) { return good().basic.FreeBlock(block) + 1; };
         })},
        {"NothingIsEqual", IsEqual, "IsEqual gave 0 for equal texts.", spoilt([](HostTables& used) {
             used.basic.IsEqual = [](const char*, const char*) { return SPBoolean{0}; };
         })},
        {"EverythingIsEqual", IsEqual, "IsEqual gave 1 for different texts.", spoilt([](HostTables& used) {
             used.basic.IsEqual = [](const char*, const char*) { return SPBoolean{1}; };
         })},
    };
}

}  // namespace

WrongCases wrongMemory() {
    WrongCases cases = wrongBlocks();
    for (WrongCases& more : std::vector<WrongCases>{wrongHandles(), wrongBasicSuite()}) {
        cases.insert(cases.end(), more.begin(), more.end());
    }
    return cases;
}
