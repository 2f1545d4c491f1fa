// The parser on a file that fails as the script says, and then the same object on the whole file: there its result must
// be that of the plainest parser.
#include "targets/Target.h"

#include "fileio/SystemFile.h"
#include "support/Expect.h"
#include "support/FaultyDisk.h"
#include "support/HeapWatch.h"
#include "support/ParserChecks.h"
#include "tests/avi/LiteralParser.h"

#include <string>

namespace {

constexpr char kName[] = "fuzzed.avi";

// Longer files take the plain parser too long.
constexpr std::size_t kMostBytesToCompare = 16 * 1024;

bool parseWith(const fileio::FileFaults& faults, fuzz::ByteView bytes, AviParser& parser) {
    fuzz::FaultyDisk& disk = fuzz::FaultyDisk::instance();
    disk.put(kName, bytes);
    fileio::SystemFile file;
    fuzz::expect(file.open(kName, fileio::kOpenRead | fileio::kOpenShareRead), "the file does not open");
    disk.setFaults(faults);
    const auto claimedSize = static_cast<std::uint64_t>(file.size());
    fuzz::HeapWatch::start();
    const bool usable = parser.parse(file);
    fuzz::checkDescriptionMemory(fuzz::HeapWatch::peak(), bytes.size());
    fuzz::checkParsed(parser, claimedSize);
    disk.setFaults({});
    return usable;
}

void compareWithThePlainParser(const AviParser& parser, bool usable, fuzz::ByteView bytes) {
    if (bytes.size() > kMostBytesToCompare) {
        return;
    }
    fileio::SystemFile file;
    file.open(kName, fileio::kOpenRead | fileio::kOpenShareRead);
    std::string expected;
    try {
        expected = parseLiterally(file);
    } catch (const TooCostly&) {
        return;
    }
    if (const std::string found = describe(parser, usable); found != expected) {
        fuzz::fail("the parser found\n" + found + "but the plain one found\n" + expected);
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input = fuzz::splitInput({data, size});
    fuzz::Script script(input.script);
    const fileio::FileFaults faults = fuzz::readFaults(script, input.file.size());
    AviParser parser;
    if (!faults.none()) {
        parseWith(faults, input.file, parser);
    }
    const bool usable = parseWith({}, input.file, parser);
    compareWithThePlainParser(parser, usable, input.file);
    return 0;
}
