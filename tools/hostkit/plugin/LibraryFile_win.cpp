#include "hostkit/plugin/LibraryFile.h"

#include "hostkit/system/FileBytes.h"

#include <windows.h>

namespace hostkit {

namespace {

// A file of an executable's layout, addressed as it would lie in memory.
class Image {
public:
    explicit Image(const FileBytes& file) : m_file(file) {
        const auto dos = file.at<IMAGE_DOS_HEADER>(0);
        if (dos.e_magic != IMAGE_DOS_SIGNATURE || dos.e_lfanew < 0) {
            refuse();
        }
        m_headers = static_cast<std::uint64_t>(dos.e_lfanew);
        m_header = file.at<IMAGE_NT_HEADERS64>(m_headers);
        if (m_header.Signature != IMAGE_NT_SIGNATURE || (m_header.FileHeader.Characteristics & IMAGE_FILE_DLL) == 0 ||
            m_header.OptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR64_MAGIC) {
            refuse();
        }
    }

    IMAGE_DATA_DIRECTORY directory(std::size_t index) const { return m_header.OptionalHeader.DataDirectory[index]; }

    template <class Record>
    Record at(std::uint64_t address) const {
        return m_file.at<Record>(offsetOf(address));
    }
    std::string text(std::uint64_t address) const { return m_file.text(offsetOf(address)); }
    std::vector<std::uint8_t> part(std::uint64_t address, std::uint64_t size) const {
        return m_file.part(offsetOf(address), size);
    }

private:
    [[noreturn]] void refuse() const { m_file.fail("is no 64-bit library of this system"); }

    std::uint64_t offsetOf(std::uint64_t address) const {
        const std::uint64_t sections =
            m_headers + offsetof(IMAGE_NT_HEADERS64, OptionalHeader) + m_header.FileHeader.SizeOfOptionalHeader;
        for (std::uint64_t i = 0; i < m_header.FileHeader.NumberOfSections; ++i) {
            const auto section = m_file.at<IMAGE_SECTION_HEADER>(sections + i * sizeof(IMAGE_SECTION_HEADER));
            if (address >= section.VirtualAddress && address - section.VirtualAddress < section.SizeOfRawData) {
                return address - section.VirtualAddress + section.PointerToRawData;
            }
        }
        m_file.fail("is damaged: it points outside its sections");
    }

    const FileBytes& m_file;
    std::uint64_t m_headers = 0;
    IMAGE_NT_HEADERS64 m_header = {};
};

// --- Exports ----------------------------------------------------------------------------------------------------

std::vector<std::string> exportsOf(const Image& image) {
    std::vector<std::string> names;
    const IMAGE_DATA_DIRECTORY place = image.directory(IMAGE_DIRECTORY_ENTRY_EXPORT);
    if (place.VirtualAddress == 0) {
        return names;
    }
    const auto table = image.at<IMAGE_EXPORT_DIRECTORY>(place.VirtualAddress);
    image.part(table.AddressOfFunctions, table.NumberOfFunctions * sizeof(DWORD));   // no more than the file has
    std::vector<bool> isNamed(table.NumberOfFunctions, false);
    for (std::uint64_t i = 0; i < table.NumberOfNames; ++i) {
        names.push_back(image.text(image.at<DWORD>(table.AddressOfNames + i * sizeof(DWORD))));
        const auto function = image.at<WORD>(table.AddressOfNameOrdinals + i * sizeof(WORD));
        if (function < isNamed.size()) {
            isNamed[function] = true;
        }
    }
    for (std::uint64_t i = 0; i < isNamed.size(); ++i) {
        if (!isNamed[i] && image.at<DWORD>(table.AddressOfFunctions + i * sizeof(DWORD)) != 0) {
            names.push_back("#" + std::to_string(table.Base + i));
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

// --- Imports ----------------------------------------------------------------------------------------------------

// Both kinds of table end with a record of zeros and hold addresses of names.
template <class Record, DWORD Record::*Name>
void addImports(const Image& image, std::size_t directory, std::vector<std::string>& names) {
    const std::uint64_t start = image.directory(directory).VirtualAddress;
    for (std::uint64_t at = start; start != 0; at += sizeof(Record)) {
        const auto record = image.at<Record>(at);
        if (record.*Name == 0) {
            return;
        }
        names.push_back(image.text(record.*Name));
    }
}

std::vector<std::string> importsOf(const Image& image) {
    std::vector<std::string> names;
    addImports<IMAGE_IMPORT_DESCRIPTOR, &IMAGE_IMPORT_DESCRIPTOR::Name>(image, IMAGE_DIRECTORY_ENTRY_IMPORT, names);
    addImports<IMAGE_DELAYLOAD_DESCRIPTOR, &IMAGE_DELAYLOAD_DESCRIPTOR::DllNameRVA>(
        image, IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT, names);
    return names;
}

// --- Resources --------------------------------------------------------------------------------------------------

// The high bit of both numbers of an entry: named instead of numbered, and a further directory instead of data.
constexpr DWORD kHighBit = 0x80000000u;

// Resources lie in directories of three levels: type, name, language.
class Resources {
public:
    explicit Resources(const Image& image)
        : m_image(image), m_start(image.directory(IMAGE_DIRECTORY_ENTRY_RESOURCE).VirtualAddress) {}

    std::vector<LibraryResource> all() const {
        std::vector<LibraryResource> found;
        if (m_start == 0) {
            return found;
        }
        for (const Entry& type : entriesAt(0)) {
            for (const Entry& name : entriesAt(type.offset)) {
                for (const Entry& language : firstOf(entriesAt(name.offset))) {
                    found.push_back({type.name, name.name, dataAt(language.offset)});
                }
            }
        }
        return found;
    }

private:
    struct Entry {
        std::string name;
        std::uint64_t offset = 0;
    };

    static std::vector<Entry> firstOf(std::vector<Entry> entries) {
        entries.resize(std::min<std::size_t>(entries.size(), 1));
        return entries;
    }

    std::vector<Entry> entriesAt(std::uint64_t offset) const {
        const auto directory = m_image.at<IMAGE_RESOURCE_DIRECTORY>(m_start + offset);
        const std::uint64_t count = std::uint64_t{directory.NumberOfNamedEntries} + directory.NumberOfIdEntries;
        std::vector<Entry> entries;
        for (std::uint64_t i = 0; i < count; ++i) {
            const std::uint64_t at = m_start + offset + sizeof(directory) + i * 2 * sizeof(DWORD);
            entries.push_back({nameOf(m_image.at<DWORD>(at)), m_image.at<DWORD>(at + sizeof(DWORD)) & ~kHighBit});
        }
        return entries;
    }

    std::string nameOf(DWORD name) const {
        if ((name & kHighBit) == 0) {
            return "#" + std::to_string(name);
        }
        const std::uint64_t at = m_start + (name & ~kHighBit);
        std::u16string text(m_image.at<WORD>(at), u'\0');
        for (std::size_t i = 0; i < text.size(); ++i) {
            text[i] = static_cast<char16_t>(m_image.at<WORD>(at + sizeof(WORD) * (i + 1)));
        }
        return toUtf8(text);
    }

    std::vector<std::uint8_t> dataAt(std::uint64_t offset) const {
        const auto entry = m_image.at<IMAGE_RESOURCE_DATA_ENTRY>(m_start + offset);
        return m_image.part(entry.OffsetToData, entry.Size);
    }

    const Image& m_image;
    std::uint64_t m_start;
};

}  // namespace

LibraryFile readLibraryFile(const std::filesystem::path& path) {
    const FileBytes file(path);
    const Image image(file);
    return {exportsOf(image), importsOf(image), Resources(image).all()};
}

}  // namespace hostkit
