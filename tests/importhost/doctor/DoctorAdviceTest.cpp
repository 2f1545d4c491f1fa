// What importhost doctor advises, and the page that it prints.
#include "importhost/doctor/Diagnosis.h"

#include "hostkit/plugin/PluginLibrary.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace importhost::doctor;
using std::filesystem::path;
using Texts = std::vector<std::string>;

constexpr FileVersion kProgram = {{1, 2, 0, 0}};

Examined goodCopy(const path& file, const FileVersion& version = kProgram) {
    Examined examined;
    examined.copy = {file, "", version, true, true, ""};
    examined.codec = CodecFile{"codec/c.dll", "", FileVersion{{3, 1, 0, 0}}, "Quorvane codec"};
    return examined;
}

// One host with the plug-in where it looks.
Facts goodFacts() {
    Facts facts;
    facts.system = "Windows 10 Pro, build 19045";
    facts.hostRunsHere = true;
    facts.folders = {{"common", "22.0", true}};
    facts.copies = {goodCopy("common/ImporterQuorvane.prm")};
    facts.log.folder = "profile/quorvane/adobe";
    return facts;
}

// Replaces the system's separators by slashes.
Texts advice(const Facts& facts) {
    Texts texts = thingsToFix(facts, kProgram);
    for (std::string& text : texts) {
        std::replace(text.begin(), text.end(), '\\', '/');
    }
    return texts;
}

std::string usualName() { return hostkit::PluginLibrary::usualFileName(); }

TEST(DoctorAdvice, ThereIsNoneIfAllIsWell) { EXPECT_EQ(advice(goodFacts()), Texts{}); }

TEST(DoctorAdvice, AMachineWithoutTheHostNeedsOne) {
    Facts facts = goodFacts();
    facts.folders[0].hostVersion = "";
    EXPECT_EQ(advice(facts), Texts{"No Premiere Pro is registered on this machine; the usual folder was looked at. "
                                   "Install Premiere Pro, or repair its installation."});
}

TEST(DoctorAdvice, AMissingPluginIsToBeInstalled) {
    Facts facts = goodFacts();
    facts.copies.clear();
    EXPECT_EQ(advice(facts), Texts{"The plug-in is not where Premiere Pro 22.0 looks. Run the setup of the plug-in, or "
                                   "copy " + usualName() + " to common."});
}

TEST(DoctorAdvice, APluginForAnOlderHostMissesTheNewest) {
    Facts facts = goodFacts();
    facts.folders = {{"new", "22.0", true}, {"common", "11.0", true}};
    EXPECT_EQ(advice(facts), Texts{"The plug-in is not where Premiere Pro 22.0 looks. Run the setup of the plug-in, or "
                                   "copy " + usualName() + " to new."});
}

TEST(DoctorAdvice, AFolderOfARemovedHostIsNoFault) {
    Facts facts = goodFacts();
    facts.folders.insert(facts.folders.begin(), PluginFolder{"gone", "23.0", false});
    EXPECT_EQ(advice(facts), Texts{});
}

TEST(DoctorAdvice, NoFolderIsAFault) {
    Facts facts = goodFacts();
    facts.folders[0].exists = false;
    facts.copies.clear();
    EXPECT_EQ(advice(facts), Texts{"The folder for plug-ins does not exist: common. Run the setup of the plug-in: it "
                                   "makes the folder."});
}

TEST(DoctorAdvice, OfSeveralCopiesTheNewestIsToBeKept) {
    Facts facts = goodFacts();
    facts.folders.push_back({"common2", "22.0", true});
    facts.copies = {goodCopy("common/a.prm", {{1, 0, 0, 0}}), goodCopy("common/sub/b.prm", kProgram),
                    goodCopy("common2/c.prm", {{1, 1, 0, 0}})};
    EXPECT_EQ(advice(facts), Texts{"Premiere Pro 22.0 finds 3 copies of the plug-in and may load an older one. Keep "
                                   "common/sub/b.prm, delete common/a.prm and common2/c.prm."});
}

TEST(DoctorAdvice, CopiesForDifferentHostsAreNoFault) {
    Facts facts = goodFacts();
    facts.folders.push_back({"old", "11.0", true});
    facts.copies.push_back(goodCopy("old/ImporterQuorvane.prm"));
    EXPECT_EQ(advice(facts), Texts{});
}

TEST(DoctorAdvice, AnOlderPluginThanThisProgramIsToBeReplaced) {
    Facts facts = goodFacts();
    facts.copies[0].copy.version = FileVersion{{1, 0, 0, 0}};
    EXPECT_EQ(advice(facts), Texts{"The plug-in is of version 1.0.0, older than this program's 1.2.0. Run the setup of "
                                   "version 1.2.0."});
}

TEST(DoctorAdvice, AMissingCodecIsToBeInstalled) {
    Facts facts = goodFacts();
    facts.copies[0].copy.loads = false;
    facts.copies[0].codec.reset();
    const Texts texts = advice(facts);
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_NE(texts[0].find("is not found, and without it the plug-in cannot be loaded. Install the Quorvane codec. "
                            "Then start Premiere Pro with the Shift key held"),
              std::string::npos) << texts[0];
}

TEST(DoctorAdvice, ACodecLibraryOfAnotherKindIsToBeReplaced) {
    Facts facts = goodFacts();
    facts.copies[0].copy.loads = false;
    facts.copies[0].codec->unreadable = "'c.dll' is no 64-bit library of this system.";
    EXPECT_EQ(advice(facts), Texts{"The codec library cannot be used: 'c.dll' is no 64-bit library of this system. "
                                   "Install the 64-bit Quorvane codec. Then start Premiere Pro with the Shift key "
                                   "held: it does not try again by itself."});
}

TEST(DoctorAdvice, APluginThatDoesNotLoadShowsTheReason) {
    Facts facts = goodFacts();
    facts.copies[0].copy.loads = false;
    facts.copies[0].copy.loadFailure = "It hangs.";
    EXPECT_EQ(advice(facts), Texts{"It hangs. Install the newest Quorvane codec and the newest plug-in. Then start "
                                   "Premiere Pro with the Shift key held: it does not try again by itself."});
}

TEST(DoctorAdvice, APluginWithoutAResourceIsToBeReplaced) {
    Facts facts = goodFacts();
    facts.copies[0].copy.hasImporterMark = false;
    EXPECT_EQ(advice(facts), Texts{"The host does not take common/ImporterQuorvane.prm for an importer: its resource "
                                   "IMPT 1000 is missing. Install the plug-in again."});
}

TEST(DoctorAdvice, AShortcutIsToBeReplacedByThePlugin) {
    Facts facts = goodFacts();
    facts.shortcuts = {"common/ImporterQuorvane.prm.lnk"};
    EXPECT_EQ(advice(facts), Texts{"A shortcut is not followed by the host: common/ImporterQuorvane.prm.lnk. Delete "
                                   "it, and copy the plug-in itself there."});
}

TEST(DoctorAdvice, AFileInPlaceOfTheLogFolderIsToBeMoved) {
    Facts facts = goodFacts();
    facts.log.blockedBy = "profile/quorvane";
    EXPECT_EQ(advice(facts), Texts{"No log can be written: profile/quorvane is a file where a folder must be. Move it "
                                   "away."});
}

TEST(DoctorAdvice, ANamedPluginIsCheckedWithoutTheFolders) {
    Facts facts = goodFacts();
    facts.folders = {{"common", "", false}};
    facts.copyWasNamed = true;
    EXPECT_EQ(advice(facts), Texts{});
}

TEST(DoctorPage, ShowsTheFactsAndWhatToFix) {
    Facts facts = goodFacts();
    facts.folders.push_back({"old", "11.0", false});
    facts.log.isOn = true;
    facts.log.newest = "profile/quorvane/adobe/a.log";
    facts.log.newestBytes = 17;
    std::string page = pageOf(facts, "1.2.0", {"One thing.", "Another."});
    std::replace(page.begin(), page.end(), '\\', '/');
    EXPECT_EQ(page, R"(importhost 1.2.0 doctor
Windows 10 Pro, build 19045

Where the host looks for plug-ins
  Premiere Pro 22.0
    common
  Premiere Pro 11.0
    old   (does not exist)

The plug-in
  common/ImporterQuorvane.prm
    version         1.2.0
    an importer     yes
    can be loaded   yes
    codec library   codec/c.dll
    codec's name    Quorvane codec
    codec's version 3.1.0

The log
    switch          on
    folder          profile/quorvane/adobe
    newest file     a.log, 17 bytes

To fix
  1. One thing.
  2. Another.
)");
}

}  // namespace
