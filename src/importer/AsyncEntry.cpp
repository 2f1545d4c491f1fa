// The asynchronous importer's entry function, and the close that waits for calls which are still inside.
#include "importer/QuorvaneAsyncImporter.h"

#include "host/Vocabulary.h"
#include "log/Log.h"

#include <chrono>
#include <exception>
#include <thread>

namespace {

// How long a close waits before it looks again whether other calls have left.
constexpr std::chrono::milliseconds kCloseWait(1);

}  // namespace

// One call inside an importer. Leaving is a single step after which the importer is not touched: a waiter that had to
// be woken could have destroyed it by then. A call that begins when the close has already been sent is the host's fault
// and cannot be told from a good one.
class QuorvaneAsyncImporter::Call {
public:
    explicit Call(QuorvaneAsyncImporter& importer) : m_importer(importer) {
        m_importer.m_callsInside.fetch_add(1, std::memory_order_relaxed);
    }
    ~Call() { m_importer.m_callsInside.fetch_sub(1, std::memory_order_release); }

    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    static void waitUntilNoneIsInside(const QuorvaneAsyncImporter& importer) {
        while (importer.m_callsInside.load(std::memory_order_acquire) != 0) {
            std::this_thread::sleep_for(kCloseWait);
        }
    }

private:
    QuorvaneAsyncImporter& m_importer;
};

namespace {

template <class Handler, class... Arguments>
csSDK_int32 callImporter(void* privateData, Handler handler, const Arguments&... arguments) {
    if (privateData == nullptr) {
        Log("ERROR: the host gave no importer");
        return aiUnknownError;
    }
    auto& importer = *static_cast<QuorvaneAsyncImporter*>(privateData);
    const QuorvaneAsyncImporter::Call call(importer);
    return (importer.*handler)(arguments...);
}

csSDK_int32 closeImporter(void* privateData) {
    if (privateData != nullptr) {
        auto* importer = static_cast<QuorvaneAsyncImporter*>(privateData);
        // The host may close while another of its calls has not returned yet.
        QuorvaneAsyncImporter::Call::waitUntilNoneIsInside(*importer);
        delete importer;
    }
    return aiNoError;
}

csSDK_int32 dispatch(csSDK_int32 selector, void* parameter) {
    switch (selector) {
    case aiInitiateAsyncRead: {
        const auto& request = *static_cast<aiAsyncRequest*>(parameter);
        return callImporter(request.inPrivateData, &QuorvaneAsyncImporter::OnInitiateAsyncRead, request.inSourceRec);
    }
    case aiGetFrame: {
        const auto& record = *static_cast<imSourceVideoRec*>(parameter);
        return callImporter(record.inPrivateData, &QuorvaneAsyncImporter::OnGetFrame, record);
    }
    case aiFlush: return callImporter(parameter, &QuorvaneAsyncImporter::OnFlush);
    case aiClose: return closeImporter(parameter);
    default: return aiUnsupported;
    }
}

}  // namespace

csSDK_int32 xAsyncImportEntry(csSDK_int32 selector, void* parameter) {
    try {
        return dispatch(selector, parameter);
    } catch (const std::exception& exception) {
        Log("xAsyncImportEntry: FATAL: Unhandled exception during %s (%d): %s", AsyncSelectorName(selector), selector,
            exception.what());
        return kExceptionResult;
    }
}
