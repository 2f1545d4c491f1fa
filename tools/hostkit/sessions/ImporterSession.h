// The editor's side of the importer protocol for a whole plug-in: start, formats, shutdown. Clips: ClipSession.h.
//
// Every call returns the plug-in's raw result with the record as it came back; no failure of the plug-in throws here.
// Records are zeroed before a call and as long as the played host makes them. A write past a record, or into a field
// that the importer does not promise to write, becomes one of Host::problems().
#pragma once

#include "hostkit/host/Host.h"
#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/sessions/RecordStorage.h"

#include <limits>
#include <mutex>
#include <string>
#include <vector>

namespace hostkit {

// The result given for a call that an exception left; no importer result has this value.
inline constexpr csSDK_int32 kEscapedException = std::numeric_limits<csSDK_int32>::min();

template <class T>
struct Answer {
    csSDK_int32 result = 0;
    HostRecord<T> record;
    std::vector<ByteRange> written;         // what the call changed

    const T* operator->() const { return record.get(); }
};

struct SubTypesAnswer {
    csSDK_int32 result = 0;
    std::vector<imSubTypeDescriptionRec> records;
    csSDK_int32 blockBytes = 0;             // size of the block that the plug-in gave; 0 when it gave none
};

struct StartAnswer {
    Answer<imImportInfoRec> init;
    csSDK_int32 supports8 = 0;
    std::vector<Answer<imIndFormatRec>> formats;    // the last one ends the list with its failure
    std::vector<SubTypesAnswer> subTypes;           // one for each offered format
};

class ImporterSession {
public:
    // Both must outlive the session.
    ImporterSession(Host& host, ImporterEntry entry) : m_host(host), m_entry(entry) {}

    Host& host() { return m_host; }

    // One call of the entry as it is. An exception that leaves the plug-in gives kEscapedException and its text.
    csSDK_int32 call(csSDK_int32 selector, void* param1 = nullptr, void* param2 = nullptr);
    std::string escapedText() const;                // of the latest such exception

    Answer<imImportInfoRec> init();
    csSDK_int32 supports8();
    Answer<imIndFormatRec> format(csSDK_int32 index);
    std::vector<Answer<imIndFormatRec>> formats();  // from 0 until one fails
    SubTypesAnswer subTypeNames(csSDK_int32 fileType);
    csSDK_int32 shutdown();

    // All of it in the editor's order: init, formats each with its subtypes, version query.
    StartAnswer start();

    // A call with a record: remembers the record, calls, and checks what was written.
    template <class T>
    Answer<T> exchange(imSelector selector, HostRecord<T> record, void* param1);        // record in param2
    template <class T>
    Answer<T> exchangeFirst(imSelector selector, HostRecord<T> record);                 // record in param1

private:
    csSDK_int32 callEntry(csSDK_int32 selector, void* param1, void* param2);
    void check(imSelector selector, const RecordStorage& record, const std::vector<ByteRange>& written);

    Host& m_host;
    ImporterEntry m_entry;
    mutable std::mutex m_mutex;
    std::string m_escapedText;
};

template <class T>
Answer<T> ImporterSession::exchange(imSelector selector, HostRecord<T> record, void* param1) {
    Answer<T> answer{0, std::move(record), {}};
    answer.record.remember();
    answer.result = call(selector, param1, answer.record.data());
    answer.written = answer.record.changes();
    check(selector, answer.record, answer.written);
    return answer;
}

template <class T>
Answer<T> ImporterSession::exchangeFirst(imSelector selector, HostRecord<T> record) {
    Answer<T> answer{0, std::move(record), {}};
    answer.record.remember();
    answer.result = call(selector, answer.record.data(), nullptr);
    answer.written = answer.record.changes();
    check(selector, answer.record, answer.written);
    return answer;
}

// An integer travelling in a pointer parameter.
inline void* asPointer(csSDK_int32 value) {
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(static_cast<csSDK_uint32>(value)));
}

}  // namespace hostkit
