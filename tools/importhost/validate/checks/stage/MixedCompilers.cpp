#include "importhost/validate/checks/stage/MixedCompilers.h"

#include "hostkit/system/FileBytes.h"

namespace importhost::validate {

namespace {

// How Microsoft's ABI writes std::exception: a module that catches one has the name in it.
constexpr std::string_view kMicrosoftsName = ".?AVexception@std@@";

}  // namespace

void skipIfCompilersAreMixed(CheckRun& run) {
    if (hostkit::FileBytes(run.plugin()).contains(kMicrosoftsName)) {
        run.skip("mixed compilers: the plug-in has Microsoft's C++ ABI and this program has not, so that no exception "
                 "passes from one to the other");
    }
}

}  // namespace importhost::validate
