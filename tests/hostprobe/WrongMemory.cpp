// Hosts whose memory functions or basic suite do not do what they say. Each is wrong for one size only, so that it
// raises one complaint.
#include "WrongCase.h"

using enum hostprobe::Sentence;

namespace {

char* latestBlock = nullptr;

template <auto SizeFunction, csSDK_int32 Size, csSDK_int32 Other>
Play otherSize() {
    return spoilt([](Host& host) {
        host.used.memory.*SizeFunction = [](auto block) {
            const csSDK_int32 size = (good().memory.*SizeFunction)(block);
            return size == Size ? Other : size;
        };
    });
}

}  // namespace

WrongCases wrongMemory() {
    return {
        // --- Blocks ---
        {"NoBlock", NoMemory, "newPtr returned no memory.", returning<nullptr>(&PlugMemoryFuncs::newPtr)},
        {"NoClearBlock", NoMemory, "newPtrClear returned no memory.",
         returning<nullptr>(&PlugMemoryFuncs::newPtrClear)},
        {"SameBlockTwice", MemoryShared, "newPtrClear returned memory that is in use.", spoilt([](Host& host) {
             host.used.memory.newPtr = [](csSDK_uint32 size) { return latestBlock = good().memory.newPtr(size); };
             host.used.memory.newPtrClear = [](csSDK_uint32) { return latestBlock; };
         })},
        {"SizeOffByOne", MemorySize, "getPtrSize returned 8 for 7 bytes.",
         otherSize<&PlugMemoryFuncs::getPtrSize, 7, 8>()},
        {"SizeRoundedUp", MemorySize, "getPtrSize returned 520 for 516 bytes.",
         otherSize<&PlugMemoryFuncs::getPtrSize, 516, 520>()},
        {"BlockThatDoesNotGrow", MemorySize, "getPtrSize after setPtrSize returned 7 for 3007 bytes.",
         spoilt([](Host& host) {
             host.used.memory.setPtrSize = [](PrMemoryPtr* block, csSDK_uint32 size) {
                 if (size != 3007) {
                     good().memory.setPtrSize(block, size);
                 }
             };
         })},
        {"BlockThatForgets", ContentLost, "setPtrSize lost the content.", spoilt([](Host& host) {
             host.used.memory.setPtrSize = [](PrMemoryPtr* block, csSDK_uint32 size) {
                 good().memory.setPtrSize(block, size);
                 **block = 0;
             };
         })},
        {"BlockThatIsNotClear", MemoryNotClear, "newPtrClear returned memory that is not zero.",
         spoilt([](Host& host) { host.used.memory.newPtrClear = host.used.memory.newPtr; })},

        // --- Handles ---
        {"NoHandle", NoMemory, "newHandle returned no memory.", returning<nullptr>(&PlugMemoryFuncs::newHandle)},
        {"NoClearHandle", NoMemory, "newHandleClear returned no memory.",
         returning<nullptr>(&PlugMemoryFuncs::newHandleClear)},
        {"HandleThatIsNotClear", MemoryNotClear, "newHandleClear returned memory that is not zero.",
         spoilt([](Host& host) { host.used.memory.newHandleClear = host.used.memory.newHandle; })},
        {"HandleSizeOffByOne", MemorySize, "getHandleSize returned 6 for 7 bytes.",
         otherSize<&PlugMemoryFuncs::getHandleSize, 7, 6>()},
        {"HandleThatDoesNotGrow", MemorySize, "getHandleSize after setHandleSize returned 7 for 3007 bytes.",
         spoilt([](Host& host) {
             host.used.memory.setHandleSize = [](PrMemoryHandle handle, csSDK_uint32 size) {
                 return size == 3007 ? csSDK_int16{0} : good().memory.setHandleSize(handle, size);
             };
         })},
        {"HandleThatForgets", ContentLost, "setHandleSize lost the content.",
         changed(&PlugMemoryFuncs::setHandleSize, [](PrMemoryHandle handle, csSDK_uint32) { **handle = 0; })},

        // --- The basic suite ---
        {"NoBasicBlock", NoMemory, "AllocateBlock returned no memory.", spoilt([](Host& host) {
             host.used.basic.AllocateBlock = [](csSDK_size_t, void** block) {
                 *block = nullptr;
                 return kSPNoError;
             };
         })},
        {"NoGrownBlock", NoMemory, "ReallocateBlock returned no memory.", spoilt([](Host& host) {
             host.used.basic.ReallocateBlock = [](void* block, csSDK_size_t, void** grown) {
                 *grown = nullptr;
                 return good().basic.FreeBlock(block);
             };
         })},
        {"BasicBlockThatForgets", ContentLost, "ReallocateBlock lost the content.",
         changed(&SPBasicSuite::ReallocateBlock,
                 [](void*, csSDK_size_t, void** grown) { *static_cast<char*>(*grown) = 0; })},
        {"NothingIsEqual", IsEqual, "IsEqual returned 0 for equal texts.", returning<0>(&SPBasicSuite::IsEqual)},
        {"EverythingIsEqual", IsEqual, "IsEqual returned 1 for different texts.", returning<1>(&SPBasicSuite::IsEqual)},
    };
}
