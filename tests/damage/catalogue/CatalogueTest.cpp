// Imports every file of the catalogue through the exported entry: checks what an editor sees, what the log says, and
// that a good file imports afterwards as usual.
#include "damage/catalogue/Catalogue.h"
#include "damage/catalogue/Sighting.h"

#include "damage/catalogue/FilesOnDisk.h"
#include "log/PluginRun.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

namespace damage {

// For the name of a failed test.
static void PrintTo(const DamagedFile& file, std::ostream* out) { *out << file.name; }

namespace {

using Lines = std::vector<std::string>;

constexpr const char* kGoodSight = "10 pictures, all right; 19200 samples of sound, all right";

class Catalogue : public testing::TestWithParam<DamagedFile> {
protected:
    TempFolder m_folder;
    PluginRun m_plugin;
};

TEST_P(Catalogue, IsSeenAndLoggedAsDescribed) {
    const DamagedFile& file = GetParam();
    if (!canHold(m_folder.folder(), file.zerosAfter)) {
        GTEST_SKIP() << "a file of " << file.zerosAfter << " zeros cannot be created in the temporary folder";
    }
    const auto path = writeDamaged(m_folder.folder(), file);
    const auto good = writeBytes(m_folder.folder() / "good.avi", honestClip());
    m_plugin.session().start();

    EXPECT_EQ(sightOf(m_plugin.session(), path), file.seen);
    EXPECT_EQ(damageLines(m_plugin.messages()), Lines(file.logged.begin(), file.logged.end()));
    EXPECT_EQ(sightOf(m_plugin.session(), good), kGoodSight) << "a good file after it";
    EXPECT_EQ(sightOf(m_plugin.session(), path), file.seen) << "again";

    m_plugin.session().shutdown();
    EXPECT_EQ(m_plugin.host().problems(), Lines{});
}

std::string testNameOf(const testing::TestParamInfo<DamagedFile>& info) {
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Of, Catalogue, testing::ValuesIn(damagedFiles()), testNameOf);

}  // namespace

}  // namespace damage
