// A plug-in that is wrong on purpose: the real one, with one fault before it. The environment variable WRONG_PLUGIN
// names the fault; without it the plug-in is right.
//
// A fault is a row in the table of its group: its name, and what it does with a call.
#pragma once

#include "sdk/SdkAsyncImporter.h"
#include "sdk/SdkImporter.h"
#include "sdk/SdkSuites.h"

#include <functional>
#include <span>
#include <string_view>

namespace wrong {

// One call of the plug-in's entry.
struct Call {
    csSDK_int32 selector;
    imStdParms* stdParms;
    void* param1;
    void* param2;

    // Calls the real plug-in, also with other parameters.
    csSDK_int32 pass() const;
    csSDK_int32 passWith(void* other1, void* other2) const { return Call{selector, stdParms, other1, other2}.pass(); }

    // The second parameter, and the first where it is a number.
    template <class Record>
    Record& record() const { return *static_cast<Record*>(param2); }
    csSDK_int32 index() const { return static_cast<csSDK_int32>(reinterpret_cast<std::uintptr_t>(param1)); }
};

// Returns the result of a call.
using Answer = std::function<csSDK_int32(const Call& call)>;

struct Fault {
    std::string_view name;          // kebab-case, what is wrong
    Answer answer;
};

// Passes calls of other selectors to the real plug-in.
Answer on(csSDK_int32 selector, Answer answer);

// Calls the real plug-in before or after `act`.
Answer before(csSDK_int32 selector, std::function<void(const Call& call)> act);
Answer after(csSDK_int32 selector, std::function<void(const Call& call, csSDK_int32 result)> act);

// Returns `answer` without calling the real plug-in.
Answer always(csSDK_int32 selector, csSDK_int32 answer);

// Returns `other` where the real plug-in returns `answer`.
Answer saysOther(csSDK_int32 selector, csSDK_int32 answer, csSDK_int32 other);

// Returns `answer` for ever after the real plug-in returned it once.
Answer sticksTo(csSDK_int32 selector, csSDK_int32 answer);

// A host that differs from the true one in these functions; an empty one is the true host's.
struct HostChange {
    std::function<SPErr(const char* name, csSDK_int32 version, const void** suite)> acquireSuite = {};
    std::function<SPErr(const char* name, csSDK_int32 version)> releaseSuite = {};
    std::function<char*(csSDK_uint32 size)> newPtr = {};
};

// The real plug-in with such a host.
Answer withHost(HostChange change);
SPBasicSuite& trueBasicSuite();
PlugMemoryFuncs& trueMemory();

// A host whose suite `name` is a copy that `change` has changed.
template <class Table>
HostChange changedSuite(std::string_view name, std::function<void(Table& table)> change) {
    return {.acquireSuite = [=](const char* asked, csSDK_int32 version, const void** suite) {
        static Table table;         // the plug-in may keep its address
        const SPErr result = trueBasicSuite().AcquireSuite(asked, version, suite);
        if (result == kSPNoError && asked == name) {
            table = *static_cast<const Table*>(*suite);
            change(table);
            *suite = &table;
        }
        return result;
    }};
}

// A suite, held while this object lives. It may be refused.
template <class Suite>
class HeldSuite {
public:
    HeldSuite(const imStdParms* stdParms, const char* name, csSDK_int32 version)
        : m_basic(stdParms->piSuites->utilFuncs->getSPBasicSuite()), m_name(name), m_version(version) {
        m_basic->AcquireSuite(name, version, &m_suite);
    }
    ~HeldSuite() {
        if (m_suite) {
            m_basic->ReleaseSuite(m_name, m_version);
        }
    }
    HeldSuite(const HeldSuite&) = delete;
    HeldSuite& operator=(const HeldSuite&) = delete;

    explicit operator bool() const { return m_suite != nullptr; }
    const Suite* operator->() const { return static_cast<const Suite*>(m_suite); }

private:
    SPBasicSuite* m_basic;
    const char* m_name;
    csSDK_int32 m_version;
    const void* m_suite = nullptr;
};

// Acquires the Time Suite and never releases it.
void leakSuite(const Call& call);

// The tables, each in its own file.
std::span<const Fault> libraryFaults();
std::span<const Fault> startFaults();       // before any file
std::span<const Fault> openFaults();        // opening and sharing files
std::span<const Fault> infoFaults();        // describing
std::span<const Fault> listFaults();        // lists and texts
std::span<const Fault> lifeFaults();        // quiet, close, several clips
std::span<const Fault> frameFaults();
std::span<const Fault> audioFaults();
std::span<const Fault> asyncFaults();
std::span<const Fault> refusingHostFaults();
std::span<const Fault> codecFaults();
std::span<const Fault> diskFaults();
std::span<const Fault> exceptionFaults();
std::span<const Fault> stateFaults();
std::span<const Fault> measureFaults();
std::span<const Fault> frameworkFaults();

}  // namespace wrong
