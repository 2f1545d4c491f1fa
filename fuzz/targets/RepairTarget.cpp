// The repair, over a file that fails as the script says, and then over the whole file: the new file must be one that
// the parser reads without a complaint, with as many chunks as were planned; repaired again it changes at most once.
#include "targets/Target.h"

#include "avi/AviParser.h"
#include "avirepair/Repair.h"
#include "fileio/SystemFile.h"
#include "support/Expect.h"
#include "support/FaultyDisk.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>

namespace {

constexpr char kName[] = "fuzzed.avi";
constexpr char kRepairedName[] = "repaired.avi";

// The whole file is filled in at most once more, and some.
constexpr std::uint64_t kMostSilence = 5 << 20;
constexpr std::uint64_t kMostBytesForAByte = 40;

std::uint64_t chunksOf(const avirepair::Plan& plan, std::size_t stream) {
    return static_cast<std::uint64_t>(
        std::count_if(plan.chunks.begin(), plan.chunks.end(),
                      [stream](const avirepair::PlannedChunk& chunk) { return chunk.stream == stream; }));
}

void checkRepaired(const avirepair::Plan& plan, fuzz::ByteView bytes) {
    fuzz::FaultyDisk::instance().put(kRepairedName, bytes);
    fileio::SystemFile file;
    fuzz::expect(file.open(kRepairedName, fileio::kOpenRead), "the repaired file does not open");
    AviParser parser;
    fuzz::expect(parser.parse(file), "the repaired file is not usable");
    fuzz::expect(parser.errorText().empty(), "the repaired file is not sound");
    fuzz::expect(parser.streams().size() == plan.streams.size(), "the repaired file has other streams");
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        fuzz::expect(parser.streams()[i]->chunkCount() == chunksOf(plan, i), "the repaired file has other chunks");
    }
}

// None when nothing can be saved, or the disk fails.
std::optional<fuzz::Bytes> repaired(fuzz::ByteView bytes, const fileio::FileFaults& faults,
                                    const avirepair::Options& options) {
    fuzz::FaultyDisk::instance().put(kName, bytes);
    fileio::SystemFile file;
    fuzz::expect(file.open(kName, fileio::kOpenRead), "the file does not open");
    fuzz::FaultyDisk::instance().setFaults(faults);
    std::optional<fuzz::Bytes> result;
    try {
        const avirepair::Diagnosis found = avirepair::diagnose(file, nullptr, options);
        const std::uint64_t size = avirepair::sizeOf(found.plan);
        fuzz::expect(found.plan.bytes <= kMostSilence + kMostBytesForAByte * bytes.size(), "the new file is too large");
        if (!found.plan.isEmpty()) {
            aviwriter::MemorySink sink;
            avirepair::writeRepaired(found.plan, file, sink, [](std::uint64_t) {});
            fuzz::expect(sink.bytes().size() <= size, "the new file is larger than expected");
            fuzz::FaultyDisk::instance().setFaults({});
            checkRepaired(found.plan, sink.bytes());
            result = sink.bytes();
        }
    } catch (const std::runtime_error&) {
        fuzz::expect(!faults.none(), "a repair fails without a fault of the disk");
    }
    fuzz::FaultyDisk::instance().setFaults({});
    return result;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input = fuzz::splitInput({data, size});
    fuzz::Script script(input.script);
    const fileio::FileFaults faults = fuzz::readFaults(script, input.file.size());
    const avirepair::Options options = {.closesGaps = script.below(2) == 1, .takesAll = script.below(2) == 1};
    if (!faults.none()) {
        repaired(input.file, faults, options);
    }
    const std::optional<fuzz::Bytes> first = repaired(input.file, {}, options);
    const std::optional<fuzz::Bytes> second = first ? repaired(*first, {}, {}) : std::nullopt;
    const std::optional<fuzz::Bytes> third = second ? repaired(*second, {}, {}) : std::nullopt;
    fuzz::expect(second.has_value() == first.has_value() && third == second, "repairing does not come to an end");
    return 0;
}
