// Every function that the host lends to a plug-in, what is remembered of its calls, and how a call is made to fail.
#pragma once

#include "sdk/SdkTypes.h"

#include <array>
#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace hostkit {

enum class HostCall {
    AcquireSuite, ReleaseSuite, IsEqual, AllocateBlock, FreeBlock, ReallocateBlock, Undefined,
    NewPtr, SetPtrSize, GetPtrSize, DisposePtr, NewHandle, SetHandleSize, GetHandleSize, DisposeHandle,
    NewPtrClear, NewHandleClear, LockHandle, UnlockHandle,
    GetSettings, GetSerialNumber, GetFileTimebase, GetFileVideo, GetFileAudioSecond, GetPlugInResFile,
    GetFileVideoBounds, GetSPBasicSuite, GetFileExtString, SetClassData, GetClassData,
    CreatePPix, ClonePPix,
    DisposePPix, GetPixels, GetBounds, GetRowBytes, GetPixelAspectRatio, GetPixelFormat, GetUniqueKey,
    GetUniqueKeySize, GetRenderTime,
    PPixCacheCall,
    GetTicksPerSecond, GetTicksPerVideoFrame, GetTicksPerAudioSample,
    FormatIsCompressed, FormatHasAlpha, FormatIsOriginTopLeft, GetSizeForPixelBuffer, ScaleConvert,
    CompressDV100720p, StampDVFrameAspect,
    InterleaveTo8, InterleaveTo16, InterleaveTo24, InterleaveTo32,
    UninterleaveFrom8, UninterleaveFrom16, UninterleaveFrom24, UninterleaveFrom32,
    SetEventString,
    Count
};

// "PPixCreator.CreatePPix".
const char* callName(HostCall call);

// Counts every call and, when asked to, keeps a text line for each. Safe on any thread.
class CallLog {
public:
    void keepLines(bool keep) { m_keep = keep; }        // off at first: benchmarks should not pay for it
    std::vector<std::string> lines() const;             // "PPixCreator.CreatePPix(access 1, bgra, 64 x 48)"

    // Hands every such line to `sink` before its call does anything, and with them lines about the calls that the
    // host makes: what happened last is known even if the process ends in it. The sink may be called from several
    // threads at once; change it only while no call runs. Null ends it.
    void sendLines(std::function<void(const std::string&)> sink) { m_sink = std::move(sink); }

    bool wantsLines() const { return m_keep || m_sink; }        // else nobody need make up texts of arguments
    bool isFollowed() const { return static_cast<bool>(m_sink); }

    // A line about a call that the host makes.
    void tell(const std::string& line) const;
    int count(HostCall call) const { return m_counts[static_cast<std::size_t>(call)]; }
    void clear();

    void add(HostCall call, const std::string& arguments);

private:
    std::atomic<bool> m_keep = false;
    std::array<std::atomic<int>, static_cast<std::size_t>(HostCall::Count)> m_counts = {};
    mutable std::mutex m_mutex;
    std::vector<std::string> m_lines;
    std::function<void(const std::string&)> m_sink;
};

// Failures to come. `nth` counts the calls of that function from the moment of asking: 1 is the next one.
// A function without a result code (newPtr, newHandle ...) gives null or 0 instead. Safe on any thread.
class FaultPlan {
public:
    static constexpr int kForEver = -1;

    // From the nth call on, `times` calls return `code` and do nothing else.
    void fail(HostCall call, csSDK_int32 code = -1, int nth = 1, int times = 1);

    // The same, but the call throws std::runtime_error(message) into the plug-in.
    void throwFrom(HostCall call, const std::string& message, int nth = 1, int times = 1);

    // Called inside every host call, on the plug-in's thread, before anything else happens. Null ends it.
    void observe(std::function<void(HostCall)> observer);

    void clear();

    // The forced result of this call, if any. Throws when a throwing failure is due.
    std::optional<csSDK_int32> take(HostCall call);

private:
    struct Fault {
        HostCall call;
        int callsBefore;
        int times;
        csSDK_int32 code;
        std::optional<std::string> message;
    };
    void add(Fault fault);
    std::optional<Fault> due(HostCall call);

    std::atomic<bool> m_quiet = true;                   // nothing planned: no lock is taken
    std::mutex m_mutex;
    std::vector<Fault> m_faults;
    std::function<void(HostCall)> m_observer;
};

}  // namespace hostkit
