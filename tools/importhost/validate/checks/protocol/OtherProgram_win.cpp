#include "importhost/validate/checks/protocol/OtherProgram.h"

#include <windows.h>

namespace importhost::validate {

namespace {

DWORD accessFor(OtherUse use) { return use == OtherUse::Writes ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ; }

DWORD shareFor(OtherUse use) {
    switch (use) {
        case OtherUse::Reads: return FILE_SHARE_READ;
        case OtherUse::Writes: return FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        default: return 0;
    }
}

}  // namespace

// INVALID_HANDLE_VALUE is -1 as well.
OtherProgram::OtherProgram(const std::filesystem::path& path, OtherUse use)
    : m_file(reinterpret_cast<std::intptr_t>(CreateFileW(path.c_str(), accessFor(use), shareFor(use), nullptr,
                                                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))) {}

OtherProgram::~OtherProgram() {
    if (hasFile()) {
        CloseHandle(reinterpret_cast<HANDLE>(m_file));
    }
}

}  // namespace importhost::validate
