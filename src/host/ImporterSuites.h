// The suites that one opened file needs.
#pragma once

#include "host/HostSuite.h"
#include "sdk/SdkImporter.h"

#include <memory>

// The host's basic suite, from the parameters of every call.
SPBasicSuite* basicSuiteOf(const imStdParms* stdParms);

// Six suites, acquired in the order of the members and released in the reverse order. The Cache and Image Processing
// suites are held for the file but never asked for, so a file does without them.
struct ImporterSuites {
    explicit ImporterSuites(SPBasicSuite* basicSuite);

    HostSuite<PrSDKPPixCreatorSuite> ppixCreator;
    HostSuite<PrSDKPPixCacheSuite> ppixCache;
    HostSuite<PrSDKPPixSuite> ppix;
    HostSuite<PrSDKTimeSuite> time;
    HostSuite<PrSDKImageProcessingSuite> imageProcessing;
    HostSuite<PrSDKAudioSuite> audio;
};

// The set, made when first needed. No lock: the first need must not arise on two threads at once.
class LazyImporterSuites {
public:
    // Where suites are acquired from; to be set before the first need.
    void setBasicSuite(SPBasicSuite* basicSuite) { m_basicSuite = basicSuite; }

    ImporterSuites& get();

private:
    SPBasicSuite* m_basicSuite = nullptr;
    std::unique_ptr<ImporterSuites> m_suites;
};
