#include "AsyncClip.h"

#include <algorithm>
#include <utility>

namespace {

constexpr imFrameFormat kOverwritten = {-1, -1, 0xEEEEEEEE};

}  // namespace

void AsyncClip::fill(imSourceVideoRec& record, PrTime time, std::vector<imFrameFormat>& formats,
                     PPixHand* outFrame) const {
    record.inPrivateData = m_privateData;
    record.inFrameTime = time;
    record.inFrameFormats = formats.empty() ? nullptr : formats.data();
    record.inNumFrameFormats = static_cast<csSDK_int32>(formats.size());
    record.outFrame = outFrame;
}

void AsyncClip::expectUntouched(const hostkit::RecordStorage& record) {
    if (!record.changes().empty() || !record.guardsAreIntact()) {
        m_host.report("An asynchronous call changed its record.");
    }
}

csSDK_int32 AsyncClip::announce(PrTime time, const std::vector<imFrameFormat>& formats) {
    std::vector<imFrameFormat> accepted = formats;
    hostkit::HostRecord<aiAsyncRequest> record(m_host.profile().recordSizes().asyncRequest);
    record->inPrivateData = m_privateData;
    fill(record->inSourceRec, time, accepted, nullptr);
    record.remember();
    const csSDK_int32 result = call(aiInitiateAsyncRead, record.data());
    expectUntouched(record);
    std::fill(accepted.begin(), accepted.end(), kOverwritten);
    return result;
}

hostkit::FrameAnswer AsyncClip::collect(PrTime time, const std::vector<imFrameFormat>& formats) {
    std::vector<imFrameFormat> accepted = formats;
    PPixHand delivered = nullptr;
    hostkit::HostRecord<imSourceVideoRec> record(m_host.profile().recordSizes().sourceVideo);
    fill(*record, time, accepted, &delivered);
    record.remember();
    const csSDK_int32 result = call(aiGetFrame, record.data());
    expectUntouched(record);
    std::fill(accepted.begin(), accepted.end(), kOverwritten);
    if ((result == aiNoError) != m_host.frames().view(delivered).has_value()) {
        m_host.report("A collection returned both a frame and an error, or neither.");
    }
    return {result, hostkit::HostFrame(delivered)};
}

csSDK_int32 AsyncClip::close() {
    return m_privateData != nullptr ? call(aiClose, std::exchange(m_privateData, nullptr)) : aiNoError;
}
