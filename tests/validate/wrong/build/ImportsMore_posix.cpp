// Needs the library of a compressor.
#include <zlib.h>

namespace {

[[maybe_unused]] const char* const volatile version = zlibVersion();

}  // namespace
