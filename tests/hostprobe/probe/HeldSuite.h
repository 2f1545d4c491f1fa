// A suite that is held while this object lives.
#pragma once

#include "probe/HostTables.h"

#include <utility>

namespace hostprobe {

template <class Suite>
class HeldSuite {
public:
    HeldSuite(SPBasicSuite* basic, const char* name, csSDK_int32 version)
        : m_basic(basic), m_name(name), m_version(version) {
        const void* suite = nullptr;
        m_error = basic->AcquireSuite(name, version, &suite);
        m_suite = static_cast<const Suite*>(suite);
    }
    HeldSuite(HeldSuite&& other) noexcept
        : m_basic(other.m_basic), m_name(other.m_name), m_version(other.m_version), m_error(other.m_error),
          m_suite(std::exchange(other.m_suite, nullptr)) {}
    HeldSuite(const HeldSuite&) = delete;
    HeldSuite& operator=(const HeldSuite&) = delete;
    HeldSuite& operator=(HeldSuite&&) = delete;
    ~HeldSuite() {
        if (m_suite) {
            m_basic->ReleaseSuite(m_name, m_version);
        }
    }

    SPErr error() const { return m_error; }
    const Suite* get() const { return m_suite; }

    // Null as well when one of its functions is missing, so that it cannot be used.
    const Suite* usable() const { return hasFunctions(m_suite, sizeof(Suite) / 8) ? m_suite : nullptr; }

private:
    SPBasicSuite* m_basic;
    const char* m_name;
    csSDK_int32 m_version;
    SPErr m_error = 0;
    const Suite* m_suite = nullptr;
};

}  // namespace hostprobe
