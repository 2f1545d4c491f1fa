#include "FakeClip.h"

#include "hostkit/plugin/LibraryFile.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

using namespace hostkit;

namespace {

std::string readError(const std::filesystem::path& path) {
    try {
        readLibraryFile(path);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST(LibraryFile, ListsTheExports) {
    const std::vector<std::string> exports = readLibraryFile(fakes::importerPath()).exports;
    EXPECT_NE(std::find(exports.begin(), exports.end(), "xImportEntry"), exports.end());
}

TEST(LibraryFile, ListsTheSystemsLibraryAmongTheImports) {
    const std::vector<std::string> imports = readLibraryFile(fakes::importerPath()).imports;
    EXPECT_TRUE(std::any_of(imports.begin(), imports.end(), [](const std::string& name) {
        return name == "libc.so.6" || name == "KERNEL32.dll";
    }));
}

TEST(LibraryFile, AMissingFileIsNamed) {
    EXPECT_NE(readError("no such folder/none.prm").find("none.prm' cannot be read."), std::string::npos);
}

TEST(LibraryFile, ATextIsNoLibrary) {
    const fakes::TemporaryFile file(u8"text.prm", std::string(4096, 'x'));
    EXPECT_NE(readError(file.path()).find("text.prm' is no 64-bit library of this system."), std::string::npos);
}

// A library that is truncated anywhere in its headers is refused, and never read past its end.
TEST(LibraryFile, ATruncatedLibraryIsRefused) {
    const std::string whole = bytesOf(fakes::importerPath());
    for (std::size_t size = 0; size < 512; size += 7) {
        const fakes::TemporaryFile file(u8"cut.prm", whole.substr(0, size));
        EXPECT_NE(readError(file.path()), "") << size;
    }
}

}  // namespace
