#include "FakeClip.h"

#include <stdexcept>

using namespace hostkit;

namespace {

std::string loadError(const std::filesystem::path& path) {
    try {
        const PluginLibrary library(path);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

std::string fakeName() { return fakes::importerPath().filename().string(); }

TEST(PluginLibrary, FindsTheEntry) {
    const PluginLibrary library(fakes::importerPath());
    EXPECT_NE(library.entry(), nullptr);
    EXPECT_EQ(library.symbol("xImportEntry"), reinterpret_cast<void*>(library.entry()));
    EXPECT_EQ(library.symbol("xNoSuchEntry"), nullptr);
}

TEST(PluginLibrary, AMissingFileIsAnError) {
    const std::string error = loadError("no such folder/none.prm");
    EXPECT_NE(error.find("none.prm' cannot be loaded ("), std::string::npos) << error;
}

TEST(PluginLibrary, AFileThatIsNoLibraryIsAnError) {
    const fakes::TemporaryFile file(u8"text.prm", "this is no library");
    const std::string error = loadError(file.path());
    EXPECT_NE(error.find("text.prm' cannot be loaded ("), std::string::npos) << error;
}

TEST(PluginLibrary, IsUnloadedByItsDestructor) {
    EXPECT_FALSE(PluginLibrary::isLoaded(fakeName()));
    {
        const PluginLibrary library(fakes::importerPath());
        EXPECT_TRUE(PluginLibrary::isLoaded(fakeName()));
    }
    EXPECT_FALSE(PluginLibrary::isLoaded(fakeName()));
}

TEST(PluginLibrary, FindsSymbolsByTheFileName) {
    const PluginLibrary library(fakes::importerPath());
    EXPECT_EQ(PluginLibrary::symbolOfLoadedLibrary(fakeName(), "xImportEntry"),
              reinterpret_cast<void*>(library.entry()));
}

TEST(PluginLibrary, SymbolsOfAnUnloadedLibraryAreNull) {
    EXPECT_EQ(PluginLibrary::symbolOfLoadedLibrary(fakeName(), "xImportEntry"), nullptr);
}

}  // namespace
