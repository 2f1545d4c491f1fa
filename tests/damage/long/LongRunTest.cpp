// Long runs of empty chunks: the disk calls for a picture within one and for sound across one.
#include "damage/catalogue/Catalogue.h"
#include "damage/catalogue/FilesOnDisk.h"
#include "damage/catalogue/Sighting.h"

#include "hostkit/sessions/ClipSession.h"
#include "hostkit/watch/DiskFaults.h"
#include "log/PluginRun.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <memory>

namespace damage {

namespace {

using hostkit::ClipSession;
using hostkit::DiskCall;
using hostkit::DiskFaults;

struct DiskCalls {
    int seeks = 0;
    int reads = 0;
    int others = 0;

    friend bool operator==(const DiskCalls&, const DiskCalls&) = default;
};

void PrintTo(const DiskCalls& calls, std::ostream* out) {
    *out << calls.seeks << " seeks, " << calls.reads << " reads, " << calls.others << " others";
}

class LongRun : public testing::Test {
protected:
    LongRun() : m_library(pluginPath()) { m_plugin.session().start(); }

    ~LongRun() override {
        m_clip.reset();
        m_plugin.session().shutdown();
    }

    ClipSession& open(const char* name) {
        const auto path = writeDamaged(m_folder.folder(), damagedFile(name));
        m_clip = std::make_unique<ClipSession>(m_plugin.session(), path);
        EXPECT_EQ(m_clip->open().result, imNoErr);
        EXPECT_EQ(m_clip->info(0).result, imNoErr);
        return *m_clip;
    }

    DiskCalls ofPicture(ClipSession& clip, int number, int shown) {
        DiskFaults disk(m_library);
        const auto answer = clip.frame(number * kTicksPerPicture, {{0, 0, PrPixelFormat_VUYX_4444_8u}});
        EXPECT_EQ(answer.result, imNoErr);
        EXPECT_EQ(answer.frame.view()->pixels[0], kFirstPictureValue + shown);
        return callsOf(disk);
    }

    DiskCalls ofSound(ClipSession& clip, std::uint32_t first, std::uint32_t frames) {
        DiskFaults disk(m_library);
        const auto answer = clip.audio(first, frames, 2);
        EXPECT_EQ(answer.result, imNoErr);
        for (const std::uint32_t i : {std::uint32_t{0}, frames - 1}) {
            EXPECT_EQ(answer.channels[1][i], soundHeard({}, first + i, 1)) << "sample " << first + i;
        }
        return callsOf(disk);
    }

private:
    static DiskCalls callsOf(const DiskFaults& disk) {
        EXPECT_TRUE(disk.covers(DiskCall::Seek) && disk.covers(DiskCall::Read));
        return {disk.calls(DiskCall::Seek), disk.calls(DiskCall::Read),
                disk.calls(DiskCall::Open) + disk.calls(DiskCall::Size)};
    }

    TempFolder m_folder;
    PluginRun m_plugin;
    hostkit::PluginLibrary m_library;   // the same library again, for its handle
    std::unique_ptr<ClipSession> m_clip;
};

constexpr DiskCalls kOneChunk = {.seeks = 1, .reads = 1};

TEST_F(LongRun, OfDroppedPicturesCostsASeekAndAReadInItsMiddle) {
    EXPECT_EQ(ofPicture(open("long-run-of-dropped-pictures"), 50'001, 0), kOneChunk);
}

TEST_F(LongRun, OfDroppedPicturesCostsASeekAndAReadAtItsEnd) {
    EXPECT_EQ(ofPicture(open("long-run-of-dropped-pictures"), 100'000, 0), kOneChunk);
}

TEST_F(LongRun, OfAMillionDroppedPicturesCostsASeekAndARead) {
    EXPECT_EQ(ofPicture(open("opendml-runs-into-a-hole"), 500'005, 9), kOneChunk);
}

// 500 empty chunks before each full one: each that is passed costs a seek.
TEST_F(LongRun, OfEmptySoundChunksCostsNothingWithinAChunk) {
    EXPECT_EQ(ofSound(open("empty-sound-chunks"), 2 * kSoundPerPicture, kSoundPerPicture), kOneChunk);
}

TEST_F(LongRun, OfEmptySoundChunksCostsASeekEachBetweenTwoChunks) {
    EXPECT_EQ(ofSound(open("empty-sound-chunks"), 2 * kSoundPerPicture - 100, 200),
              (DiskCalls{.seeks = 502, .reads = 2}));
}

TEST_F(LongRun, OfEmptySoundChunksCostsASeekEachInTheWholeClip) {
    EXPECT_EQ(ofSound(open("empty-sound-chunks"), 0, kSoundFrames), (DiskCalls{.seeks = 4510, .reads = 10}));
}

}  // namespace

}  // namespace damage
