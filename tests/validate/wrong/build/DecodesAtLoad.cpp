// Starts the codec before the first request.
#include "codec/QuorvaneApi.h"

namespace {

struct Starter {
    Starter() { quorvane_library_init(); }
    ~Starter() { quorvane_library_close(); }
} starter;

}  // namespace
