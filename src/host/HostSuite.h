// Holders of host suites: tables of functions that the host lends by name and version.
#pragma once

#include "sdk/SdkSuites.h"

// Holds one suite. Acquires it at construction, retries at each use if that failed, and releases it at destruction. No
// lock: uses of one holder must not overlap while it may still be empty.
class HostSuiteHolder {
public:
    // `basicSuite` and `name` are not owned and must outlive the holder.
    HostSuiteHolder(SPBasicSuite* basicSuite, const char* name, csSDK_int32 version);
    ~HostSuiteHolder();

    HostSuiteHolder(const HostSuiteHolder&) = delete;
    HostSuiteHolder& operator=(const HostSuiteHolder&) = delete;

    // Releases the suite and logs it; does nothing if the holder is empty. Exceptions of the host pass through; the
    // destructor only logs them.
    void release();

protected:
    // Returns the suite's table, acquiring it first if necessary; throws std::runtime_error if the host refuses.
    const void* table();

private:
    // Asks the host for the suite and logs the answer. After a refusal the holder is empty.
    void acquire();

    SPBasicSuite* m_basicSuite;
    const char* m_name;
    csSDK_int32 m_version;
    const void* m_suite = nullptr;
};

// A holder with the suite's type.
template <class Functions>
class HostSuite : public HostSuiteHolder {
public:
    using HostSuiteHolder::HostSuiteHolder;

    // Returns the suite's functions; throws std::runtime_error if the host refuses the suite.
    const Functions* get() { return static_cast<const Functions*>(table()); }
};
