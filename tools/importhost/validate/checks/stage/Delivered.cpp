#include "importhost/validate/checks/stage/Delivered.h"

#include "importhost/validate/checks/stage/Digest.h"
#include "importhost/validate/checks/stage/OpenClip.h"

namespace importhost::validate {

std::uint64_t delivered(const hostkit::HostFrame& frame) {
    const auto view = frame.view();
    if (!view) {
        return 0;
    }
    const auto format = static_cast<csSDK_uint32>(view->format);
    const std::vector<std::uint8_t> pixels = pixelsOf(frame);
    return Digest().add(&format, sizeof(format)).add(pixels.data(), pixels.size()).value();
}

std::uint64_t delivered(const hostkit::Answer<imFileInfoRec8>& description) {
    if (!hostkit::isDescribed(description.result)) {
        return 0;
    }
    imFileInfoRec8 info = *description.record.get();
    info.privatedata = nullptr;
    info.prefs = nullptr;
    return digestOf(&info, sizeof(info));
}

std::uint64_t delivered(const hostkit::AudioAnswer& sound) {
    Digest digest;
    for (const std::vector<float>& channel : sound.channels) {
        digest.add(channel.data(), channel.size() * sizeof(float));
    }
    return digest.value();
}

std::uint64_t delivered(const hostkit::AnalysisAnswer& analysis) {
    return digestOf(analysis.buffer.data(), analysis.buffer.size());
}

std::uint64_t delivered(const hostkit::DataRateAnswer& rates) {
    return digestOf(rates.samples.data(), rates.samples.size() * sizeof(imDataSample));
}

std::uint64_t delivered(const hostkit::LayoutAnswer& layout) {
    return digestOf(layout.labels.data(), layout.labels.size() * sizeof(csSDK_int32));
}

std::uint64_t delivered(std::span<const PrPixelFormat> formats) {
    return digestOf(formats.data(), formats.size_bytes());
}

csSDK_int32 resultOf(const hostkit::DataRateAnswer& rates) {
    return rates.dataCall ? rates.dataCall->result : rates.sizeCall.result;
}

}  // namespace importhost::validate
