// Calls in the wrong order, which the library refuses.
#include "StandinFixture.h"

namespace standin::test {
namespace {

class CallOrder : public StandinTest {
protected:
    StreamInfo m_info = stream(104, 4, 2);
    Bytes m_frame = encodeFrame(m_info, randomPicture(m_info, 1));
    Buffer m_buffer{8, 2};
};

TEST_F(CallOrder, ANeverOpenedHandleIsUnknown) {
    EXPECT_EQ(0x80004002u, quorvane_decompress_end(m_handle + 1));
    EXPECT_EQ(0x80004002u, quorvane_close(0));
}

TEST_F(CallOrder, AClosedHandleIsUnknown) {
    const std::uint32_t handle = m_handle;
    EXPECT_EQ(0u, quorvane_close(handle));
    m_handle = 0;
    EXPECT_EQ(0x80004002u, quorvane_close(handle));
}

TEST_F(CallOrder, HandlesAreNotReused) {
    std::uint32_t other = 0;
    quorvane_open(&other);
    quorvane_close(other);
    std::uint32_t next = 0;
    quorvane_open(&next);
    quorvane_close(next);
    EXPECT_NE(other, next);
}

TEST_F(CallOrder, ASecondBeginIsRefusedAndKeepsTheFirstSession) {
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    EXPECT_EQ(Result::kSessionRunning, begin(m_info, request(5)));
    EXPECT_EQ(Result::kOk, decompress(m_frame, m_buffer));
}

TEST_F(CallOrder, DecompressWithoutBeginIsRefused) {
    EXPECT_EQ(Result::kDecompressWithoutBegin, decompress(m_frame, m_buffer));
    EXPECT_TRUE(m_buffer.isUntouched());
}

TEST_F(CallOrder, EndWithoutBeginIsRefused) {
    EXPECT_EQ(Result::kEndWithoutBegin, end());
}

TEST_F(CallOrder, AnEndedSessionCannotDecompress) {
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    ASSERT_EQ(Result::kOk, end());
    EXPECT_EQ(Result::kDecompressWithoutBegin, decompress(m_frame, m_buffer));
}

TEST_F(CallOrder, AFailedBeginLeavesNoSession) {
    ASSERT_EQ(Result::kRequestType, begin(m_info, request(3)));
    EXPECT_EQ(Result::kEndWithoutBegin, end());
    EXPECT_EQ(0u, counters().runningSessions);
}

TEST_F(CallOrder, BeginNeedsARequest) {
    const Bytes extraData = encodeExtraData(m_info);
    QuorvaneFormat output = preparedOutput();
    EXPECT_EQ(0x80004201u, quorvane_decompress_begin(m_handle, extraData.data(), 28, nullptr, &output));
}

TEST_F(CallOrder, ClosingWithARunningSessionIsAllowedAndCounted) {
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    EXPECT_EQ(0u, quorvane_close(m_handle));
    m_handle = 0;
    EXPECT_EQ(1u, counters().closesWithSession);
    EXPECT_EQ(0u, counters().runningSessions);
}

TEST_F(CallOrder, SessionsOfTwoInstancesAreIndependent) {
    std::uint32_t other = 0;
    ASSERT_EQ(0u, quorvane_open(&other));
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    EXPECT_EQ(0x80004007u, quorvane_decompress_end(other));
    EXPECT_EQ(0u, quorvane_close(other));
    EXPECT_EQ(Result::kOk, decompress(m_frame, m_buffer));
}

TEST_F(CallOrder, NullPointersAreRefused) {
    const Bytes extraData = encodeExtraData(m_info);
    QuorvaneFormat format = preparedOutput();
    const QuorvaneFormat wanted = request(4);
    constexpr std::uint32_t kNullPointer = 0x80004004;
    EXPECT_EQ(kNullPointer, quorvane_open(nullptr));
    EXPECT_EQ(kNullPointer, quorvane_decompress_query(m_handle, nullptr, 28, nullptr, &format));
    EXPECT_EQ(kNullPointer, quorvane_decompress_query(m_handle, extraData.data(), 28, nullptr, nullptr));
    EXPECT_EQ(kNullPointer, quorvane_decompress_begin(m_handle, extraData.data(), 28, &wanted, nullptr));
    EXPECT_EQ(kNullPointer, quorvane_compress_query(m_handle, nullptr, &format, nullptr, nullptr));
    EXPECT_EQ(kNullPointer, quorvane_compress_query(m_handle, &wanted, nullptr, nullptr, nullptr));
    EXPECT_EQ(kNullPointer, quorvane_get_param(m_handle, 7, nullptr, 4));
    ASSERT_EQ(Result::kOk, begin(m_info, wanted));
    EXPECT_EQ(kNullPointer, quorvane_decompress(m_handle, nullptr, 10, m_buffer.planes().data()));
    EXPECT_EQ(kNullPointer, quorvane_decompress(m_handle, m_frame.data(), 10, nullptr));
}

// Not a StandinTest: the library must not be initialised here.
TEST(Uninitialised, EveryCallNeedsAnInit) {
    std::uint32_t handle = 77;
    EXPECT_EQ(0x80004001u, quorvane_open(&handle));
    EXPECT_EQ(0u, handle);
    EXPECT_EQ(0x80004001u, quorvane_close(1));
    EXPECT_EQ(0x80004001u, quorvane_decompress_end(1));
    EXPECT_EQ(0x80004001u, quorvane_library_close());
}

TEST(Uninitialised, AnInstanceOutlivesTheLastCloseButCannotBeUsed) {
    std::uint32_t handle = 0;
    quorvane_library_init();
    quorvane_open(&handle);
    quorvane_library_close();
    EXPECT_EQ(0x80004001u, quorvane_close(handle));
    quorvane_library_init();
    EXPECT_EQ(0u, quorvane_close(handle));
    quorvane_library_close();
}

TEST(Uninitialised, SeveralInitsMayBeOutstanding) {
    std::uint32_t handle = 0;
    quorvane_library_init();
    quorvane_library_init();
    EXPECT_EQ(2u, counters().outstandingInits);
    quorvane_library_close();
    EXPECT_EQ(0u, quorvane_open(&handle));
    EXPECT_EQ(0u, quorvane_close(handle));
    EXPECT_EQ(0u, quorvane_library_close());
    EXPECT_EQ(0u, counters().outstandingInits);
}

// ---- Overlapping calls: the second is made from inside the first.

struct InnerCall {
    std::uint32_t handle = 0;
    std::uint32_t code = 0;
    bool wasMade = false;

    static void make(void* context) {
        auto* const inner = static_cast<InnerCall*>(context);
        inner->wasMade = true;
        inner->code = quorvane_decompress_end(inner->handle);
    }
};

TEST_F(CallOrder, OverlappingCallsOnAHandleAreRefusedAndCounted) {
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    InnerCall inner{.handle = m_handle};
    ASSERT_EQ(0u, standin_visit(kStandinDecompress, InnerCall::make, &inner));
    EXPECT_EQ(Result::kOk, decompress(m_frame, m_buffer));
    EXPECT_TRUE(inner.wasMade);
    EXPECT_EQ(0x80004003u, inner.code);
    EXPECT_EQ(1u, counters().overlappingCalls);
}

TEST_F(CallOrder, TheHandleIsFreeAgainAfterAnOverlap) {
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    InnerCall inner{.handle = m_handle};
    standin_visit(kStandinDecompress, InnerCall::make, &inner);
    decompress(m_frame, m_buffer);
    EXPECT_EQ(Result::kOk, end());
}

TEST_F(CallOrder, CallsOnTwoHandlesMayOverlap) {
    std::uint32_t other = 0;
    ASSERT_EQ(0u, quorvane_open(&other));
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    InnerCall inner{.handle = other};
    standin_visit(kStandinDecompress, InnerCall::make, &inner);
    EXPECT_EQ(Result::kOk, decompress(m_frame, m_buffer));
    EXPECT_EQ(0x80004007u, inner.code);
    EXPECT_EQ(0u, counters().overlappingCalls);
    quorvane_close(other);
}

}  // namespace
}  // namespace standin::test
