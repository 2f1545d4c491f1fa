// A disk that fails: the system's file functions, as one plug-in sees them, fail or fall short on demand.
//
//   DiskFaults disk(plugin.library());
//   disk.fail(DiskCall::Read, 3);          // the third read from now on
//
// Only calls that the plug-in's own library makes are counted and touched, not the host's and not the codec's.
#pragma once

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/watch/ImportHook.h"

#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace hostkit {

enum class DiskCall { Open, Seek, Read, Size, Count };

// "read".
const char* diskCallName(DiskCall call);

class DiskFaults {
public:
    static constexpr int kForEver = -1;

    // The library stays loaded for longer, and none of its calls runs while this object is made or ends. One exists
    // at a time: throws std::logic_error. Throws std::runtime_error when the system refuses.
    explicit DiskFaults(const PluginLibrary& library);
    ~DiskFaults();
    DiskFaults(const DiskFaults&) = delete;
    DiskFaults& operator=(const DiskFaults&) = delete;

    // Whether the plug-in calls the system for this in a way that can be seen. One that reads through another library
    // does not.
    bool covers(DiskCall call) const;

    // --- Orders; safe on any thread ---

    // From the nth call on (1 is the next one), `times` calls fail with the system's error for a damaged device.
    // A new order for a function replaces the old one.
    void fail(DiskCall call, int nth = 1, int times = 1);

    // The same, but reads give only half of what is asked for, rounded down.
    void halveReads(int nth = 1, int times = 1);

    // Every file seems to end at this position at the latest: what lies behind cannot be read.
    void endFilesAt(std::int64_t position);

    // Takes all orders back and counts from zero.
    void clear();

    int calls(DiskCall call) const;         // since the last clear()
    std::uint64_t bytesRead() const;        // likewise, by reads that succeeded
    int disturbed() const;                  // calls that failed or fell short, likewise

    // --- For the functions that take the system's place ---

    bool onCall(DiskCall call);             // whether it is to fail; not for reads

    // What a read is to give: all that was asked for, less, or an error. `position` matters only where it is asked for.
    struct ReadFate {
        bool isError = false;
        std::uint64_t bytes = 0;
    };
    ReadFate onRead(std::uint64_t wanted, std::int64_t position);
    bool needsPosition() const;
    void onReadDone(std::uint64_t bytes);

private:
    struct Order {
        int callsBefore = 0;
        int times = 0;
        bool halves = false;
    };
    static constexpr std::size_t kCalls = static_cast<std::size_t>(DiskCall::Count);

    void order(DiskCall call, int nth, int times, bool halves);
    bool isDue(Order& order);

    std::vector<std::unique_ptr<ImportHook>> m_hooks;
    std::array<bool, kCalls> m_covered = {};
    mutable std::mutex m_mutex;
    std::array<Order, kCalls> m_orders;
    std::array<int, kCalls> m_calls = {};
    std::uint64_t m_bytesRead = 0;
    int m_disturbed = 0;
    std::optional<std::int64_t> m_end;
};

// Inner seam of the systems' halves: a function of the system, and what takes its place.
struct DiskFunction {
    DiskCall call = DiskCall::Open;
    const char* name = "";
    void* replacement = nullptr;
    void** original = nullptr;              // where the replacement looks for what it replaced
};
std::vector<DiskFunction> diskFunctions();

// The one that exists. Only replacements ask, and they are called only while there is one.
DiskFaults& currentDiskFaults();

}  // namespace hostkit
