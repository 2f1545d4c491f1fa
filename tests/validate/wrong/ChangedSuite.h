// Suites that differ from the host's in a function, for faults that lie between the plug-in and its host.
#pragma once

#include "wrong/Fault.h"

#include <string_view>

namespace wrong {

// For HostChange::acquireSuite: takes the suite from the true host, and gives `table`, filled from it and then changed
// by `change`, in its place if it is the one of that name.
template <class Table>
SPErr acquireChanged(const char* name, csSDK_int32 version, const void** suite, std::string_view changedName,
                     Table& table, void (*change)(Table& table)) {
    const SPErr result = trueBasicSuite()->AcquireSuite(name, version, suite);
    if (result == kSPNoError && name == changedName) {
        table = *static_cast<const Table*>(*suite);
        change(table);
        *suite = &table;
    }
    return result;
}

}  // namespace wrong
