#include "importhost/validate/checks/library/AllowedImports.h"

namespace importhost::validate {

namespace {

// The last ones belong to builds that watch themselves for errors.
constexpr std::string_view kAllowed[] = {
    "quorvane_common64.so",
    "libc.so.*", "libm.so.*", "libdl.so.*", "libpthread.so.*", "librt.so.*", "ld-linux*.so.*",
    "libstdc++.so.*", "libc++.so.*", "libc++abi.so.*", "libgcc_s.so.*",
    "libasan.so.*", "libubsan.so.*", "libtsan.so.*", "libclang_rt.*",
};

}  // namespace

std::span<const std::string_view> allowedImports() { return kAllowed; }

}  // namespace importhost::validate
