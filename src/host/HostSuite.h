// Holders of host suites: tables of functions that the host lends by name and version and wants back.
#pragma once

#include "sdk/SdkSuites.h"

// Holds one suite. Acquiring is tried at construction and, if that failed, once more at every use; the suite goes back
// at destruction. No lock: uses of one holder must not overlap while it may still be empty.
class HostSuiteHolder {
public:
    // `basicSuite` and `name` are not owned and must outlive the holder.
    HostSuiteHolder(SPBasicSuite* basicSuite, const char* name, csSDK_int32 version);
    ~HostSuiteHolder();

    HostSuiteHolder(const HostSuiteHolder&) = delete;
    HostSuiteHolder& operator=(const HostSuiteHolder&) = delete;

    // Gives the suite back and logs it; an empty holder does nothing. What the host throws leaves; destruction, which
    // cannot let it leave, only logs it.
    void release();

protected:
    // The suite's table, acquired now if need be; throws std::runtime_error when the host refuses it.
    const void* table();

private:
    // Asks the host for the suite and logs the answer. A refusal leaves the holder empty.
    void acquire();

    SPBasicSuite* m_basicSuite;
    const char* m_name;
    csSDK_int32 m_version;
    const void* m_suite = nullptr;
};

// A holder that knows its suite's type.
template <class Functions>
class HostSuite : public HostSuiteHolder {
public:
    using HostSuiteHolder::HostSuiteHolder;

    // The suite's functions; throws std::runtime_error when the host refuses the suite.
    const Functions* get() { return static_cast<const Functions*>(table()); }
};
