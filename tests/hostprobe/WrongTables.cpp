// Hosts whose tables lack something or are not those of the version that they claim, and functions that fail.
#include "WrongCase.h"

#include <cstring>

using enum hostprobe::Sentence;

namespace {

// A host without the function at `position`, counted from 1.
template <class Table>
WrongCase missing(const std::string& name, Table HostTables::*table, std::size_t position) {
    std::string word = name;
    std::erase(word, ' ');
    return {"No" + word + std::to_string(position), FunctionMissing,
            name + ": function " + std::to_string(position) + " is missing.", spoilt([table, position](Host& host) {
                std::memset(reinterpret_cast<char*>(&(host.used.*table)) + 8 * (position - 1), 0, 8);
            })};
}

// Each function of each table.
void addMissingFunctions(WrongCases& cases) {
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
}

// Functions whose failure the probe must notice.
void addFailingFunctions(WrongCases& cases) {
    const auto add = [&cases](const std::string& name, auto function) {
        cases.push_back({name + "Fails", CallFailed, name + " failed with -1.", returning<-1>(function)});
    };
    add("setHandleSize", &PlugMemoryFuncs::setHandleSize);
    add("ReleaseSuite", &SPBasicSuite::ReleaseSuite);
    add("AllocateBlock", &SPBasicSuite::AllocateBlock);
    add("ReallocateBlock", &SPBasicSuite::ReallocateBlock);
    add("FreeBlock", &SPBasicSuite::FreeBlock);
    add("ClonePPix", &PrSDKPPixCreatorSuite::ClonePPix);
    add("Dispose", &PrSDKPPixSuite::Dispose);
    add("GetPixels", &PrSDKPPixSuite::GetPixels);
    add("GetBounds", &PrSDKPPixSuite::GetBounds);
    add("GetRowBytes", &PrSDKPPixSuite::GetRowBytes);
    add("GetPixelAspectRatio", &PrSDKPPixSuite::GetPixelAspectRatio);
    add("GetPixelFormat", &PrSDKPPixSuite::GetPixelFormat);
    add("GetUniqueKey", &PrSDKPPixSuite::GetUniqueKey);
    add("GetUniqueKeySize", &PrSDKPPixSuite::GetUniqueKeySize);
    add("GetRenderTime", &PrSDKPPixSuite::GetRenderTime);
    add("GetTicksPerSecond", &PrSDKTimeSuite::GetTicksPerSecond);
    add("GetTicksPerVideoFrame", &PrSDKTimeSuite::GetTicksPerVideoFrame);
    add("GetTicksPerAudioSample", &PrSDKTimeSuite::GetTicksPerAudioSample);
    add("FormatHasAlpha", &PrSDKImageProcessingSuite::FormatHasAlpha);
    add("GetSizeForPixelBuffer", &PrSDKImageProcessingSuite::GetSizeForPixelBuffer);
    add("SetEventStringUnicode", &PrSDKErrorSuite3::SetEventStringUnicode);
    add("UninterleaveAndConvertFrom8BitInteger", &PrSDKAudioSuite::UninterleaveAndConvertFrom8BitInteger);
    add("ConvertAndInterleaveTo32BitInteger", &PrSDKAudioSuite::ConvertAndInterleaveTo32BitInteger);
}

}  // namespace

WrongCases wrongTables() {
    const std::string table = "The standard parameters: the table of ";
    constexpr char notZero[] = "The unused members of the callback functions are not zero.";
    WrongCases cases = {
        {"NoStdParms", ParameterMissing, "imGetSupports8: the pointer to the standard parameters is missing.",
         within([](Host& host) { host.callWithoutParms(imGetSupports8); })},
        {"NoCallbacks", ParameterMissing, table + "callback functions is missing.",
         spoilt([](Host& host) { host.parms.funcs = nullptr; })},
        {"NoClassData", ParameterMissing, table + "class data functions is missing.",
         spoilt([](Host& host) { host.callbacks.classFuncs = nullptr; })},
        {"NoSuites", ParameterMissing, table + "plug-in suites is missing.",
         spoilt([](Host& host) { host.parms.piSuites = nullptr; })},
        {"NoMemory", ParameterMissing, table + "memory functions is missing.",
         spoilt([](Host& host) { host.suites.memFuncs = nullptr; })},
        {"NoUtility", ParameterMissing, table + "utility functions is missing.",
         spoilt([](Host& host) { host.suites.utilFuncs = nullptr; })},
        {"NoBasicSuite", ParameterMissing, "The standard parameters: the basic suite is missing.",
         returning<nullptr>(&PlugUtilFuncs::getSPBasicSuite)},
        {"OtherParms", StdParmsChanged, "imGetInfo8: the standard parameters are not those of the first call.",
         within([](Host& host) {
             host.parms.imInterfaceVer = IMPORTMOD_VERSION_23;
             host.info(0);
             host.parms.imInterfaceVer = IMPORTMOD_VERSION_18;
         })},
        {"OtherVersion", InterfaceVersion, "The interface version is 18, not 23.", spoilt([](Host&) {}), "version=23"},
        {"OldSuites", SuitesVersion, "The version of the plug-in suites is 8, not 9.",
         spoilt([](Host& host) { host.suites.piInterfaceVer = 8; })},
        {"FirstUnusedCallbackMember", CallbacksNotZero, notZero,
         spoilt([](Host& host) { host.callbacks.unused1 = 1; })},
        {"SecondUnusedCallbackMember", CallbacksNotZero, notZero,
         spoilt([](Host& host) { host.callbacks.unused2 = 1; })},
        {"EndlessSerialNumber", SerialNumber, "getSerialNumber returned no text that ends within 40 bytes.",
         spoilt([](Host& host) {
             host.used.utility.getSerialNumber = [](char* buffer) { std::memset(buffer, '7', 40); };
         })},
    };
    addMissingFunctions(cases);
    addFailingFunctions(cases);
    return cases;
}
