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
    return expect(table, Sentence::ParameterMissing, {"The standard parameters", name});
}

void checkVersions(const imStdParms* stdParms, const void* suites) {
    const csSDK_int32 version = int32At(stdParms, kParmsVersion);
    const csSDK_int32 wanted = expected().version.value_or(version);
    expect(version == wanted, Sentence::InterfaceVersion, {std::to_string(version), std::to_string(wanted)});
    const csSDK_int32 suitesVersion = int32At(suites, kSuitesVersion);
    expect(suitesVersion == kPiInterfaceVersion, Sentence::SuitesVersion, {std::to_string(suitesVersion)});
}

void checkCallbacks(const void* callbacks) {
    const void* classFunctions = pointerAt(callbacks, kCallbacksClass);
    if (isThere(classFunctions, "the table of class data functions")) {
        checkFunctions("Class data functions", classFunctions, 2);
    }
    expect(int32At(callbacks, kCallbacksUnused1) == 0 && int32At(callbacks, kCallbacksUnused2) == 0,
           Sentence::CallbacksNotZero);
}

void checkSerialNumber(const void* utility) {
    char text[kSerialNumberBytes];
    std::fill(std::begin(text), std::end(text), '\xCD');
    static_cast<const PlugUtilFuncs*>(utility)->getSerialNumber(text);
    expect(std::find(std::begin(text), std::end(text), '\0') != std::end(text), Sentence::SerialNumber);
}

// Returns how many functions come before the first that is missing.
std::size_t functionsOf(const void* table, std::size_t count) {
    std::size_t present = 0;
    while (present < count && pointerAt(table, present * kPointerBytes)) {
        ++present;
    }
    return present;
}

// Everything that a plug-in needs to work. The window, frame and timeline tables are not checked:
// their content is the editor's own.
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
    if (!expect(stdParms, Sentence::ParameterMissing, {call, "the pointer to the standard parameters"})) {
        return false;
    }
    const std::lock_guard lock(tablesMutex);
    if (!first) {
        first = FirstParms{*stdParms, checkAll(stdParms)};
    }
    return expect(std::memcmp(&first->parms, stdParms, sizeof(imStdParms)) == 0, Sentence::StdParmsChanged, {call}) &&
           first->isUsable;
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
    const std::size_t present = functionsOf(functions, count);
    return expect(present == count, Sentence::FunctionMissing, {table, std::to_string(present + 1)});
}

bool hasFunctions(const void* functions, std::size_t count) {
    return functions && functionsOf(functions, count) == count;
}

}  // namespace hostprobe
