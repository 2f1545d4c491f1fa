#include "hostkit/plugin/LibraryFile.h"

#include "hostkit/system/FileBytes.h"

#include <elf.h>

namespace hostkit {

namespace {

Elf64_Ehdr headerOf(const FileBytes& file) {
    const auto header = file.at<Elf64_Ehdr>(0);
    const bool isLibrary = std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
                           header.e_ident[EI_CLASS] == ELFCLASS64 && header.e_type == ET_DYN;
    if (!isLibrary || header.e_shentsize != sizeof(Elf64_Shdr)) {
        file.fail("is no 64-bit library of this system");
    }
    return header;
}

Elf64_Shdr sectionAt(const FileBytes& file, const Elf64_Ehdr& header, std::uint64_t index) {
    return file.at<Elf64_Shdr>(header.e_shoff + index * sizeof(Elf64_Shdr));
}

bool isExported(const Elf64_Sym& symbol) {
    const unsigned binding = ELF64_ST_BIND(symbol.st_info);
    const unsigned visibility = ELF64_ST_VISIBILITY(symbol.st_other);
    return symbol.st_shndx != SHN_UNDEF && (binding == STB_GLOBAL || binding == STB_WEAK) &&
           (visibility == STV_DEFAULT || visibility == STV_PROTECTED);
}

void addExports(const FileBytes& file, const Elf64_Shdr& symbols, const Elf64_Shdr& texts, LibraryFile& library) {
    for (std::uint64_t at = 0; at + sizeof(Elf64_Sym) <= symbols.sh_size; at += sizeof(Elf64_Sym)) {
        const auto symbol = file.at<Elf64_Sym>(symbols.sh_offset + at);
        if (isExported(symbol)) {
            library.exports.push_back(file.text(texts.sh_offset + symbol.st_name));
        }
    }
}

void addImports(const FileBytes& file, const Elf64_Shdr& entries, const Elf64_Shdr& texts, LibraryFile& library) {
    for (std::uint64_t at = 0; at + sizeof(Elf64_Dyn) <= entries.sh_size; at += sizeof(Elf64_Dyn)) {
        const auto entry = file.at<Elf64_Dyn>(entries.sh_offset + at);
        if (entry.d_tag == DT_NEEDED) {
            library.imports.push_back(file.text(texts.sh_offset + entry.d_un.d_val));
        }
    }
}

}  // namespace

LibraryFile readLibraryFile(const std::filesystem::path& path) {
    const FileBytes file(path);
    const Elf64_Ehdr header = headerOf(file);
    LibraryFile library;
    for (std::uint64_t index = 0; index < header.e_shnum; ++index) {
        const Elf64_Shdr section = sectionAt(file, header, index);
        if (section.sh_type == SHT_DYNSYM) {
            addExports(file, section, sectionAt(file, header, section.sh_link), library);
        } else if (section.sh_type == SHT_DYNAMIC) {
            addImports(file, section, sectionAt(file, header, section.sh_link), library);
        }
    }
    std::sort(library.exports.begin(), library.exports.end());
    return library;
}

}  // namespace hostkit
