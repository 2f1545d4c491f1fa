// The host's frame buffers (PPix): created, looked at and disposed through suites only.
// Pixels start as 0xCD, so that one that was not delivered shows; guard bytes surround them; they are 16-byte aligned.
// Safe on any thread. Misuse is remembered as a sentence, never thrown.
#pragma once

#include "hostkit/host/GuardedBlock.h"
#include "hostkit/host/HostProfile.h"
#include "hostkit/host/PixelFormatTable.h"

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace hostkit {

// Results of suites: negative means failure.
inline constexpr prSuiteError kSuiteNoError = 0;
inline constexpr prSuiteError kSuiteFail = static_cast<prSuiteError>(0x80000000u);
inline constexpr prSuiteError kSuiteInvalidParms = static_cast<prSuiteError>(0x80000001u);
inline constexpr prSuiteError kSuiteOutOfMemory = static_cast<prSuiteError>(0x80000002u);
inline constexpr prSuiteError kSuiteInvalidCall = static_cast<prSuiteError>(0x80000003u);
inline constexpr prSuiteError kSuiteNotImplemented = static_cast<prSuiteError>(0x80000004u);

// What a frame buffer looks like from outside; `pixels` belongs to the frame and ends with it.
struct FrameView {
    PrPixelFormat format = PrPixelFormat_Invalid;
    PrPPixBufferAccess access = PrPPixBufferAccess_ReadOnly;
    prRect bounds;
    csSDK_int32 rowBytes = 0;
    std::uint8_t* pixels = nullptr;
    std::size_t size = 0;

    csSDK_int32 width() const { return bounds.right - bounds.left; }
    csSDK_int32 height() const { return bounds.bottom - bounds.top; }
};

class FrameStore {
public:
    FrameStore(RowBytesPolicy policy, std::function<void(std::string)> report);
    ~FrameStore();

    // Null, and a negative result, when the format has no size or the rectangle no area.
    prSuiteError create(PPixHand& out, PrPPixBufferAccess access, PrPixelFormat format, const prRect& bounds);
    prSuiteError clone(PPixHand source, PPixHand& out, PrPPixBufferAccess access);
    prSuiteError dispose(PPixHand frame);

    // Nothing for a handle that is not alive.
    std::optional<FrameView> view(PPixHand frame) const;
    std::optional<csSDK_int64> serialNumber(PPixHand frame) const;      // never given twice

    // What the pixels of new frames start as, in place of 0xCD. A byte that kept two different ones was not delivered.
    void fillWith(std::uint8_t fill) { m_fill = fill; }

    int created() const;
    int disposed() const;
    int alive() const;
    std::vector<std::string> problems() const;          // frames never disposed, damaged guards

private:
    struct Frame;

    mutable std::mutex m_mutex;
    RowBytesPolicy m_policy;
    std::atomic<std::uint8_t> m_fill = 0xCD;
    std::function<void(std::string)> m_report;
    std::map<PPixHand, std::unique_ptr<Frame>> m_frames;
    int m_created = 0;
    int m_disposed = 0;
};

}  // namespace hostkit
