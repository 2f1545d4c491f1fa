#include "hostkit/watch/CallSpy.h"

#include <chrono>
#include <stdexcept>
#include <string>

namespace hostkit {

namespace {

std::atomic<CallSpy*> current = nullptr;

using DecodeFunction = std::uint32_t (*)(std::uint32_t handle, const void* frame, std::uint32_t size,
                                         const void* planes);

void* trueDecode = nullptr;

std::uint32_t spiedDecode(std::uint32_t handle, const void* frame, std::uint32_t size, const void* planes) {
    SpiedCall& decodes = currentCallSpy().decodes();
    if (decodes.isLeftOut()) {
        decodes.add(frame, size, 0);
        return 0;
    }
    const std::uint64_t start = nanosecondsNow();
    const std::uint32_t code = reinterpret_cast<DecodeFunction>(trueDecode)(handle, frame, size, planes);
    decodes.add(frame, size, nanosecondsNow() - start);
    return code;
}

std::unique_ptr<ImportHook> hook(const PluginLibrary& library, const char* name, void* replacement, void** original) {
    auto made = std::make_unique<ImportHook>(library.handle(), name, replacement);
    if (!made->holds()) {
        throw std::runtime_error("The plug-in does not import '" + std::string(name) + "'.");
    }
    *original = made->original();
    return made;
}

}  // namespace

void SpiedCall::clear() {
    m_count = 0;
    m_nanoseconds = 0;
    m_bytes = 0;
    m_lastBuffer = nullptr;
    m_lastSize = 0;
}

void SpiedCall::add(const void* buffer, std::uint64_t size, std::uint64_t nanoseconds) {
    ++m_count;
    m_nanoseconds += nanoseconds;
    m_bytes += size;
    m_lastBuffer = buffer;
    m_lastSize = size;
}

CallSpy::CallSpy(const PluginLibrary& library) {
    CallSpy* none = nullptr;
    if (!current.compare_exchange_strong(none, this)) {
        throw std::logic_error("Another plug-in's calls are watched already.");
    }
    try {
        const SpiedRead read = spiedRead();
        m_readHook = hook(library, read.name, read.replacement, read.original);
        m_decodeHook = hook(library, "quorvane_decompress", reinterpret_cast<void*>(&spiedDecode), &trueDecode);
    } catch (...) {
        current = nullptr;
        throw;
    }
}

CallSpy::~CallSpy() {
    m_decodeHook.reset();
    m_readHook.reset();
    current = nullptr;
}

void CallSpy::clear() {
    m_reads.clear();
    m_decodes.clear();
}

CallSpy& currentCallSpy() { return *current.load(); }

std::uint64_t nanosecondsNow() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
}

}  // namespace hostkit
