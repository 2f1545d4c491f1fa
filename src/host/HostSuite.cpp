#include "host/HostSuite.h"

#include "log/Log.h"

#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

HostSuiteHolder::HostSuiteHolder(SPBasicSuite* basicSuite, const char* name, csSDK_int32 version)
    : m_basicSuite(basicSuite), m_name(name), m_version(version) {
    acquire();
}

HostSuiteHolder::~HostSuiteHolder() {
    try {
        release();
    } catch (const std::exception& error) {
        Log("ERROR: ReleaseSuite() failed: %s", error.what());
    } catch (...) {
        Log("ERROR: ReleaseSuite() failed");
    }
}

void HostSuiteHolder::acquire() {
    const void* suite = nullptr;
    const SPErr result = m_basicSuite->AcquireSuite(m_name, m_version, &suite);
    m_suite = result == kSPNoError ? suite : nullptr;   // ignore whatever a refusing host left there
    Log("Acquiring suite: r: %d, v: %d, n: '%s', ptr: %p", result, m_version, m_name, m_suite);
}

void HostSuiteHolder::release() {
    if (std::exchange(m_suite, nullptr) == nullptr) {
        return;
    }
    const SPErr result = m_basicSuite->ReleaseSuite(m_name, m_version);
    Log("Releasing suite: r: %d, v: %d, n: '%s'", result, m_version, m_name);
}

const void* HostSuiteHolder::table() {
    if (m_suite == nullptr) {
        acquire();
    }
    if (m_suite == nullptr) {
        throw std::runtime_error("Could not acquire suite: '" + std::string(m_name) + "', ver: " +
                                 std::to_string(m_version));
    }
    return m_suite;
}
