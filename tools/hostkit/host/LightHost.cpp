#include "hostkit/host/LightHost.h"

#include "hostkit/host/HostTables.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace hostkit {

namespace {

std::atomic<LightHost*> current = nullptr;

// --- Frames -----------------------------------------------------------------------------------------------------

prSuiteError createPPix(PPixHand* out, PrPPixBufferAccess, PrPixelFormat, const prRect* bounds) {
    *out = current.load()->lend(*bounds);
    return *out != nullptr ? kSuiteNoError : kSuiteFail;
}

prSuiteError dispose(PPixHand frame) {
    LightHost::dispose(frame);
    return kSuiteNoError;
}

prSuiteError getPixels(PPixHand frame, PrPPixBufferAccess, char** outPixels) {
    *outPixels = current.load()->pixelsOf(frame);
    return kSuiteNoError;
}

prSuiteError getRowBytes(PPixHand frame, csSDK_int32* outRowBytes) {
    *outRowBytes = current.load()->rowBytesOf(frame);
    return kSuiteNoError;
}

// --- Sound ------------------------------------------------------------------------------------------------------

template <class Sample>
prSuiteError convertNothing(const Sample*, float**, csSDK_uint32, csSDK_uint32) {
    return kSuiteNoError;
}

// --- The basic suite --------------------------------------------------------------------------------------------

// The light table of a suite; null for one that stays the host's.
const void* lightTable(std::string_view name) {
    static const PrSDKPPixCreatorSuite creator = {createPPix, framesCreatorTable()->ClonePPix};
    static const PrSDKPPixSuite frames = [] {
        PrSDKPPixSuite table = *framesTable();
        table.Dispose = dispose;
        table.GetPixels = getPixels;
        table.GetRowBytes = getRowBytes;
        return table;
    }();
    static const PrSDKAudioSuite audio = [] {
        PrSDKAudioSuite table = *audioTable();
        table.UninterleaveAndConvertFrom8BitInteger = convertNothing<char>;
        table.UninterleaveAndConvertFrom16BitInteger = convertNothing<csSDK_int16>;
        table.UninterleaveAndConvertFrom24BitInteger = convertNothing<char>;
        table.UninterleaveAndConvertFrom32BitInteger = convertNothing<csSDK_int32>;
        return table;
    }();
    if (name == kPrSDKPPixCreatorSuite) {
        return &creator;
    }
    if (name == kPrSDKPPixSuite) {
        return &frames;
    }
    return name == kPrSDKAudioSuite ? &audio : nullptr;
}

SPErr acquireSuite(const char* name, csSDK_int32 version, const void** suite) {
    const SPErr result = basicTable()->AcquireSuite(name, version, suite);
    if (const void* light = lightTable(name); light != nullptr && result == kSPNoError) {
        *suite = light;
    }
    return result;
}

SPBasicSuite* lightBasicSuite() {
    static SPBasicSuite table = [] {
        SPBasicSuite basic = *basicTable();
        basic.AcquireSuite = acquireSuite;
        return basic;
    }();
    return &table;
}

}  // namespace

LightHost::LightHost(Host& host, std::size_t frameBytes)
    : m_host(host),
      m_suitesBefore(host.stdParms()->piSuites),
      m_utilities(*m_suitesBefore->utilFuncs),
      m_suites(*m_suitesBefore),
      m_frameBytes(frameBytes) {
    LightHost* none = nullptr;
    if (!current.compare_exchange_strong(none, this)) {
        throw std::logic_error("A host cannot be made light twice.");
    }
    m_utilities.getSPBasicSuite = lightBasicSuite;
    m_suites.utilFuncs = &m_utilities;
    m_host.stdParms()->piSuites = &m_suites;
}

LightHost::~LightHost() {
    m_host.stdParms()->piSuites = m_suitesBefore;
    current = nullptr;
}

PPixHand LightHost::lend(const prRect& bounds) {
    const csSDK_int32 rows = bounds.bottom - bounds.top;
    for (Frame& frame : m_frames) {
        if (!frame.isOut.load(std::memory_order_relaxed) && !frame.isOut.exchange(true, std::memory_order_acquire)) {
            if (frame.pixels == nullptr) {
                frame.pixels = std::make_unique<char[]>(m_frameBytes);
            }
            frame.rowBytes = rows > 0 ? static_cast<csSDK_int32>(m_frameBytes / static_cast<std::size_t>(rows)) : 0;
            return reinterpret_cast<PPixHand>(&frame);
        }
    }
    return nullptr;
}

char* LightHost::pixelsOf(PPixHand frame) { return frameOf(frame).pixels.get(); }

const char* LightHost::pixels(PPixHand frame) const { return frameOf(frame).pixels.get(); }

csSDK_int32 LightHost::rowBytesOf(PPixHand frame) const { return frameOf(frame).rowBytes; }

void LightHost::dispose(PPixHand frame) {
    if (frame != nullptr) {
        frameOf(frame).isOut.store(false, std::memory_order_release);
    }
}

std::size_t LightHost::framesOut() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(m_frames, [](const Frame& frame) { return frame.isOut.load(); }));
}

}  // namespace hostkit
