// Handles are independent of each other, on any thread.
#include "StandinFixture.h"

#include <atomic>
#include <thread>

namespace standin::test {
namespace {

class Threads : public StandinTest {};

// Opens an instance, decodes every frame with it and counts the wrong pictures.
void decodeAll(const StreamInfo& info, const std::vector<Bytes>& frames, const std::vector<Bytes>& expected,
               std::atomic<int>& wrong) {
    const Bytes extraData = encodeExtraData(info);
    const QuorvaneFormat wanted = request(2);
    std::uint32_t handle = 0;
    QuorvaneFormat output = preparedOutput();
    wrong += quorvane_library_init() != 0;
    wrong += quorvane_open(&handle) != 0;
    wrong += quorvane_decompress_begin(handle, extraData.data(), 28, &wanted, &output) != 0;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        Buffer buffer(neededRowBytes(2, info.width), info.height);
        wrong += quorvane_decompress(handle, frames[i].data(), static_cast<std::uint32_t>(frames[i].size()),
                                     buffer.planes().data()) != 0;
        wrong += buffer.bytes() != expected[i];
    }
    wrong += quorvane_close(handle) != 0;
    wrong += quorvane_library_close() != 0;
}

TEST_F(Threads, WithTheirOwnInstancesGetTheirOwnPictures) {
    const StreamInfo info = stream(105, 33, 17);
    std::vector<Bytes> frames;
    std::vector<Bytes> expected;
    for (std::uint32_t seed = 0; seed < 20; ++seed) {
        frames.push_back(encodeFrame(info, randomPicture(info, seed)));
        expected.push_back(decoded(info, randomPicture(info, seed), request(2)));
    }
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] { decodeAll(info, frames, expected, wrong); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(0, wrong);
    EXPECT_EQ(0u, counters().overlappingCalls);
    EXPECT_EQ(8u, counters().closesWithSession);
}

// Whether two calls really overlap depends on the system; each must be either done or refused.
TEST_F(Threads, OnOneHandleAreEitherServedOrRefused) {
    std::atomic<int> wrong{0};
    const auto queryOften = [&] {
        for (int i = 0; i < 500; ++i) {
            std::uint32_t value = 31;
            const std::uint32_t code = quorvane_get_param(m_handle, 9, &value, 4);
            wrong += code == 0 ? value != 1 : code != 0x80004003;
        }
    };
    std::thread other(queryOften);
    queryOften();
    other.join();
    EXPECT_EQ(0, wrong);
    EXPECT_EQ(counters().overlappingCalls, counters().failures[kStandinGetParam]);
}

}  // namespace
}  // namespace standin::test
