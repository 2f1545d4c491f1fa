// Opens, describes, plays (also asynchronously), quiets, reopens and closes thousands of clips, good and damaged, as an
// editor does in a long day: each visit sees the same as the first one, and nothing is leaked. Compares counts, never
// times.
#include "damage/catalogue/Catalogue.h"
#include "damage/catalogue/FilesOnDisk.h"
#include "damage/catalogue/Sighting.h"
#include "damage/long/HeldMemory.h"

#include "hostkit/sessions/AsyncSession.h"
#include "hostkit/sessions/Names.h"
#include "hostkit/system/ProcessSize.h"
#include "log/PluginRun.h"
#include "standin/Control.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <random>

namespace damage {

namespace {

using hostkit::AsyncSession;
using hostkit::ClipSession;

constexpr unsigned kSeed = 20261120;
constexpr PrTime kMiddle = 4 * kTicksPerPicture;

// The number of rounds; the environment variable allows longer runs by hand.
int rounds() {
    const char* wanted = std::getenv("QUORVANE_SOAK_ROUNDS");
    return wanted ? std::atoi(wanted) : SOAK_ROUNDS;
}

struct Held {
    std::uint64_t bytes = heldMemory();
    std::uint64_t handles = hostkit::processSize().handles;
};

// Prints the counts, for longer runs.
void printHeld(const char* when, const Held& held) {
    std::cout << when << ": " << (SOAK_COMPARES_MEMORY ? std::to_string(held.bytes) : "uncounted")
              << " bytes of memory, " << held.handles << " handles\n";
}

const std::vector<imFrameFormat>& anyFormat() {
    static const std::vector<imFrameFormat> format = {{0, 0, PrPixelFormat_VUYX_4444_8u}};
    return format;
}

class Soak : public testing::Test {
protected:
    struct Visited {
        std::filesystem::path path;
        std::string seen;               // in the first visit
    };

    Soak() : m_plugin({}, false) {
        m_plugin.session().start();
        m_suitesAtRest = m_plugin.host().suitesHeld();
        m_blocksAtRest = m_plugin.host().memory().aliveBlocks();
    }

    void addFiles() {
        m_files.push_back({writeBytes(m_folder.folder() / "good.avi", honestClip()), ""});
        m_files.push_back({writeBytes(m_folder.folder() / "good-opendml.avi", openDmlClip(5)), ""});
        for (const DamagedFile& file : damagedFiles()) {
            if (file.zerosAfter == 0) {   // files of gigabytes have their own tests
                m_files.push_back({writeDamaged(m_folder.folder(), file), ""});
            }
        }
    }

    // One asynchronous frame, one that is announced and never collected, one that is not announced.
    std::string asyncFramesOf(ClipSession& clip) {
        AsyncSession async(m_plugin.session(), clip);
        std::string text = "ahead " + hostkit::resultText(async.create().result);
        if (async.isOpen()) {
            async.announce(0, anyFormat());
            async.announce(kMiddle, anyFormat());
            text += " " + hostkit::asyncResultText(async.get(0, anyFormat()).result);
            text += " " + hostkit::asyncResultText(async.get(2 * kTicksPerPicture, anyFormat()).result);
            async.flush();
            text += " " + hostkit::resultText(async.close());
        }
        return text;
    }

    // The calls that sightOf does not make, and a clip that is quieted and reopened.
    std::string otherCallsOf(const std::filesystem::path& path) {
        ClipSession clip(m_plugin.session(), path);
        if (clip.open().result != imNoErr) {
            return "not opened";
        }
        std::string text = "described " + hostkit::resultText(clip.info(0).result);
        text += ", formats " + std::to_string(clip.pixelFormats().size());
        text += ", layout " + hostkit::resultText(clip.channelLayout().result);
        text += ", analysis " + clip.analysis().text;
        text += ", data rate " + std::to_string(clip.dataRate().samples.size());
        text += ", " + asyncFramesOf(clip);
        text += ", quiet " + hostkit::resultText(clip.quiet());
        text += ", frame " + hostkit::resultText(clip.frame(kMiddle, anyFormat()).result);
        text += ", again " + hostkit::resultText(clip.open().result);
        text += ", frame " + hostkit::resultText(clip.frame(kMiddle, anyFormat()).result);
        return text + ", closed " + hostkit::resultText(clip.close());
    }

    std::string visit(const std::filesystem::path& path) {
        return sightOf(m_plugin.session(), path) + "\n" + otherCallsOf(path);
    }

    void expectNothingHeld() {
        hostkit::Host& host = m_plugin.host();
        EXPECT_EQ(host.frames().alive(), 0);
        EXPECT_EQ(host.asyncImportersOpen(), 0);
        EXPECT_EQ(host.suitesHeld(), m_suitesAtRest);
        EXPECT_EQ(host.memory().aliveBlocks(), m_blocksAtRest);
        EXPECT_EQ(host.violations(), std::vector<std::string>{});
        StandinCounters counters{};
        standinCounters()(&counters);
        EXPECT_EQ(counters.openInstances, 0u);
        EXPECT_EQ(counters.outstandingInits, 0u);
        EXPECT_EQ(counters.runningSessions, 0u);
        EXPECT_EQ(counters.overlappingCalls, 0u);
    }

    static decltype(&standin_counters) standinCounters() {
        return reinterpret_cast<decltype(&standin_counters)>(
            hostkit::PluginLibrary::symbolOfLoadedLibrary(CODEC_LIBRARY_NAME, "standin_counters"));
    }

    // Visits every file once, in random order.
    void visitAll(std::mt19937& random) {
        std::shuffle(m_files.begin(), m_files.end(), random);
        for (const Visited& file : m_files) {
            m_plugin.host().forgetErrorEvents();
            ASSERT_EQ(visit(file.path), file.seen) << file.path.filename().string() << ", seed " << kSeed;
        }
    }

    TempFolder m_folder;
    PluginRun m_plugin;
    std::vector<Visited> m_files;
    int m_suitesAtRest = 0;
    std::size_t m_blocksAtRest = 0;
};

// Whether nothing grew. A leak of a kilobyte per opening would be more than twice the allowed variation on any
// system, and 60 times on Linux.
bool isFlat(const Held& before, const Held& after) {
    return after.handles <= before.handles &&
           (!SOAK_COMPARES_MEMORY || after.bytes <= before.bytes + kHeldMemoryVariation);
}

// Something that is allocated once and kept can be allocated at any time: a lock takes a handle when two threads first
// contend for it. A leak grows in every stretch.
constexpr int kMostStretches = 3;

TEST_F(Soak, ThousandsOfClipsLeaveNothingBehind) {
    ASSERT_GE(rounds(), 1) << "QUORVANE_SOAK_ROUNDS is not a positive number";
    addFiles();
    for (Visited& file : m_files) {
        file.seen = visit(file.path);
    }
    std::mt19937 random(kSeed);
    visitAll(random);
    bool flat = false;
    for (int stretch = 0; stretch < kMostStretches && !flat && !HasFatalFailure(); ++stretch) {
        const Held before;
        printHeld("before", before);
        // Each round opens each of some 190 files twice.
        for (int round = 0; round < rounds() && !HasFatalFailure(); ++round) {
            visitAll(random);
        }
        expectNothingHeld();
        const Held after;
        printHeld("after", after);
        flat = isFlat(before, after);
    }
    EXPECT_TRUE(flat) << "each of " << kMostStretches << " stretches leaked something";
    m_plugin.session().shutdown();
    EXPECT_EQ(m_plugin.host().problems(), std::vector<std::string>{});
}

TEST_F(Soak, ClipsOpenAtTheSameTimeAreIndependent) {
    addFiles();
    for (Visited& file : m_files) {
        file.seen = visit(file.path);
    }
    // A good clip that stays open; one of its frames is requested between all the others.
    ClipSession good(m_plugin.session(), m_folder.folder() / "good.avi");
    ASSERT_EQ(good.open().result, imNoErr);
    ASSERT_EQ(good.info(0).result, imNoErr);
    std::mt19937 random(kSeed);
    std::vector<std::unique_ptr<ClipSession>> open;
    for (int i = 0; i < 10 * rounds(); ++i) {
        const Visited& file = m_files[random() % m_files.size()];
        ASSERT_EQ(visit(file.path), file.seen) << file.path.filename().string() << ", seed " << kSeed;
        const int number = i % 10;
        const auto answer = good.frame(number * kTicksPerPicture, anyFormat());
        ASSERT_EQ(answer.result, imNoErr);
        ASSERT_EQ(answer.frame.view()->pixels[0], kFirstPictureValue + number) << file.path.filename().string();
        open.push_back(std::make_unique<ClipSession>(m_plugin.session(), file.path));
        open.back()->open();
        open.back()->info(0);
        if (open.size() > 20) {
            open.erase(open.begin() + static_cast<std::ptrdiff_t>(random() % open.size()));
        }
    }
    open.clear();
    good.close();
    expectNothingHeld();
    m_plugin.session().shutdown();
    EXPECT_EQ(m_plugin.host().problems(), std::vector<std::string>{});
}

}  // namespace

}  // namespace damage
