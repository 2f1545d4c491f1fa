#include "hostkit/sessions/AsyncSession.h"

#include "hostkit/sessions/CallText.h"

#include <stdexcept>
#include <utility>

namespace hostkit {

namespace {

constexpr unsigned char kOverwritten = 0xEE;

// Through a volatile pointer, or the compiler would leave out what nobody reads any more - but for a plug-in that
// kept the host's pointer.
void overwrite(std::vector<imFrameFormat>& formats) {
    auto* bytes = reinterpret_cast<volatile unsigned char*>(formats.data());
    for (std::size_t i = 0; i < formats.size() * sizeof(imFrameFormat); ++i) {
        bytes[i] = kOverwritten;
    }
}

std::string_view asyncResultName(csSDK_int32 result) {
    switch (result) {
        case aiNoError: return "aiNoError";
        case aiUnsupported: return "aiUnsupported";
        case aiUnknownError: return "aiUnknownError";
        case aiFrameNotFound: return "aiFrameNotFound";
        case 99: return "malUnknownError";
        case kEscapedException: return "exception";
        default: return "unknown";
    }
}

}  // namespace

std::string asyncResultText(csSDK_int32 result) {
    return std::string(asyncResultName(result)) + " (" + std::to_string(result) + ")";
}

AsyncSession::~AsyncSession() {
    if (isOpen()) {
        flush();
        close();
    }
}

Answer<imAsyncImporterCreationRec> AsyncSession::create() {
    if (isOpen()) {
        throw std::logic_error("An asynchronous importer is open already.");
    }
    HostRecord<imAsyncImporterCreationRec> record;
    record->inPrivateData = m_clip.privateData();
    auto answer = m_session.exchangeFirst(imCreateAsyncImporter, std::move(record));
    if (answer.result != imNoErr) {
        return answer;
    }
    if (!answer->outAsyncEntry || !answer->outAsyncPrivateData) {
        m_session.host().report("An asynchronous importer was promised, but its entry or its data is missing.");
        return answer;
    }
    m_entry = answer->outAsyncEntry;
    m_privateData = answer->outAsyncPrivateData;
    m_session.host().addAsyncImporters(1);
    return answer;
}

void AsyncSession::fill(imSourceVideoRec& record, PrTime time, std::vector<imFrameFormat>& formats,
                        PPixHand* outFrame) const {
    record.inPrivateData = m_privateData;
    record.inFrameTime = time;
    record.inFrameFormats = formats.empty() ? nullptr : formats.data();
    record.inNumFrameFormats = static_cast<csSDK_int32>(formats.size());
    record.outFrame = outFrame;
}

void AsyncSession::expectUntouched(const RecordStorage& record, csSDK_int32 selector) {
    const std::string call = "Asynchronous selector " + std::to_string(selector);
    if (!record.guardsAreIntact()) {
        m_session.host().report(call + " wrote outside its record of " + std::to_string(record.size()) + " bytes.");
    }
    if (const std::vector<ByteRange> written = record.changes(); !written.empty()) {
        m_session.host().report(call + " wrote to the host's record: " + describe(written) + ".");
    }
}

Answer<aiAsyncRequest> AsyncSession::request(csSDK_int32 selector, PrTime time, std::vector<imFrameFormat> formats) {
    Answer<aiAsyncRequest> answer{
        0, HostRecord<aiAsyncRequest>(m_session.host().profile().recordSizes().asyncRequest), {}};
    answer.record->inPrivateData = m_privateData;
    fill(answer.record->inSourceRec, time, formats, nullptr);
    answer.record.remember();
    answer.result = call(selector, answer.record.data(), time);
    answer.written = answer.record.changes();
    expectUntouched(answer.record, selector);
    overwrite(formats);
    return answer;
}

Answer<aiAsyncRequest> AsyncSession::announce(PrTime time, const std::vector<imFrameFormat>& formats) {
    return request(aiInitiateAsyncRead, time, formats);
}

Answer<aiAsyncRequest> AsyncSession::cancel(PrTime time, const std::vector<imFrameFormat>& formats) {
    return request(aiCancelAsyncRead, time, formats);
}

AsyncFrameAnswer AsyncSession::get(PrTime time, const std::vector<imFrameFormat>& formats) {
    std::vector<imFrameFormat> accepted = formats;
    PPixHand delivered = nullptr;
    Host& host = m_session.host();
    AsyncFrameAnswer answer{0, {}, HostRecord<imSourceVideoRec>(host.profile().recordSizes().sourceVideo)};
    fill(*answer.record, time, accepted, &delivered);
    answer.record.remember();
    answer.result = call(aiGetFrame, answer.record.data(), time);
    expectUntouched(answer.record, aiGetFrame);
    overwrite(accepted);
    if (answer.result == aiNoError && !host.frames().view(delivered)) {
        host.report("An asynchronous frame was collected without a frame of the host's.");
        return answer;
    }
    if (answer.result != aiNoError && delivered) {
        host.report("An asynchronous collection failed and gave a frame all the same.");
    }
    answer.frame = HostFrame(delivered);
    return answer;
}

csSDK_int32 AsyncSession::flush() { return call(aiFlush, m_privateData); }

csSDK_int32 AsyncSession::close() {
    if (!isOpen()) {
        return aiNoError;
    }
    const csSDK_int32 result = call(aiClose, std::exchange(m_privateData, nullptr));
    m_entry = nullptr;
    // One that refuses to end stays on the books.
    if (result == aiNoError) {
        m_session.host().addAsyncImporters(-1);
    }
    return result;
}

csSDK_int32 AsyncSession::call(csSDK_int32 selector, void* parameter, std::optional<PrTime> time) {
    if (!isOpen()) {
        throw std::logic_error("No asynchronous importer is open.");
    }
    const CallLog& log = m_session.host().calls();
    if (log.isFollowed()) {
        log.tell(asyncCallText(selector, parameter));
    }
    const csSDK_int32 result = callEntry(selector, parameter);
    if (log.isFollowed()) {
        log.tell("  = " + asyncResultText(result));
    }
    const std::lock_guard lock(m_mutex);
    m_calls.push_back({selector, time, result});
    return result;
}

csSDK_int32 AsyncSession::callEntry(csSDK_int32 selector, void* parameter) {
    try {
        return m_entry(selector, parameter);
    } catch (...) {
        m_session.host().report("An exception left asynchronous selector " + std::to_string(selector) + ".");
        return kEscapedException;
    }
}

std::vector<AsyncCall> AsyncSession::calls() const {
    const std::lock_guard lock(m_mutex);
    return m_calls;
}

}  // namespace hostkit
