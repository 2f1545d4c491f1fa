// The suites that one open file needs.
#pragma once

#include "host/HostSuite.h"
#include "sdk/SdkImporter.h"

#include <memory>

// The host's basic suite, from the parameters of any call.
SPBasicSuite* basicSuiteOf(const imStdParms* stdParms);

// Six suites, acquired in member order and released in reverse order. The Cache and Image Processing suites are held
// but never used, so a file works without them.
struct ImporterSuites {
    explicit ImporterSuites(SPBasicSuite* basicSuite);

    HostSuite<PrSDKPPixCreatorSuite> ppixCreator;
    HostSuite<PrSDKPPixCacheSuite> ppixCache;
    HostSuite<PrSDKPPixSuite> ppix;
    HostSuite<PrSDKTimeSuite> time;
    HostSuite<PrSDKImageProcessingSuite> imageProcessing;
    HostSuite<PrSDKAudioSuite> audio;
};

// The suites, created on first use. No lock: first use must not happen on two threads at once.
class LazyImporterSuites {
public:
    // Sets where suites are acquired from; required before first use.
    void setBasicSuite(SPBasicSuite* basicSuite) { m_basicSuite = basicSuite; }

    ImporterSuites& get();

private:
    SPBasicSuite* m_basicSuite = nullptr;
    std::unique_ptr<ImporterSuites> m_suites;
};
