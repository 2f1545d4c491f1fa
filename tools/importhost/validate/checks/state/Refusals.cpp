#include "importhost/validate/checks/state/Refusals.h"

#include <span>

namespace importhost::validate {

namespace {

using hostkit::DiskCall;
using hostkit::HostCall;

// Whatever they refuse, the plug-in has an answer for it.
std::span<const HostCall> hostCallsOf(Suffering call) {
    static constexpr HostCall kDescribing[] = {HostCall::AcquireSuite, HostCall::GetTicksPerSecond};
    static constexpr HostCall kShowing[] = {HostCall::CreatePPix, HostCall::GetPixels, HostCall::AcquireSuite};
    return call == Suffering::Showing ? std::span<const HostCall>(kShowing) : kDescribing;
}

std::span<const std::uint32_t> codecCallsOf(Suffering call) {
    static constexpr std::uint32_t kDescribing[] = {kStandinOpen, kStandinDecompressQuery};
    static constexpr std::uint32_t kShowing[] = {kStandinDecompressBegin, kStandinDecompress};
    return call == Suffering::Showing ? kShowing : kDescribing;
}

std::span<const DiskCall> diskCallsOf(Suffering call) {
    static constexpr DiskCall kOpening[] = {DiskCall::Open};
    static constexpr DiskCall kReading[] = {DiskCall::Seek, DiskCall::Read, DiskCall::Size};
    return call == Suffering::Opening ? std::span<const DiskCall>(kOpening) : kReading;
}

template <class T>
T oneOf(CheckRun& run, std::span<const T> choice) {
    return choice[run.below(choice.size())];
}

constexpr std::uint64_t kLatest = 12;       // the call that fails is the next one, or one of the next so many
constexpr int kMany = 1000;

}  // namespace

Refusals::Refusals(CheckRun& run, PlayedPlugin& plugin) : m_run(run), m_host(plugin.host()), m_disk(plugin.library()) {
    if (Codec::isControllable()) {
        m_codec.emplace(run);
    } else {
        run.note("the codec library at hand cannot be made to fail: only the host and the disk are");
    }
}

std::string Refusals::begin(Suffering call) {
    const bool needsDiskAlone = call == Suffering::Opening || call == Suffering::Sounding;
    switch (needsDiskAlone ? 2 : m_run.below(3)) {
        case 0: return refuseByHost(call);
        case 1: return m_codec ? refuseByCodec(call) : refuseByHost(call);
        default: return refuseByDisk(call);
    }
}

int Refusals::end() {
    int struck = m_disk.disturbed();
    m_host.faults().clear();
    m_disk.clear();
    if (m_codec) {
        const StandinCounters counters = m_codec->counters();
        for (const std::uint32_t failures : counters.failures) {
            struck += static_cast<int>(failures);
        }
        m_codec->reset();
    }
    return struck;
}

int Refusals::someCall() { return m_run.below(2) == 0 ? 1 : 1 + static_cast<int>(m_run.below(kLatest)); }

std::string Refusals::refuseByHost(Suffering suffering) {
    const HostCall call = oneOf(m_run, hostCallsOf(suffering));
    const int nth = someCall();
    m_host.faults().fail(call, -1, nth, m_run.below(2) == 0 ? 1 : kMany);
    return std::string(hostkit::callName(call)) + " fails from call " + std::to_string(nth);
}

std::string Refusals::refuseByCodec(Suffering suffering) {
    const std::uint32_t function = oneOf(m_run, codecCallsOf(suffering));
    const auto nth = static_cast<std::uint32_t>(someCall());
    m_codec->fail(function, nth, m_run.below(2) == 0 ? 1 : kMany);
    return std::string(codecFunctionName(function)) + " fails from call " + std::to_string(nth);
}

std::string Refusals::refuseByDisk(Suffering suffering) {
    const DiskCall call = oneOf(m_run, diskCallsOf(suffering));
    const int nth = someCall();
    m_disk.fail(call, nth, m_run.below(2) == 0 ? 1 : kMany);
    return std::string(hostkit::diskCallName(call)) + " fails from call " + std::to_string(nth);
}

}  // namespace importhost::validate
