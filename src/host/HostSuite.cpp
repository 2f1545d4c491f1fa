#include "host/HostSuite.h"

#include "log/Log.h"

#include <mutex>
#include <stdexcept>
#include <string>

HostSuiteHolder::HostSuiteHolder(SPBasicSuite* basicSuite, const char* name, csSDK_int32 version)
    : m_basicSuite(basicSuite), m_name(name), m_version(version) {
    acquire();
}

HostSuiteHolder::~HostSuiteHolder() {
    release();
}

void HostSuiteHolder::acquire() {
    const void* suite = nullptr;
    const SPErr result = m_basicSuite->AcquireSuite(m_name, m_version, &suite);
    if (result != kSPNoError) {
        suite = nullptr;   // whatever a refusing host left there is no suite
    }
    m_suite.store(suite, std::memory_order_release);
    Log("Acquiring suite: r: %d, v: %d, n: '%s', ptr: %p", result, m_version, m_name, suite);
}

void HostSuiteHolder::release() {
    if (m_suite.load(std::memory_order_acquire) == nullptr) {
        return;
    }
    [[maybe_unused]] const SPErr result = m_basicSuite->ReleaseSuite(m_name, m_version);
    Log("Releasing suite: r: %d, v: %d, n: '%s'", result, m_version, m_name);
    m_suite.store(nullptr, std::memory_order_release);
}

const void* HostSuiteHolder::table() {
    if (const void* suite = m_suite.load(std::memory_order_acquire)) {
        return suite;
    }
    const std::lock_guard lock(m_acquiring);
    if (m_suite.load(std::memory_order_acquire) == nullptr) {
        acquire();
    }
    if (const void* suite = m_suite.load(std::memory_order_acquire)) {
        return suite;
    }
    throw std::runtime_error("Could not acquire suite: '" + std::string(m_name) + "', ver: " +
                             std::to_string(m_version));
}
