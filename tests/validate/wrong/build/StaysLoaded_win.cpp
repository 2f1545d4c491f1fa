// Never leaves the process again.
#include <windows.h>

namespace {

struct Pin {
    Pin() {
        HMODULE self = nullptr;
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                           reinterpret_cast<LPCWSTR>(&kHere), &self);
    }
    static constexpr char kHere = 0;
} pin;

}  // namespace
