// Calls in random order, checked against a model of the pending announcements. A failure prints its seed.
#include "async/support/AsyncTest.h"

#include <algorithm>
#include <iterator>
#include <list>
#include <map>
#include <random>
#include <utility>

namespace {

constexpr int kScriptFrames = 8;
constexpr int kCalls = 150;

struct Announcement {
    int frame;
    PrPixelFormat format;
};

class Script : public AsyncTest, public ::testing::WithParamInterface<unsigned> {
protected:
    void SetUp() override {
        AsyncTest::SetUp();
        aviwriter::SampleOptions options = smallVideo(kScriptFrames);
        options.dropped = {3};
        hostkit::ClipSession& clip = openClip(options);
        for (int frame = 0; frame < kScriptFrames; ++frame) {
            for (const PrPixelFormat format : kFormats) {
                m_expected[{frame, format}] = bytesOf(clip.frame(timeOf(frame), only(format)).frame);
            }
        }
        m_async = &openAsync(clip);
        m_random.seed(GetParam());
    }

    // The frame numbers include two after the last frame.
    void step() {
        const unsigned lot = draw(100);
        const Announcement drawn = {static_cast<int>(draw(kScriptFrames + 2)), kFormats[draw(3) == 0 ? 1 : 0]};
        if (lot < 50) {
            announce(drawn);
        } else if (lot < 94) {
            collect(drawn);
        } else if (lot < 97) {
            EXPECT_EQ(m_async->call(aiCancelAsyncRead, nullptr), aiUnsupported);
        } else {
            EXPECT_EQ(m_async->flush(), aiNoError);
            m_pending.clear();
        }
    }

    void collectAllPending() {
        while (!m_pending.empty()) {
            const auto any = std::next(m_pending.begin(), static_cast<std::ptrdiff_t>(draw(m_pending.size())));
            collect({any->frame, kFormats[0]});
        }
    }

    void expectTheModelsCountOfMissingFrames() const {
        const Lines lines = messages();
        EXPECT_EQ(std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
                      return line.starts_with("REQUEST: ERROR: Frame not found: ");
                  }),
                  m_notFound);
    }

private:
    static constexpr PrPixelFormat kFormats[] = {PrPixelFormat_YUYV_422_8u_709, PrPixelFormat_UYVY_422_8u_601};

    unsigned draw(std::size_t count) { return static_cast<unsigned>(m_random() % count); }

    void announce(const Announcement& announcement) {
        EXPECT_EQ(m_async->announce(timeOf(announcement.frame), only(announcement.format)), aiNoError);
        m_pending.push_back(announcement);
    }

    void collect(const Announcement& wanted) {
        const auto pending = std::find_if(m_pending.begin(), m_pending.end(),
                                          [&](const Announcement& one) { return one.frame == wanted.frame; });
        Announcement due = wanted;
        if (pending != m_pending.end()) {
            due = *pending;
            m_pending.erase(pending);
        } else {
            ++m_notFound;
        }
        const auto answer = m_async->collect(timeOf(wanted.frame), only(wanted.format));
        if (due.frame >= kScriptFrames) {
            EXPECT_EQ(answer.result, aiUnknownError);
        } else {
            EXPECT_EQ(answer.result, aiNoError);
            EXPECT_EQ(bytesOf(answer.frame), (m_expected[{due.frame, due.format}])) << "frame " << due.frame;
        }
    }

    std::mt19937 m_random;
    std::map<std::pair<int, PrPixelFormat>, std::vector<std::uint8_t>> m_expected;
    AsyncClip* m_async = nullptr;
    std::list<Announcement> m_pending;
    int m_notFound = 0;
};

TEST_P(Script, MatchesTheModelAndClosesWithPendingFrames) {
    for (int call = 0; call < kCalls && !HasFailure(); ++call) {
        SCOPED_TRACE("call " + std::to_string(call));
        step();
    }
    expectTheModelsCountOfMissingFrames();
}

TEST_P(Script, DeliversAllPendingFramesInAnyOrder) {
    for (int call = 0; call < kCalls / 3 && !HasFailure(); ++call) {
        SCOPED_TRACE("call " + std::to_string(call));
        step();
    }
    collectAllPending();
    expectTheModelsCountOfMissingFrames();
}

INSTANTIATE_TEST_SUITE_P(Seeds, Script, ::testing::Range(1u, 11u));

}  // namespace
