// What importhost doctor gathers: versions, folders, copies, the log.
#include "importhost/doctor/Collect.h"
#include "importhost/doctor/Search.h"
#include "support/TempFolder.h"

#include <fstream>

namespace {

using namespace importhost::doctor;
using std::filesystem::path;

void writeFile(const path& file, const std::string& text = "") {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
}

TEST(DoctorVersion, IsComparedNumberByNumber) {
    EXPECT_LT(versionOf("9.0"), versionOf("22.0"));
    EXPECT_LT(versionOf("1.9.9"), versionOf("1.10"));
    EXPECT_EQ(versionOf("1.2"), versionOf("1.2.0.0"));
}

TEST(DoctorVersion, TextCountsAsZero) { EXPECT_EQ(versionOf("beta.3"), (FileVersion{{0, 3, 0, 0}})); }

TEST(DoctorVersion, ShowsAFourthNumberOnlyIfNotZero) {
    EXPECT_EQ(asText(FileVersion{{1, 2, 3, 0}}), "1.2.3");
    EXPECT_EQ(asText(FileVersion{{1, 2, 3, 4}}), "1.2.3.4");
}

hostkit::LibraryFile fileWithVersion() {
    std::vector<std::uint8_t> bytes = {0, 0, 0, 0, 0xBD, 0x04, 0xEF, 0xFE, 0, 0,
                                       1, 0, 2, 0, 1, 0, 4, 0, 3, 0, 0, 0, 0, 0};
    for (const char16_t unit : std::u16string(u"FileDescription\0\0Codec\0", 23)) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    return {{}, {}, std::vector<hostkit::LibraryResource>{{"IMPT", "#1000", {}}, {"#16", "#1", bytes}}};
}

TEST(DoctorVersion, IsReadFromTheFixedPartOfTheResource) {
    EXPECT_EQ(fileVersion(fileWithVersion()), (FileVersion{{1, 2, 3, 4}}));
}

TEST(DoctorVersion, OfAFileWithoutResourcesIsUnknown) {
    EXPECT_EQ(fileVersion({}), std::nullopt);
    EXPECT_EQ(fileDescription({}), "");
}

TEST(DoctorVersion, OfATruncatedResourceIsUnknown) {
    hostkit::LibraryFile file = fileWithVersion();
    (*file.resources)[1].bytes.resize(19);
    EXPECT_EQ(fileVersion(file), std::nullopt);
    EXPECT_EQ(fileDescription(file), "");
}

TEST(DoctorVersion, TheDescriptionFollowsItsName) { EXPECT_EQ(fileDescription(fileWithVersion()), "Codec"); }

TEST(DoctorFolders, TheNewestHostComesFirst) {
    const auto folders = pluginFolders({{"9.0", "a"}, {"22.0", "b"}, {"11.0", "c"}}, "usual");
    ASSERT_EQ(folders.size(), 3U);
    EXPECT_EQ(folders[0].hostVersion, "22.0");
    EXPECT_EQ(folders[2].hostVersion, "9.0");
    EXPECT_FALSE(folders[0].exists);
}

TEST(DoctorFolders, WithoutAHostUsesTheDefault) {
    const auto folders = pluginFolders({}, "usual");
    ASSERT_EQ(folders.size(), 1U);
    EXPECT_EQ(folders[0].path, "usual");
    EXPECT_EQ(folders[0].hostVersion, "");
}

TEST(DoctorFolders, TheSpellingThatExistsIsTaken) {
    const TempFolder place;
    std::filesystem::create_directories(place.folder() / "Plugins" / "7.0");
    const auto folders = pluginFolders({{"22.0", place.folder() / "Plug-ins" / "7.0" / ""}}, "usual");
    ASSERT_EQ(folders.size(), 1U);
    EXPECT_EQ(folders[0].path, place.folder() / "Plugins" / "7.0");
    EXPECT_TRUE(folders[0].exists);
}

TEST(DoctorFolders, BothSpellingsAreSearchedIfBothExist) {
    const TempFolder place;
    std::filesystem::create_directories(place.folder() / "Plugins");
    std::filesystem::create_directories(place.folder() / "Plug-ins");
    const auto folders = pluginFolders({{"22.0", place.folder() / "Plugins"}}, "usual");
    ASSERT_EQ(folders.size(), 2U);
    EXPECT_EQ(folders[1].path, place.folder() / "Plug-ins");
}

TEST(DoctorFolders, FindsCopiesInSubfoldersAndRenamedOnes) {
    const TempFolder place;
    for (const char* name : {"ImporterQuorvane.prm", "sub/importerquorvane.PRM", "Old Quorvane (2).prm",
                             "ImporterOther.prm", "ImporterQuorvane.prm.bak", "ImporterQuorvane.prm.lnk"}) {
        writeFile(place.folder() / name);
    }
    const FolderContent content = contentOf(place.folder());
    EXPECT_EQ(content.plugins, (std::vector<path>{place.folder() / "ImporterQuorvane.prm",
                                                  place.folder() / "Old Quorvane (2).prm",
                                                  place.folder() / "sub" / "importerquorvane.PRM"}));
    EXPECT_EQ(content.shortcuts, std::vector<path>{place.folder() / "ImporterQuorvane.prm.lnk"});
}

TEST(DoctorFolders, AMissingFolderHasNoCopies) { EXPECT_TRUE(contentOf("missing").plugins.empty()); }

TEST(DoctorLog, TheNewestFileIsTheLastByName) {
    const TempFolder place;
    const path folder = place.folder() / "quorvane" / "adobe";
    writeFile(folder / "quorvane_pr_importer_20261120_143048_00.log", "12345");
    writeFile(folder / "quorvane_pr_importer_20261119_143048_00.log");
    writeFile(folder / "zz.txt");
    const LogState log = logState(true, folder);
    EXPECT_EQ(log.newest, folder / "quorvane_pr_importer_20261120_143048_00.log");
    EXPECT_EQ(log.newestBytes, 5U);
    EXPECT_EQ(log.blockedBy, std::nullopt);
}

TEST(DoctorLog, AMissingFolderIsNoFault) {
    const TempFolder place;
    const LogState log = logState(true, place.folder() / "quorvane" / "adobe");
    EXPECT_EQ(log.newest, std::nullopt);
    EXPECT_EQ(log.blockedBy, std::nullopt);
}

TEST(DoctorLog, AFileInPlaceOfTheFolderIsAFault) {
    const TempFolder place;
    writeFile(place.folder() / "quorvane");
    EXPECT_EQ(logState(true, place.folder() / "quorvane" / "adobe").blockedBy, place.folder() / "quorvane");
}

}  // namespace
