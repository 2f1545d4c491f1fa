// The counter at the end of log file names: every load finds an unused name.
#include "log/PluginRun.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <thread>

namespace {

constexpr std::size_t kStampBegin = 21;   // after "quorvane_pr_importer_"
constexpr std::size_t kStampLength = 15;

// The time in the form of file names.
std::string stampAt(std::time_t time) {
    char text[32];
    return std::string(text, std::strftime(text, sizeof text, "%Y%m%d_%H%M%S", std::localtime(&time)));
}

// Loads the plug-in, calls it once and unloads it; returns the call's result.
csSDK_int32 loadAndCall(hostkit::Host& host) {
    const hostkit::PluginLibrary plugin(pluginPath());
    return plugin.entry()(kSelectorWithoutHandler, host.stdParms(), nullptr, nullptr);
}

std::string nameOf(const std::filesystem::path& file) { return file.filename().string(); }

// Everything that a load needs, in an order in which it can be destroyed.
struct Place {
    ProfileSandbox sandbox;
    hostkit::LogSwitch logSwitch;
    hostkit::PluginLog log;
    hostkit::Host host;
};

// Creates files with the counters 0 ... `count` - 1 of that second.
void takeNames(const Place& place, int count, std::time_t second) {
    std::filesystem::create_directories(place.sandbox.logFolder());
    const std::string stamp = stampAt(second);
    for (int counter = 0; counter < count; ++counter) {
        char name[64];
        std::snprintf(name, sizeof name, "quorvane_pr_importer_%s_%02d.log", stamp.c_str(), counter);
        std::ofstream(place.sandbox.logFolder() / name);
    }
}

bool isOfSecond(const std::filesystem::path& file, std::time_t second) {
    return nameOf(file).substr(kStampBegin, kStampLength) == stampAt(second);
}

// Runs a load in a second whose first `count` names exist, and returns the files that it wrote. Creates the files for a
// future second and waits for it; if the load still misses it, which its file's name shows, tries a later one.
std::vector<std::filesystem::path> filesBesideTakenNames(int count, csSDK_int32& result) {
    for (int seconds = 1; seconds <= 64; seconds *= 2) {
        Place place;
        const std::time_t second = std::time(nullptr) + seconds;
        takeNames(place, count, second);
        const hostkit::PluginLog log;
        // Into the second, not to its start: the clock that counts seconds may be a tick late.
        std::this_thread::sleep_until(std::chrono::system_clock::from_time_t(second) + std::chrono::milliseconds(50));
        result = loadAndCall(place.host);
        const std::vector<std::filesystem::path> files = log.newFiles();
        if (files.empty() || isOfSecond(files.front(), second)) {
            return files;
        }
    }
    ADD_FAILURE() << "No load ran in the prepared second.";
    return {};
}

TEST(LogNames, TwoLoadsInOneSecondCountUp) {
    for (int attempt = 0; attempt < 50; ++attempt) {
        Place place;
        loadAndCall(place.host);
        loadAndCall(place.host);
        const std::vector<std::filesystem::path> files = place.log.newFiles();
        ASSERT_EQ(files.size(), 2u);
        const std::string first = nameOf(files[0]);
        const std::string second = nameOf(files[1]);
        if (first.substr(kStampBegin, kStampLength) == second.substr(kStampBegin, kStampLength)) {
            EXPECT_EQ(first.substr(kStampBegin + kStampLength), "_00.log");
            EXPECT_EQ(second.substr(kStampBegin + kStampLength), "_01.log");
            return;
        }
    }
    FAIL() << "A second passed between the two loads in every attempt.";
}

TEST(LogNames, TheCounterGrowsBeyondTwoDigits) {
    csSDK_int32 result = -1;
    const std::vector<std::filesystem::path> files = filesBesideTakenNames(100, result);
    ASSERT_EQ(files.size(), 1u);
    EXPECT_TRUE(nameOf(files.front()).ends_with("_100.log")) << files.front();
}

TEST(LogNames, TheLastNameIsUsed) {
    csSDK_int32 result = -1;
    const std::vector<std::filesystem::path> files = filesBesideTakenNames(999, result);
    ASSERT_EQ(files.size(), 1u);
    EXPECT_TRUE(nameOf(files.front()).ends_with("_999.log")) << files.front();
}

TEST(LogNames, WithAllNamesTakenNothingIsLoggedAndCallsSucceed) {
    csSDK_int32 result = -1;
    EXPECT_EQ(filesBesideTakenNames(1000, result), std::vector<std::filesystem::path>{});
    EXPECT_EQ(result, imUnsupported);
}

TEST(LogNames, ExistingFilesAreLeftUnchanged) {
    Place place;
    const std::time_t now = std::time(nullptr);
    for (int second = 0; second < 64; ++second) {
        takeNames(place, 1, now + second);
    }
    loadAndCall(place.host);
    for (int second = 0; second < 64; ++second) {
        const std::string name = "quorvane_pr_importer_" + stampAt(now + second) + "_00.log";
        EXPECT_EQ(std::filesystem::file_size(place.sandbox.logFolder() / name), 0u) << name;
    }
}

}  // namespace
