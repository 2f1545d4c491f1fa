// The page for editors describes each damaged file as the catalogue does, which is compared with the plug-in.
#include "damage/catalogue/Catalogue.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace damage {

namespace {

std::vector<std::string> rowsOf(const std::string& path) {
    std::ifstream page(path);
    std::vector<std::string> rows;
    for (std::string line; std::getline(page, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (line.starts_with("| `")) {
            rows.push_back(line);
        }
    }
    return rows;
}

// All cells except the last one, which is advice.
std::string rowOf(const DamagedFile& file) {
    std::string logged;
    for (const char* line : file.logged) {
        logged += std::string(logged.empty() ? "" : ", ") + "`" + line + "`";
    }
    return std::string("| `") + file.name + "` | " + file.what + " | " + file.seen + " | " + logged + " | ";
}

TEST(Page, HasARowForEachFileWithWhatIsSeenAndLogged) {
    const std::vector<std::string> rows = rowsOf(DAMAGED_FILES_PAGE);
    const std::vector<DamagedFile> files = damagedFiles();
    for (std::size_t i = 0; i < files.size(); ++i) {
        ASSERT_LT(i, rows.size()) << "no row for " << files[i].name;
        EXPECT_TRUE(rows[i].starts_with(rowOf(files[i]))) << rows[i] << "\nshould begin with\n" << rowOf(files[i]);
        EXPECT_GT(rows[i].size(), rowOf(files[i]).size() + 2) << files[i].name << " has no advice";
    }
    EXPECT_EQ(rows.size(), files.size());
}

}  // namespace

}  // namespace damage
