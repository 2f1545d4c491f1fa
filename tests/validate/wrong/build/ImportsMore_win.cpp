// Needs the library of the network.
#include <winsock2.h>

namespace {

[[maybe_unused]] volatile int error = WSAGetLastError();

}  // namespace
