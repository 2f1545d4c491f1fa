#include "probe/HostTables.h"

#include "probe/Complaints.h"
#include "probe/Expectations.h"
#include "probe/Fields.h"
#include "probe/MemoryChecks.h"

#include <algorithm>
#include <mutex>
#include <optional>

namespace hostprobe {

namespace {

constexpr std::size_t kPointerBytes = 8;
constexpr csSDK_int32 kPiInterfaceVersion = 9;
constexpr std::size_t kSerialNumberBytes = 40;

struct FirstParms {
    imStdParms parms = {};
    bool isUsable = false;
};

std::mutex tablesMutex;
std::optional<FirstParms> first;

bool isThere(const void* table, const char* name) {
    if (!table) {
        complain(Sentence::ParameterMissing, {"The standard parameters", name});
    }
    return table != nullptr;
}

void checkVersions(const imStdParms* stdParms, const void* suites) {
    const csSDK_int32 version = int32At(stdParms, kParmsVersion);
    const csSDK_int32 wanted = expected().version.value_or(version);
    if (version != wanted) {
        complain(Sentence::InterfaceVersion, {std::to_string(version), std::to_string(wanted)});
    }
    const csSDK_int32 suitesVersion = int32At(suites, kSuitesVersion);
    if (suitesVersion != kPiInterfaceVersion) {
        complain(Sentence::SuitesVersion, {std::to_string(suitesVersion)});
    }
}

void checkCallbacks(const void* callbacks) {
    const void* classFunctions = pointerAt(callbacks, kCallbacksClass);
    if (isThere(classFunctions, "the table of class data functions")) {
        checkFunctions("Class data functions", classFunctions, 2);
    }
    if (int32At(callbacks, kCallbacksUnused1) != 0 || int32At(callbacks, kCallbacksUnused2) != 0) {
        complain(Sentence::CallbacksNotZero);
    }
}

void checkSerialNumber(const void* utility) {
    char text[kSerialNumberBytes];
    std::fill(std::begin(text), std::end(text), '\xCD');
    static_cast<const PlugUtilFuncs*>(utility)->getSerialNumber(text);
    if (std::find(std::begin(text), std::end(text), '\0') == std::end(text)) {
        complain(Sentence::SerialNumber);
    }
}

// Everything that a plug-in needs before it can be of use. The window, frame and timeline tables are left alone:
// what stands in them is the editor's own business.
bool checkAll(imStdParms* stdParms) {
    const void* suites = pointerAt(stdParms, kParmsSuites);
    const void* callbacks = pointerAt(stdParms, kParmsCallbacks);
    if (isThere(callbacks, "the table of callback functions")) {
        checkCallbacks(callbacks);
    }
    if (!isThere(suites, "the table of plug-in suites")) {
        return false;
    }
    checkVersions(stdParms, suites);
    const void* memory = pointerAt(suites, kSuitesMemory);
    const void* utility = pointerAt(suites, kSuitesUtility);
    if (!isThere(memory, "the table of memory functions") || !isThere(utility, "the table of utility functions") ||
        !checkFunctions("Memory functions", memory, 12) || !checkFunctions("Utility functions", utility, 9)) {
        return false;
    }
    checkSerialNumber(utility);
    checkMemory(*static_cast<const PlugMemoryFuncs*>(memory));
    SPBasicSuite* basic = basicSuiteOf(stdParms);
    if (!isThere(basic, "the basic suite") || !checkFunctions("Basic suite", basic, 7)) {
        return false;
    }
    checkBasicSuite(*basic);
    return true;
}

}  // namespace

bool checkStdParms(const std::string& call, imStdParms* stdParms) {
    if (!stdParms) {
        complain(Sentence::ParameterMissing, {call, "the pointer to the standard parameters"});
        return false;
    }
    const std::lock_guard lock(tablesMutex);
    if (!first) {
        first = FirstParms{*stdParms, checkAll(stdParms)};
    } else if (std::memcmp(&first->parms, stdParms, sizeof(imStdParms)) != 0) {
        complain(Sentence::StdParmsChanged, {call});
        return false;
    }
    return first->isUsable;
}

SPBasicSuite* basicSuiteOf(imStdParms* stdParms) {
    const void* utility = pointerAt(pointerAt(stdParms, kParmsSuites), kSuitesUtility);
    return fieldAt<SPBasicSuite* (*)()>(utility, kUtilityBasicSuite)();
}

csSDK_int32 hostVersion() {
    const std::lock_guard lock(tablesMutex);
    return first ? int32At(&first->parms, kParmsVersion) : 0;
}

bool checkFunctions(const std::string& table, const void* functions, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        if (!pointerAt(functions, i * kPointerBytes)) {
            complain(Sentence::FunctionMissing, {table, std::to_string(i + 1)});
            return false;
        }
    }
    return true;
}

bool hasFunctions(const void* functions, std::size_t count) {
    for (std::size_t i = 0; functions && i < count; ++i) {
        if (!pointerAt(functions, i * kPointerBytes)) {
            return false;
        }
    }
    return functions != nullptr;
}

}  // namespace hostprobe
