// Hosts whose tables lack something, or are not those of the version that they claim.
#include "WrongCase.h"

#include <cstring>

using enum hostprobe::Sentence;
using Host = PlayedHost;

namespace {

template <class Spoil>
auto spoilt(Spoil spoil) {
    return [spoil](Host& host) {
        spoil(host);
        host.play();
    };
}

// A whole life with a table whose function at `position`, counted from 1, is null.
template <class Table>
WrongCase missing(const std::string& name, Table HostTables::*table, std::size_t position) {
    std::string word = name;
    std::erase(word, ' ');
    return {"No" + word + std::to_string(position), FunctionMissing,
            name + ": function " + std::to_string(position) + " is missing.", [table, position](Host& host) {
                std::memset(reinterpret_cast<char*>(&(host.used.*table)) + 8 * (position - 1), 0, 8);
                host.play();
            }};
}

// Each function of each table, for a host that left it out.
WrongCases missingFunctions() {
    WrongCases cases;
    const auto add = [&cases](const std::string& name, auto table, std::size_t count) {
        for (std::size_t position = 1; position <= count; ++position) {
            cases.push_back(missing(name, table, position));
        }
    };
    add("Memory functions", &HostTables::memory, 12);
    add("Utility functions", &HostTables::utility, 9);
    add("Class data functions", &HostTables::classData, 2);
    add("Basic suite", &HostTables::basic, 7);
    add("Premiere PPix Creator Suite", &HostTables::creator, 2);
    add("Premiere PPix Suite", &HostTables::frames, 9);
    add("Premiere PPix Cache Suite", &HostTables::cache, 14);
    add("Premiere Time Suite", &HostTables::time, 3);
    add("Premiere Image Processing Suite", &HostTables::image, 7);
    add("Premiere Audio Suite", &HostTables::audio, 8);
    add("Premiere Error Suite", &HostTables::error, 1);
    return cases;
}

void changeParmsForACall(Host& host) {
    host.begin();
    host.parms.imInterfaceVer = IMPORTMOD_VERSION_23;
    host.info(0);
    host.parms.imInterfaceVer = IMPORTMOD_VERSION_18;
    host.end();
}

}  // namespace

WrongCases wrongTables() {
    constexpr char parms[] = "The standard parameters: the table of ";
    WrongCases cases = {
        {"NoStdParms", ParameterMissing, "imGetSupports8: the pointer to the standard parameters is missing.",
         [](Host& host) {
             host.begin();
             host.callWithoutParms(imGetSupports8);
             host.end();
         }},
        {"NoCallbacks", ParameterMissing, std::string(parms) + "callback functions is missing.",
         spoilt([](Host& host) { host.parms.funcs = nullptr; })},
        {"NoClassData", ParameterMissing, std::string(parms) + "class data functions is missing.",
         spoilt([](Host& host) { host.callbacks.classFuncs = nullptr; })},
        {"NoSuites", ParameterMissing, std::string(parms) + "plug-in suites is missing.",
         spoilt([](Host& host) { host.parms.piSuites = nullptr; })},
        {"NoMemory", ParameterMissing, std::string(parms) + "memory functions is missing.",
         spoilt([](Host& host) { host.suites.memFuncs = nullptr; })},
        {"NoUtility", ParameterMissing, std::string(parms) + "utility functions is missing.",
         spoilt([](Host& host) { host.suites.utilFuncs = nullptr; })},
        {"NoBasicSuite", ParameterMissing, "The standard parameters: the basic suite is missing.",
         spoilt([](Host& host) { host.used.utility.getSPBasicSuite = []() -> SPBasicSuite* { return nullptr; }; })},
        {"OtherParms", StdParmsChanged, "imGetInfo8: the standard parameters are not those of the first call.",
         changeParmsForACall},
        {"OtherVersion", InterfaceVersion, "The interface version is 18, not 23.", spoilt([](Host&) {}), "version=23"},
        {"OldSuites", SuitesVersion, "The version of the plug-in suites is 8, not 9.",
         spoilt([](Host& host) { host.suites.piInterfaceVer = 8; })},
        {"FirstUnusedCallbackMember", CallbacksNotZero,
         "The unused members of the callback functions are not zero.",
         spoilt([](Host& host) { host.callbacks.unused1 = 1; })},
        {"SecondUnusedCallbackMember", CallbacksNotZero,
         "The unused members of the callback functions are not zero.",
         spoilt([](Host& host) { host.callbacks.unused2 = 1; })},
        {"EndlessSerialNumber", SerialNumber, "getSerialNumber gave no text that ends within 40 bytes.",
         spoilt([](Host& host) {
             host.used.utility.getSerialNumber = [](char* buffer) { std::memset(buffer, '7', 40); };
         })},
    };
    for (WrongCase& each : missingFunctions()) {
        cases.push_back(std::move(each));
    }
    return cases;
}
