#include "hostkit/sessions/ImporterSession.h"

#include "hostkit/sessions/CallText.h"
#include "hostkit/sessions/Names.h"
#include "hostkit/sessions/PromisedFields.h"

#include <cstring>
#include <exception>

namespace hostkit {

namespace {

// An importer that never says "no more" must not hold the host for ever.
constexpr csSDK_int32 kMostFormats = 100;

// The records of a block that the plug-in allocated with the host's memory functions.
std::vector<imSubTypeDescriptionRec> recordsOf(const void* block, csSDK_int32 bytes) {
    std::vector<imSubTypeDescriptionRec> records(static_cast<std::size_t>(bytes) / sizeof(imSubTypeDescriptionRec));
    if (!records.empty()) {
        std::memcpy(records.data(), block, records.size() * sizeof(imSubTypeDescriptionRec));
    }
    return records;
}

}  // namespace

csSDK_int32 ImporterSession::call(csSDK_int32 selector, void* param1, void* param2) {
    const CallLog& log = m_host.calls();
    if (!log.isFollowed()) {
        return callEntry(selector, param1, param2);
    }
    log.tell(callText(selector, param1, param2));
    const csSDK_int32 result = callEntry(selector, param1, param2);
    log.tell("  = " + resultText(result));
    return result;
}

csSDK_int32 ImporterSession::callEntry(csSDK_int32 selector, void* param1, void* param2) {
    std::string text;
    try {
        return m_entry(selector, m_host.stdParms(), param1, param2);
    } catch (const std::exception& error) {
        text = error.what();
    } catch (...) {
        text = "an exception of unknown type";
    }
    const std::lock_guard lock(m_mutex);
    m_escapedText = text;
    return kEscapedException;
}

std::string ImporterSession::escapedText() const {
    const std::lock_guard lock(m_mutex);
    return m_escapedText;
}

Answer<imImportInfoRec> ImporterSession::init() { return exchangeFirst(imInit, HostRecord<imImportInfoRec>()); }

csSDK_int32 ImporterSession::supports8() { return call(imGetSupports8); }

Answer<imIndFormatRec> ImporterSession::format(csSDK_int32 index) {
    return exchange(imGetIndFormat, HostRecord<imIndFormatRec>(), asPointer(index));
}

std::vector<Answer<imIndFormatRec>> ImporterSession::formats() {
    std::vector<Answer<imIndFormatRec>> answers;
    do {
        answers.push_back(format(static_cast<csSDK_int32>(answers.size())));
    } while (answers.back().result == imNoErr && answers.size() < kMostFormats);
    return answers;
}

SubTypesAnswer ImporterSession::subTypeNames(csSDK_int32 fileType) {
    SubTypesAnswer answer;
    imSubTypeDescriptionRec* block = nullptr;
    answer.result = call(imGetSubTypeNames, asPointer(fileType), &block);
    if (!block) {
        return answer;
    }
    // The plug-in says nowhere how many there are; the size of its block does.
    char* bytes = reinterpret_cast<char*>(block);
    answer.blockBytes = m_host.memoryFunctions()->getPtrSize(bytes);
    answer.records = recordsOf(block, answer.blockBytes);
    if (static_cast<std::size_t>(answer.blockBytes) % sizeof(imSubTypeDescriptionRec) != 0) {
        m_host.report("The subtype list has " + std::to_string(answer.blockBytes) + " bytes, not a multiple of 516.");
    }
    m_host.memoryFunctions()->disposePtr(bytes);
    return answer;
}

csSDK_int32 ImporterSession::shutdown() { return call(imShutdown); }

StartAnswer ImporterSession::start() {
    StartAnswer answer{init(), 0, {}, {}};
    answer.formats = formats();
    for (const Answer<imIndFormatRec>& offered : answer.formats) {
        if (offered.result == imNoErr) {
            answer.subTypes.push_back(subTypeNames(offered->filetype));
        }
    }
    answer.supports8 = supports8();
    return answer;
}

void ImporterSession::check(imSelector selector, const RecordStorage& record, const std::vector<ByteRange>& written) {
    const std::string call = "Selector " + std::to_string(selector);
    if (!record.guardsAreIntact()) {
        m_host.report(call + " wrote outside its record of " + std::to_string(record.size()) + " bytes.");
    }
    const std::vector<ByteRange> beyond = beyondPromise(selector, written);
    if (!beyond.empty()) {
        m_host.report(call + " wrote bytes of its record that are not its own: " + describe(beyond) + ".");
    }
}

}  // namespace hostkit
