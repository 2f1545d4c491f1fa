// The import address table of the library holds the addresses; the table of names beside it tells whose they are.
#include "hostkit/watch/ImportHook.h"

#include <windows.h>

#include <cstring>
#include <stdexcept>

namespace hostkit {

namespace {

template <class T>
T* at(void* library, DWORD distance) {
    return reinterpret_cast<T*>(static_cast<BYTE*>(library) + distance);
}

const IMAGE_DATA_DIRECTORY& importsOf(void* library) {
    const auto* start = static_cast<const IMAGE_DOS_HEADER*>(library);
    const auto* headers = at<IMAGE_NT_HEADERS>(library, static_cast<DWORD>(start->e_lfanew));
    return headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
}

// The places of one name in the imports from one other library.
void addPlaces(void* library, const IMAGE_IMPORT_DESCRIPTOR& imports, const char* name, std::vector<void**>& places) {
    if (imports.OriginalFirstThunk == 0) {
        return;     // names were not kept
    }
    auto* names = at<IMAGE_THUNK_DATA>(library, imports.OriginalFirstThunk);
    auto* addresses = at<IMAGE_THUNK_DATA>(library, imports.FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++addresses) {
        if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) {
            continue;
        }
        const auto* named = at<IMAGE_IMPORT_BY_NAME>(library, static_cast<DWORD>(names->u1.AddressOfData));
        if (std::strcmp(reinterpret_cast<const char*>(named->Name), name) == 0) {
            places.push_back(reinterpret_cast<void**>(&addresses->u1.Function));
        }
    }
}

}  // namespace

std::vector<void**> ImportHook::placesOf(void* library, const char* name) {
    const IMAGE_DATA_DIRECTORY& directory = importsOf(library);
    std::vector<void**> places;
    if (directory.Size == 0) {
        return places;
    }
    auto* imports = at<IMAGE_IMPORT_DESCRIPTOR>(library, directory.VirtualAddress);
    for (; imports->Name != 0; ++imports) {
        addPlaces(library, *imports, name, places);
    }
    return places;
}

void ImportHook::write(void** place, void* value) {
    DWORD before = 0;
    if (!VirtualProtect(place, sizeof(*place), PAGE_READWRITE, &before)) {
        throw std::runtime_error("The system does not let a library's imports be replaced.");
    }
    *place = value;
    VirtualProtect(place, sizeof(*place), before, &before);
}

}  // namespace hostkit
