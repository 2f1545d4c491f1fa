#include "host/ImporterSuites.h"

SPBasicSuite* basicSuiteOf(const imStdParms* stdParms) {
    return stdParms->piSuites->utilFuncs->getSPBasicSuite();
}

ImporterSuites::ImporterSuites(SPBasicSuite* basicSuite)
    : ppixCreator(basicSuite, kPrSDKPPixCreatorSuite, kPrSDKPPixCreatorSuiteVersion),
      ppixCache(basicSuite, kPrSDKPPixCacheSuite, kPrSDKPPixCacheSuiteVersion),
      ppix(basicSuite, kPrSDKPPixSuite, kPrSDKPPixSuiteVersion),
      time(basicSuite, kPrSDKTimeSuite, kPrSDKTimeSuiteVersion),
      imageProcessing(basicSuite, kPrSDKImageProcessingSuite, kPrSDKImageProcessingSuiteVersion),
      audio(basicSuite, kPrSDKAudioSuite, kPrSDKAudioSuiteVersion) {}

ImporterSuites& LazyImporterSuites::get() {
    if (m_suites == nullptr) {
        m_suites = std::make_unique<ImporterSuites>(m_basicSuite);
    }
    return *m_suites;
}
