// The library's relocations name the places that the loader filled with addresses of imported functions.
#include "hostkit/watch/ImportHook.h"

#include <dlfcn.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>

namespace hostkit {

namespace {

using Address = std::uintptr_t;

// A library's tables, as its dynamic section tells where they lie.
struct Tables {
    const ElfW(Sym)* symbols = nullptr;
    const char* names = nullptr;
    std::span<const ElfW(Rela)> functions;      // called through the procedure linkage table
    std::span<const ElfW(Rela)> others;
};

const link_map& mapOf(void* library) {
    link_map* map = nullptr;
    if (dlinfo(library, RTLD_DI_LINKMAP, &map) != 0 || !map) {
        throw std::runtime_error("The loader does not tell where a library lies.");
    }
    return *map;
}

// Some loaders turn the section's entries into addresses, others leave them as distances from the library's start.
template <class T>
const T* tableAt(const link_map& map, Address value) {
    return reinterpret_cast<const T*>(value < map.l_addr ? value + map.l_addr : value);
}

Tables tablesOf(const link_map& map) {
    Tables tables;
    const ElfW(Rela)* functions = nullptr;
    const ElfW(Rela)* others = nullptr;
    std::size_t functionBytes = 0;
    std::size_t otherBytes = 0;
    for (const ElfW(Dyn)* entry = map.l_ld; entry->d_tag != DT_NULL; ++entry) {
        switch (entry->d_tag) {
            case DT_SYMTAB: tables.symbols = tableAt<ElfW(Sym)>(map, entry->d_un.d_ptr); break;
            case DT_STRTAB: tables.names = tableAt<char>(map, entry->d_un.d_ptr); break;
            case DT_JMPREL: functions = tableAt<ElfW(Rela)>(map, entry->d_un.d_ptr); break;
            case DT_PLTRELSZ: functionBytes = entry->d_un.d_val; break;
            case DT_RELA: others = tableAt<ElfW(Rela)>(map, entry->d_un.d_ptr); break;
            case DT_RELASZ: otherBytes = entry->d_un.d_val; break;
            default: break;
        }
    }
    tables.functions = {functions, functionBytes / sizeof(ElfW(Rela))};
    tables.others = {others, otherBytes / sizeof(ElfW(Rela))};
    return tables;
}

bool names(const Tables& tables, const ElfW(Rela)& relocation, const char* name) {
    const std::size_t index = ELF64_R_SYM(relocation.r_info);
    return index != 0 && std::strcmp(tables.names + tables.symbols[index].st_name, name) == 0;
}

// The pages that the loader made read-only once it had filled them.
struct ReadOnlySearch {
    Address place = 0;
    bool found = false;
};

int findReadOnly(dl_phdr_info* info, std::size_t, void* data) {
    auto& search = *static_cast<ReadOnlySearch*>(data);
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const ElfW(Phdr)& part = info->dlpi_phdr[i];
        const Address start = info->dlpi_addr + part.p_vaddr;
        if (part.p_type == PT_GNU_RELRO && search.place >= start && search.place < start + part.p_memsz) {
            search.found = true;
        }
    }
    return search.found ? 1 : 0;
}

bool liesInReadOnlyPart(void** place) {
    ReadOnlySearch search;
    search.place = reinterpret_cast<Address>(place);
    dl_iterate_phdr(findReadOnly, &search);
    return search.found;
}

void protect(void** place, int protection) {
    const auto pageBytes = static_cast<Address>(sysconf(_SC_PAGESIZE));
    const Address page = reinterpret_cast<Address>(place) / pageBytes * pageBytes;
    if (mprotect(reinterpret_cast<void*>(page), pageBytes, protection) != 0) {
        throw std::runtime_error("The system does not let a library's imports be replaced.");
    }
}

}  // namespace

std::vector<void**> ImportHook::placesOf(void* library, const char* name) {
    const link_map& map = mapOf(library);
    const Tables tables = tablesOf(map);
    std::vector<void**> places;
    for (const std::span<const ElfW(Rela)> relocations : {tables.functions, tables.others}) {
        for (const ElfW(Rela)& relocation : relocations) {
            if (names(tables, relocation, name)) {
                places.push_back(reinterpret_cast<void**>(map.l_addr + relocation.r_offset));
            }
        }
    }
    return places;
}

void ImportHook::write(void** place, void* value) {
    const bool isReadOnly = liesInReadOnlyPart(place);
    if (isReadOnly) {
        protect(place, PROT_READ | PROT_WRITE);
    }
    *place = value;
    if (isReadOnly) {
        protect(place, PROT_READ);
    }
}

}  // namespace hostkit
