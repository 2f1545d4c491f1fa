#include "importhost/validate/checks/stage/Outcome.h"

#include "importhost/validate/checks/stage/Digest.h"
#include "importhost/validate/checks/stage/OpenClip.h"

namespace importhost::validate {

namespace {

template <class T>
std::uint64_t digestOfAll(const std::vector<T>& values) {
    return digestOf(values.data(), values.size() * sizeof(T));
}

std::uint64_t deliveredBy(const hostkit::HostFrame& frame) {
    const auto view = frame.view();
    if (!view) {
        return 0;
    }
    const auto format = static_cast<csSDK_uint32>(view->format);
    const std::vector<std::uint8_t> pixels = pixelsOf(frame);
    return Digest().add(&format, sizeof(format)).add(pixels.data(), pixels.size()).value();
}

}  // namespace

Outcome outcomeOf(const hostkit::FrameAnswer& answer) { return {answer.result, deliveredBy(answer.frame)}; }
Outcome outcomeOf(const hostkit::AsyncFrameAnswer& answer) { return {answer.result, deliveredBy(answer.frame)}; }

Outcome outcomeOf(const hostkit::Answer<imFileInfoRec8>& answer) {
    if (!hostkit::isDescribed(answer.result)) {
        return {answer.result};
    }
    imFileInfoRec8 info = *answer.record;
    info.privatedata = nullptr;
    info.prefs = nullptr;
    return {answer.result, digestOf(&info, sizeof(info))};
}

Outcome outcomeOf(const hostkit::AudioAnswer& answer) {
    Digest digest;
    for (const std::vector<float>& channel : answer.channels) {
        digest.add(channel.data(), channel.size() * sizeof(float));
    }
    return {answer.result, digest.value()};
}

Outcome outcomeOf(const hostkit::AnalysisAnswer& answer) { return {answer.result, digestOfAll(answer.buffer)}; }

Outcome outcomeOf(const hostkit::DataRateAnswer& answer) {
    return {answer.dataCall ? answer.dataCall->result : answer.sizeCall.result, digestOfAll(answer.samples)};
}

Outcome outcomeOf(const hostkit::LayoutAnswer& answer) { return {answer.result, digestOfAll(answer.labels)}; }

bool expectUsual(CheckRun& run, const std::string& what, const Outcome& found, const Outcome& usual) {
    return run.expectResult(what, found.result, usual.result) &&
           run.expect(found.digest == usual.digest, what + " is not what it was before");
}

}  // namespace importhost::validate
