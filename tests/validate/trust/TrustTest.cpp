// Every check must fail for a wrong plug-in: a check that cannot fail proves nothing.
#include "TrustRow.h"

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/system/ChildProcess.h"
#include "hostkit/system/Text.h"
#include "importhost/validate/run/CheckGroups.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

using importhost::validate::CheckGroup;
using importhost::validate::checkGroups;

std::vector<TrustRow> allRows() {
    const std::span<const TrustRow> groups[] = {
        libraryTrust(), systemLibraryTrust(), protocolTrust(), frameTrust(), audioTrust(), asyncTrust(),
        refusingHostTrust(), codecTrust(), diskTrust(), exceptionTrust(), stateTrust(), measureTrust()};
    std::vector<TrustRow> rows;
    for (const std::span<const TrustRow> group : groups) {
        rows.insert(rows.end(), group.begin(), group.end());
    }
    return rows;
}

// A fault has its own library, or is one of the wrong plug-in's.
std::filesystem::path pluginOf(std::string_view fault) {
    const std::filesystem::path folder = hostkit::PluginLibrary::programFolder();
    const std::filesystem::path own = folder / (std::string(fault) + WRONG_PLUGIN_SUFFIX);
    return std::filesystem::exists(own) ? own : folder / ("WrongPlugin" WRONG_PLUGIN_SUFFIX);
}

std::string levelOf(std::string_view check) {
    const importhost::validate::Check* found = importhost::validate::findCheck(check);
    return std::to_string(found ? found->level : 1);
}

// A check that must crash or take too long needs its own process; the others save one.
hostkit::ChildResult validate(const TrustRow& row) {
    const EnvironmentVariable chosen("WRONG_PLUGIN", std::string(row.fault));
    std::vector<std::string> arguments = {"--plugin", hostkit::toUtf8(pluginOf(row.fault)), "validate", "--only",
                                          std::string(row.check), "--level", levelOf(row.check), "--seed", "1"};
    if (row.verdict == "FAIL" || row.verdict == "warn") {
        arguments.push_back("--in-process");
    } else if (row.verdict == "TIMEOUT") {
        arguments.insert(arguments.end(), {"--time-limit", "5"});
    }
    return hostkit::runProgram(hostkit::PluginLibrary::programFolder() / IMPORTHOST_FILE_NAME, arguments);
}

std::string testName(const testing::TestParamInfo<TrustRow>& info) {
    std::string name = std::string(info.param.check) + "__" + std::string(info.param.fault);
    std::replace_if(name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

class WrongPlugin : public testing::TestWithParam<TrustRow> {};

TEST_P(WrongPlugin, IsCaughtByTheCheckMeantForIt) {
    const hostkit::ChildResult result = validate(GetParam());
    EXPECT_NE(result.output.find(std::string("\n").append(GetParam().verdict)), std::string::npos)
        << "status " << result.exitCode << '\n' << result.output << result.errors;
    EXPECT_NE(result.output.find(GetParam().words), std::string::npos) << result.output << result.errors;
    EXPECT_EQ(result.exitCode, GetParam().verdict == "warn" ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Trust, WrongPlugin, testing::ValuesIn(allRows()), testName);

TEST(Trust, EveryCheckHasAWrongPlugin) {
    std::set<std::string_view> caught;
    for (const TrustRow& row : allRows()) {
        caught.insert(row.check);
    }
    for (const CheckGroup& group : checkGroups()) {
        for (const importhost::validate::Check& check : group.checks) {
            EXPECT_TRUE(caught.contains(check.id)) << check.id << " catches nothing";
        }
    }
}

TEST(Trust, EveryRowNamesACheck) {
    for (const TrustRow& row : allRows()) {
        EXPECT_NE(importhost::validate::findCheck(row.check), nullptr) << row.check;
    }
}

// Otherwise a row could pass because of another fault.
TEST(Trust, WithoutAFaultTheWrongPluginPasses) {
    const hostkit::ChildResult result =
        hostkit::runProgram(hostkit::PluginLibrary::programFolder() / IMPORTHOST_FILE_NAME,
                            {"--plugin", hostkit::toUtf8(pluginOf("none")), "validate", "--level", "3"});
    EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
}

}  // namespace
