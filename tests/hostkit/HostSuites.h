// Suites of a host, for tests that call them directly.
#pragma once

#include "hostkit/host/Host.h"

#include <gtest/gtest.h>

namespace hostkit {

// Acquires the suite and never releases it.
template <class Suite>
const Suite& suiteOf(Host& host, const char* name, csSDK_int32 version = 1) {
    const void* table = nullptr;
    EXPECT_EQ(host.basicSuite()->AcquireSuite(name, version, &table), 0);
    return *static_cast<const Suite*>(table);
}

}  // namespace hostkit
