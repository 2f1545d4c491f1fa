#include "hostkit/host/HostCall.h"

#include <stdexcept>

namespace hostkit {

namespace {

// In the order of the enumeration.
constexpr const char* kNames[] = {
    "Basic.AcquireSuite", "Basic.ReleaseSuite", "Basic.IsEqual", "Basic.AllocateBlock", "Basic.FreeBlock",
    "Basic.ReallocateBlock", "Basic.Undefined",
    "Memory.newPtr", "Memory.setPtrSize", "Memory.getPtrSize", "Memory.disposePtr", "Memory.newHandle",
    "Memory.setHandleSize", "Memory.getHandleSize", "Memory.disposeHandle", "Memory.newPtrClear",
    "Memory.newHandleClear", "Memory.lockHandle", "Memory.unlockHandle",
    "Utility.getSettings", "Utility.getSerialNumber", "Utility.getFileTimebase", "Utility.getFileVideo",
    "Utility.getFileAudioSecond", "Utility.getPlugInResFile", "Utility.getFileVideoBounds",
    "Utility.getSPBasicSuite", "Utility.getFileExtString", "ClassData.setClassData", "ClassData.getClassData",
    "PPixCreator.CreatePPix", "PPixCreator.ClonePPix",
    "PPix.Dispose", "PPix.GetPixels", "PPix.GetBounds", "PPix.GetRowBytes", "PPix.GetPixelAspectRatio",
    "PPix.GetPixelFormat", "PPix.GetUniqueKey", "PPix.GetUniqueKeySize", "PPix.GetRenderTime",
    "PPixCache.call",
    "Time.GetTicksPerSecond", "Time.GetTicksPerVideoFrame", "Time.GetTicksPerAudioSample",
    "ImageProcessing.FormatIsCompressed", "ImageProcessing.FormatHasAlpha", "ImageProcessing.FormatIsOriginTopLeft",
    "ImageProcessing.GetSizeForPixelBuffer", "ImageProcessing.ScaleConvert", "ImageProcessing.CompressDV100720p",
    "ImageProcessing.StampDVFrameAspect",
    "Audio.ConvertAndInterleaveTo8BitInteger", "Audio.ConvertAndInterleaveTo16BitInteger",
    "Audio.ConvertAndInterleaveTo24BitInteger", "Audio.ConvertAndInterleaveTo32BitInteger",
    "Audio.UninterleaveAndConvertFrom8BitInteger", "Audio.UninterleaveAndConvertFrom16BitInteger",
    "Audio.UninterleaveAndConvertFrom24BitInteger", "Audio.UninterleaveAndConvertFrom32BitInteger",
    "Error.SetEventStringUnicode",
};
static_assert(std::size(kNames) == static_cast<std::size_t>(HostCall::Count), "one name per call");

}  // namespace

const char* callName(HostCall call) { return kNames[static_cast<std::size_t>(call)]; }

std::vector<std::string> CallLog::lines() const {
    const std::lock_guard lock(m_mutex);
    return m_lines;
}

void CallLog::clear() {
    const std::lock_guard lock(m_mutex);
    m_lines.clear();
    for (auto& count : m_counts) {
        count = 0;
    }
}

void CallLog::add(HostCall call, const std::string& arguments) {
    ++m_counts[static_cast<std::size_t>(call)];
    if (!wantsLines()) {
        return;
    }
    const std::string line = std::string(callName(call)) + "(" + arguments + ")";
    tell("    " + line);
    if (m_keep) {
        const std::lock_guard lock(m_mutex);
        m_lines.push_back(line);
    }
}

void CallLog::tell(const std::string& line) const {
    if (m_sink) {
        m_sink(line);
    }
}

void FaultPlan::fail(HostCall call, csSDK_int32 code, int nth, int times) {
    add({call, nth - 1, times, code, std::nullopt});
}

void FaultPlan::throwFrom(HostCall call, const std::string& message, int nth, int times) {
    add({call, nth - 1, times, 0, message});
}

void FaultPlan::add(Fault fault) {
    if (fault.callsBefore < 0 || fault.times == 0) {
        throw std::invalid_argument("A failure that can never happen was planned.");
    }
    const std::lock_guard lock(m_mutex);
    m_faults.push_back(std::move(fault));
    m_quiet = false;
}

void FaultPlan::observe(std::function<void(HostCall)> observer) {
    const std::lock_guard lock(m_mutex);
    m_observer = std::move(observer);
    m_quiet = m_faults.empty() && !m_observer;
}

void FaultPlan::clear() {
    const std::lock_guard lock(m_mutex);
    m_faults.clear();
    m_observer = nullptr;
    m_quiet = true;
}

std::optional<csSDK_int32> FaultPlan::take(HostCall call) {
    if (m_quiet) {
        return std::nullopt;
    }
    std::function<void(HostCall)> observer;
    {
        const std::lock_guard lock(m_mutex);
        observer = m_observer;
    }
    if (observer) {
        observer(call);         // without the lock: it may block the plug-in's thread on purpose
    }
    const std::optional<Fault> fault = due(call);
    if (fault && fault->message) {
        throw std::runtime_error(*fault->message);
    }
    return fault ? std::optional(fault->code) : std::nullopt;
}

std::optional<FaultPlan::Fault> FaultPlan::due(HostCall call) {
    const std::lock_guard lock(m_mutex);
    std::optional<Fault> found;
    for (Fault& fault : m_faults) {
        if (fault.call != call) {
            continue;
        }
        if (fault.callsBefore > 0) {
            --fault.callsBefore;
        } else if (!found && fault.times != 0) {
            found = fault;
            fault.times -= fault.times > 0 ? 1 : 0;
        }
    }
    return found;
}

}  // namespace hostkit
