// The suites that one opened file needs.
#pragma once

#include "host/HostSuite.h"
#include "sdk/SdkImporter.h"

#include <memory>
#include <mutex>

// The host's basic suite, from the parameters of every call.
SPBasicSuite* basicSuiteOf(const imStdParms* stdParms);

// Six suites, acquired in the order of the members and released in the reverse order. The Cache and Image Processing
// suites are held for the file but never asked for, so a host without them still delivers frames.
struct ImporterSuites {
    explicit ImporterSuites(SPBasicSuite* basicSuite);

    HostSuite<PrSDKPPixCreatorSuite> ppixCreator;
    HostSuite<PrSDKPPixCacheSuite> ppixCache;
    HostSuite<PrSDKPPixSuite> ppix;
    HostSuite<PrSDKTimeSuite> time;
    HostSuite<PrSDKImageProcessingSuite> imageProcessing;
    HostSuite<PrSDKAudioSuite> audio;
};

// The set, made when first needed, by whichever thread needs it first.
class LazyImporterSuites {
public:
    explicit LazyImporterSuites(SPBasicSuite* basicSuite) : m_basicSuite(basicSuite) {}

    ImporterSuites& get();

private:
    SPBasicSuite* m_basicSuite;
    std::mutex m_creation;
    std::unique_ptr<ImporterSuites> m_suites;
};
