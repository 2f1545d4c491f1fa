// Starts the codec before anybody asked for a picture.
#include "codec/QuorvaneApi.h"

namespace {

struct Starter {
    Starter() { quorvane_library_init(); }
    ~Starter() { quorvane_library_close(); }
} starter;

}  // namespace
