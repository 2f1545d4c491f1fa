// Every file of the catalogue, repaired and imported: what an editor sees of the new file.
#include "damage/catalogue/FilesOnDisk.h"
#include "damage/catalogue/Sighting.h"

#include "avirepair/Report.h"
#include "fileio/SystemFile.h"
#include "log/PluginRun.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>
#include <set>

namespace damage {

namespace {

// Zeros are read to their end: fewer of them show the same.
constexpr std::uint64_t kMostZeros = 16 << 20;

constexpr const char* kWholeClip = "10 pictures, all right; 19200 samples of sound, all right";

// Files that are whole afterwards.
const std::set<std::string> kRepaired = {
    "died-without-sizes", "died-without-riff-size", "died-without-media-size", "died-with-the-headers-size",
    "died-with-the-largest-sizes", "died-without-index", "died-before-zeros", "died-before-zeros-without-sizes",
    "died-in-the-second-segment", "wrong-riff-size", "beginning-is-missing", "idx1-from-the-file", "idx1-of-data",
    "idx1-past-the-end", "idx1-backwards", "idx1-of-one-place", "idx1-overlapping", "idx1-at-itself",
    "picture-cut-short", "picture-at-the-highest-offset", "picture-in-a-hole", "picture-of-a-hole",
    "all-pictures-dropped", "idx1-ragged", "idx1-empty", "idx1-in-a-hole", "idx1-of-other-streams",
    "idx1-with-exchanged-streams", "opendml-in-disorder", "opendml-of-one-place", "opendml-past-the-end",
    "opendml-below-zero", "opendml-at-itself", "opendml-without-a-size", "opendml-into-each-other",
    "opendml-exchanged", "opendml-claiming-more", "opendml-other-entries", "opendml-more-entries", "opendml-far-base",
    "opendml-negative-base", "opendml-entries-backwards", "opendml-entries-into-the-sound",
    "opendml-entries-into-each-other", "opendml-entry-at-its-index", "opendml-entry-at-itself", "opendml-in-a-hole",
    "opendml-runs-into-a-hole", "opendml-zeros", "headers-claiming-too-little", "stream-claiming-the-next",
    "header-padding-missing", "without-main-header", "short-main-header", "longest-sound", "sound-twice-as-long",
    "sound-of-no-length", "headers-claiming-2-gib-less-1", "headers-claiming-2-gib", "headers-claiming-4-gib-less-1",
    "main-header-claiming-2-gib-less-1", "main-header-claiming-2-gib", "main-header-claiming-4-gib-less-1",
    "stream-claiming-2-gib-less-1", "stream-claiming-2-gib", "stream-claiming-4-gib-less-1",
    "stream-header-claiming-2-gib-less-1", "stream-header-claiming-2-gib", "stream-header-claiming-4-gib-less-1",
    "format-claiming-2-gib-less-1", "format-claiming-2-gib", "format-claiming-4-gib-less-1",
    "super-index-claiming-2-gib-and-24", "super-index-claiming-4-gib-less-1", "media-claiming-2-gib-less-1",
    "media-claiming-2-gib", "media-claiming-4-gib-less-1", "picture-claiming-2-gib-less-1", "picture-claiming-2-gib",
    "picture-claiming-4-gib-less-1", "sound-claiming-2-gib-less-1", "sound-claiming-2-gib",
    "sound-claiming-4-gib-less-1", "opendml-picture-claiming-2-gib-less-1", "opendml-picture-claiming-2-gib",
    "opendml-picture-claiming-4-gib-less-1", "sound-first", "other-streams",
};

// Files that are whole afterwards with the headers of an honest clip.
const std::set<std::string> kRepairedLike = {
    "later-segment-alone", "without-headers", "no-streams", "stream-without-format", "short-stream-header",
    "sound-without-format", "format-without-extra-data", "format-of-nothing", "format-of-other-extra-data",
    "pictures-of-another-size", "pictures-of-the-largest-size", "sound-alone",
};

// Files of which a part is left: all that the broken one holds.
const std::map<std::string, std::string> kPartlyRepaired = {
    {"copy-of-1-percent", "1 picture, all right; 87 samples of sound, all right"},
    {"copy-of-5-percent", "1 picture, all right; 870 samples of sound, all right"},
    {"copy-of-25-percent", "3 pictures, all right; 4744 samples of sound, all right"},
    {"copy-of-50-percent", "5 pictures, all right; 9596 samples of sound, all right"},
    {"copy-of-75-percent", "8 pictures, all right; 14429 samples of sound, all right"},
    {"copy-of-95-percent", "10 pictures, all right; 18303 samples of sound, all right"},
    {"copy-of-99-percent", "10 pictures, all right; 19086 samples of sound, all right"},
    {"opendml-copy-of-5-percent", "1 picture, all right; 756 samples of sound, all right"},
    {"opendml-copy-of-25-percent", "3 pictures, all right; 4637 samples of sound, all right"},
    {"opendml-copy-of-50-percent", "5 pictures, all right; 9506 samples of sound, all right"},
    {"opendml-copy-of-75-percent", "8 pictures, all right; 14355 samples of sound, all right"},
    {"opendml-copy-of-95-percent", "10 pictures, all right; 18236 samples of sound, all right"},
    {"opendml-copy-of-99-percent", "10 pictures, all right; 19026 samples of sound, all right"},
};

// Whole too, of sound in 8 bits.
constexpr const char* kRepairedOf8Bits = "bits-8-twice-as-long";

const std::set<std::string> kWithoutMedia = {
    "opendml-copy-of-1-percent", "nothing", "zeros", "words", "sound-file",
};

// All others look as they did before.

std::string expectedSight(const DamagedFile& file) {
    const auto part = kPartlyRepaired.find(file.name);
    if (part != kPartlyRepaired.end()) {
        return part->second;
    }
    if (file.name == std::string(kRepairedOf8Bits)) {
        return "10 pictures, all right; 19200 samples of sound of 8 bits, all right";
    }
    return kRepaired.contains(file.name) || kRepairedLike.contains(file.name) ? kWholeClip
           : kWithoutMedia.contains(file.name)                                ? "nothing saved"
                                                                              : file.seen;
}

struct Repaired {
    std::optional<Bytes> file{};        // none when nothing can be saved
    int exitCode = 0;
};

void openForReading(fileio::SystemFile& file, const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    ASSERT_TRUE(file.open(reinterpret_cast<const char*>(name.c_str()), fileio::kOpenRead | fileio::kOpenShareRead));
}

Repaired repaired(const std::filesystem::path& path, const std::filesystem::path& like = {}) {
    fileio::SystemFile file, likeFile;
    openForReading(file, path);
    if (!like.empty()) {
        openForReading(likeFile, like);
    }
    const avirepair::Diagnosis found = avirepair::diagnose(file, like.empty() ? nullptr : &likeFile, {});
    const int exitCode = avirepair::exitCodeOf(found.plan);
    if (found.plan.isEmpty()) {
        return {std::nullopt, exitCode};
    }
    aviwriter::MemorySink sink;
    avirepair::writeRepaired(found.plan, file, sink, [](std::uint64_t) {});
    EXPECT_LE(sink.bytes().size(), avirepair::sizeOf(found.plan));
    return {sink.bytes(), exitCode};
}

class RepairOf : public testing::TestWithParam<DamagedFile> {
protected:
    std::string sightOfFile(const std::filesystem::path& path) {
        m_plugin.session().start();
        const std::string sight = sightOf(m_plugin.session(), path);
        m_plugin.session().shutdown();
        return sight;
    }

    TempFolder m_folder;
    PluginRun m_plugin;
};

TEST_P(RepairOf, SavesWhatTheFileHolds) {
    DamagedFile file = GetParam();
    file.zerosAfter = std::min(file.zerosAfter, kMostZeros);
    const auto path = writeDamaged(m_folder.folder(), file);
    const bool needsLike = kRepairedLike.contains(file.name);
    const auto like = needsLike ? writeBytes(m_folder.folder() / "like.avi", honestClip()) : std::filesystem::path();

    const Repaired first = repaired(path, like);
    EXPECT_EQ(first.exitCode, kWithoutMedia.contains(file.name) ? 1 : kPartlyRepaired.contains(file.name) ? 3 : 0);
    if (!first.file) {
        EXPECT_EQ("nothing saved", expectedSight(file));
        return;
    }
    const auto once = writeBytes(m_folder.folder() / "once.avi", *first.file);
    EXPECT_EQ(sightOfFile(once), expectedSight(file));
    const Repaired again = repaired(once);
    EXPECT_EQ(again.file, first.file) << "a repaired file changes when it is repaired";
    EXPECT_EQ(again.exitCode, 0);
}

std::string repairNameOf(const testing::TestParamInfo<DamagedFile>& info) {
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Files, RepairOf, testing::ValuesIn(damagedFiles()), repairNameOf);

// What the page advises in its last column.
std::map<std::string, std::string> advice() {
    std::ifstream page(DAMAGED_FILES_PAGE);
    std::map<std::string, std::string> advice;
    for (std::string line; std::getline(page, line);) {
        line.erase(std::find(line.begin(), line.end(), '\r'), line.end());
        if (line.starts_with("| `")) {
            const std::size_t cell = line.rfind(" | ");
            advice[line.substr(3, line.find('`', 3) - 3)] = line.substr(cell + 3, line.size() - cell - 5);
        }
    }
    return advice;
}

TEST(RepairAdvice, IsAvirepairWhereItHelpsAndNothingElse) {
    const std::map<std::string, std::string> page = advice();
    for (const DamagedFile& file : damagedFiles()) {
        const std::string text = page.at(file.name);
        const bool helpsAlone = kRepaired.contains(file.name) || kPartlyRepaired.contains(file.name) ||
                                file.name == std::string(kRepairedOf8Bits);
        EXPECT_EQ(text.find("`avirepair`") != std::string::npos, helpsAlone) << file.name << ": " << text;
        EXPECT_EQ(text.find("`avirepair --like`") != std::string::npos, kRepairedLike.contains(file.name))
            << file.name << ": " << text;
        EXPECT_EQ(text.find("new index"), std::string::npos) << file.name << ": " << text;
    }
}

}  // namespace

}  // namespace damage
