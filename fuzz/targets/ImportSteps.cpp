// Steps of a run that are not calls about the clip itself: asynchronous frames, and all kinds of failures.
#include "targets/ImportRun.h"

#include "sdk/SdkImporterCodes.h"
#include "standin/Control.h"
#include "support/FaultyDisk.h"

namespace fuzz {

namespace {

using hostkit::HostCall;

// Calls whose failure leaks nothing of the host's.
constexpr HostCall kFailingCalls[] = {
    HostCall::AcquireSuite, HostCall::CreatePPix, HostCall::GetPixels, HostCall::GetRowBytes,
    HostCall::GetTicksPerSecond, HostCall::UninterleaveFrom8, HostCall::UninterleaveFrom16,
    HostCall::UninterleaveFrom24, HostCall::UninterleaveFrom32,
};

// The asynchronous importer may know the picture before the clip has described it: asks for the size known here.
std::vector<imFrameFormat> knownSize(std::vector<imFrameFormat> formats, csSDK_int32 width, csSDK_int32 height) {
    for (imFrameFormat& format : formats) {
        format.inFrameWidth = format.inFrameWidth == 0 ? width : format.inFrameWidth;
        format.inFrameHeight = format.inFrameHeight == 0 ? height : format.inFrameHeight;
    }
    return formats;
}

}  // namespace

void ImportRun::doAsyncStep(Step step, Script& script) {
    if (step == Step::AsyncCreate) {
        if (m_async == nullptr && m_parsesLeft-- > 0) {
            m_async = std::make_unique<hostkit::AsyncSession>(m_session, m_clip);
            expectResult("async create", m_async->create().result, {imNoErr, imBadFile, imOtherErr});
        }
        if (m_async != nullptr && !m_async->isOpen()) {
            m_async.reset();
        }
        return;
    }
    if (m_async == nullptr) {
        return;
    }
    if (step == Step::Flush) {
        expectResult("flush", m_async->flush(), {aiNoError});
        return;
    }
    if (step == Step::AsyncClose) {
        expectResult("async close", m_async->close(), {aiNoError});
        m_async.reset();
        return;
    }
    if (!takesFrames() || m_framesLeft-- <= 0) {
        return;
    }
    const PrTime time = someTime(script);
    bool mayBeUnknown = false;
    const auto formats = knownSize(someFormats(script, mayBeUnknown), m_described.width, m_described.height);
    if (step == Step::Announce) {
        expectResult("announce", m_async->announce(time, formats).result, {aiNoError});
    } else {
        // Of several frames announced for one time the first is collected, whose format may have been unknown.
        expectResult("collect", m_async->get(time, formats).result, {aiNoError, aiUnknownError}, true);
    }
}

void ImportRun::doFaultStep(Step step, Script& script) {
    FaultyDisk& disk = FaultyDisk::instance();
    hostkit::FaultPlan& hostFaults = m_session.host().faults();
    switch (step) {
    case Step::CutFile: disk.cut(kFuzzedName, m_file.size() * script.next8() / 256); break;
    case Step::ReplaceFile: {
        const std::size_t size = m_file.size() * script.next8() / 255;
        Bytes bytes(m_file.begin(), m_file.begin() + static_cast<std::ptrdiff_t>(size));
        bytes.resize(m_file.size(), script.next8());
        disk.put(kFuzzedName, bytes);
        break;
    }
    case Step::ChangeFaults: disk.setFaults(readFaults(script, m_file.size())); break;
    case Step::FailHostCall: {
        const HostCall call = kFailingCalls[script.below(std::size(kFailingCalls))];
        hostFaults.fail(call, -1, 1 + static_cast<int>(script.below(4)), 1 + static_cast<int>(script.below(4)));
        m_hostFails = true;
        break;
    }
    case Step::ThrowFromHostCall: {
        const HostCall call = kFailingCalls[script.below(std::size(kFailingCalls))];
        hostFaults.throwFrom(call, "the host failed", 1 + static_cast<int>(script.below(4)));
        m_hostFails = true;
        break;
    }
    case Step::FailCodecCall: {
        // Not the library's init: its close would then undo another instance's init, which the plug-in cannot know.
        const std::uint32_t function = 1 + script.below(kStandinFunctionCount - 1);
        const std::uint32_t code = script.next8() % 2 != 0 ? 0x8000400B : 0x7FFFFFFF;
        standin_fail(function, 1 + script.below(6), 1 + script.below(3), code);
        break;
    }
    default: break;
    }
}

}  // namespace fuzz
