// What the plug-in's file says of itself, before it is loaded.
#include "importhost/validate/checks/library/AllowedImports.h"
#include "importhost/validate/checks/library/LibraryParts.h"
#include "importhost/validate/framework/Wildcard.h"

#include "hostkit/plugin/LibraryFile.h"

#include <algorithm>

namespace importhost::validate {

namespace {

constexpr std::string_view kEntry = "xImportEntry";

// Of the resource by which the host knows an importer: a 16-bit 0 and a 32-bit code, lowest byte first.
constexpr std::string_view kResourceType = "IMPT";
constexpr std::string_view kResourceName = "#1000";
constexpr std::size_t kResourceBytes = 6;
constexpr std::uint32_t kReservedCode = 0x4D4F6F76;

std::string inSmallLetters(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c); });
    return text;
}

bool isAllowed(const std::string& library) {
    const std::string name = inSmallLetters(library);
    const auto allowed = allowedImports();
    return std::any_of(allowed.begin(), allowed.end(),
                       [&](std::string_view pattern) { return fitsWildcard(name, pattern); });
}

void expectImporterCode(CheckRun& run, const std::vector<std::uint8_t>& bytes) {
    if (!run.expectEqual("the bytes of resource IMPT 1000", bytes.size(), kResourceBytes)) {
        return;
    }
    std::uint32_t code = 0;
    for (std::size_t i = kResourceBytes; i > 2; --i) {
        code = code << 8 | bytes[i - 1];
    }
    run.expectEqual("the first word of resource IMPT 1000", bytes[0] + 256 * bytes[1], 0);
    run.expect(code != 0 && code != kReservedCode, "the code in resource IMPT 1000 is missing or the host's own");
}

}  // namespace

void libraryExports(CheckRun& run) {
    bool hasEntry = false;
    for (const std::string& name : hostkit::readLibraryFile(run.plugin()).exports) {
        hasEntry = hasEntry || name == kEntry;
        run.expect(name == kEntry, "it exports '" + name + "' beside its entry");
    }
    run.expect(hasEntry, "it does not export 'xImportEntry'");
}

void libraryImports(CheckRun& run) {
    for (const std::string& library : hostkit::readLibraryFile(run.plugin()).imports) {
        run.expect(isAllowed(library), "it is loaded with '" + library +
                                           "', neither the codec's library nor one that an importer can count on");
    }
}

void libraryResource(CheckRun& run) {
    const hostkit::LibraryFile library = hostkit::readLibraryFile(run.plugin());
    if (!library.resources) {
        run.skip("libraries of this system have no resources");
    }
    for (const hostkit::LibraryResource& resource : *library.resources) {
        if (resource.type == kResourceType && resource.name == kResourceName) {
            expectImporterCode(run, resource.bytes);
            return;
        }
    }
    run.fail("it has no resource IMPT 1000");
}

}  // namespace importhost::validate
