// Counters and requested failures.
#include "StandinFixture.h"

namespace standin::test {
namespace {

constexpr std::uint32_t kOrdered = 0x8000BEEF;

class Control : public StandinTest {
protected:
    StreamInfo m_info = stream(104, 4, 2);
    Bytes m_frame = encodeFrame(m_info, randomPicture(m_info, 1));
    Buffer m_buffer{8, 2};
};

TEST_F(Control, CallsAreCountedByFunction) {
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    decompress(m_frame, m_buffer);
    decompress(m_frame, m_buffer);
    const StandinCounters now = counters();
    EXPECT_EQ(1u, now.calls[kStandinDecompressBegin]);
    EXPECT_EQ(2u, now.calls[kStandinDecompress]);
    EXPECT_EQ(0u, now.calls[kStandinDecompressEnd]);
    EXPECT_EQ(0u, now.failures[kStandinDecompress]);
    EXPECT_EQ(1u, now.openInstances);
    EXPECT_EQ(1u, now.runningSessions);
    EXPECT_EQ(1u, now.outstandingInits);
}

TEST_F(Control, FailuresAreCountedByFunction) {
    decompress(m_frame, m_buffer);
    EXPECT_EQ(1u, counters().calls[kStandinDecompress]);
    EXPECT_EQ(1u, counters().failures[kStandinDecompress]);
}

TEST_F(Control, ResetCountsFromZeroButKeepsInstances) {
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    standin_reset();
    EXPECT_EQ(0u, counters().calls[kStandinDecompressBegin]);
    EXPECT_EQ(1u, counters().runningSessions);
    EXPECT_EQ(Result::kOk, decompress(m_frame, m_buffer));
}

TEST_F(Control, AnOutputThatWasNotPreparedIsCounted) {
    const Bytes extraData = encodeExtraData(m_info);
    QuorvaneFormat output;   // words 2 and 3 are 0
    EXPECT_EQ(0u, quorvane_decompress_query(m_handle, extraData.data(), 28, nullptr, &output));
    EXPECT_EQ(1u, counters().unpreparedOutputs);
    output = preparedOutput();
    EXPECT_EQ(0u, quorvane_decompress_query(m_handle, extraData.data(), 28, nullptr, &output));
    EXPECT_EQ(1u, counters().unpreparedOutputs);
}

TEST_F(Control, TheSecondAndThirdCallFailAsRequested) {
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    ASSERT_EQ(0u, standin_fail(kStandinDecompress, 2, 2, kOrdered));
    EXPECT_EQ(Result::kOk, decompress(m_frame, m_buffer));
    EXPECT_EQ(Result{kOrdered}, decompress(m_frame, m_buffer));
    EXPECT_EQ(Result{kOrdered}, decompress(m_frame, m_buffer));
    EXPECT_EQ(Result::kOk, decompress(m_frame, m_buffer));
    EXPECT_EQ(2u, counters().failures[kStandinDecompress]);
}

TEST_F(Control, ACallMadeToFailDoesNothing) {
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    standin_fail(kStandinDecompress, 1, 1, kOrdered);
    EXPECT_EQ(Result{kOrdered}, decompress(m_frame, m_buffer));
    EXPECT_TRUE(m_buffer.isUntouched());
}

TEST_F(Control, OpenMadeToFailWritesHandle0) {
    standin_fail(kStandinOpen, 1, 1, kOrdered);
    std::uint32_t handle = 77;
    EXPECT_EQ(kOrdered, quorvane_open(&handle));
    EXPECT_EQ(0u, handle);
    EXPECT_EQ(1u, counters().openInstances);
}

TEST_F(Control, GetStringMadeToFailReturnsTheUnknownText) {
    standin_fail(kStandinGetString, 1, 1, kOrdered);
    EXPECT_STREQ("unknown colour space", quorvane_get_string(3, 1));
    EXPECT_STREQ("Rec.601", quorvane_get_string(3, 1));
}

TEST_F(Control, EndMadeToFailStillEndsTheSession) {
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    standin_fail(kStandinDecompressEnd, 1, 1, kOrdered);
    EXPECT_EQ(Result{kOrdered}, end());
    EXPECT_EQ(Result::kOk, begin(m_info, request(5)));
}

TEST_F(Control, CloseMadeToFailStillCloses) {
    standin_fail(kStandinClose, 1, 1, kOrdered);
    EXPECT_EQ(kOrdered, quorvane_close(m_handle));
    m_handle = 0;
    EXPECT_EQ(0u, counters().openInstances);
}

TEST_F(Control, EveryFunctionThatReturnsACodeCanBeMadeToFail) {
    for (std::uint32_t function = 0; function < kStandinFunctionCount; ++function)
        EXPECT_EQ(0u, standin_fail(function, 1, 1, kOrdered));
    EXPECT_EQ(kOrdered, quorvane_library_init());   // does not count as an init
    EXPECT_EQ(kOrdered, quorvane_get_param(m_handle, 7, nullptr, 4));
    EXPECT_EQ(kOrdered, quorvane_compress_query(m_handle, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(kOrdered, quorvane_decompress_query(m_handle, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(kOrdered, quorvane_decompress_begin(m_handle, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(kOrdered, quorvane_library_close());
    EXPECT_EQ(0u, counters().outstandingInits);
    quorvane_library_init();
}

TEST_F(Control, TheDescriptionStatesARequestedSizeAndType) {
    ASSERT_EQ(0u, standin_answer(kStandinDecompressQuery, 640, kStandinUnchanged, 999));
    QuorvaneFormat output = preparedOutput();
    ASSERT_EQ(Result::kOk, query(encodeExtraData(m_info), nullptr, output));
    EXPECT_EQ(640u, output.width);
    EXPECT_EQ(2u, output.height);
    EXPECT_EQ(999u, output.type);
}

TEST_F(Control, ARequestedDescriptionDoesNotAffectRequests) {
    ASSERT_EQ(0u, standin_answer(kStandinDecompressQuery, 640, 480, 999));
    const QuorvaneFormat wanted = request(4);
    QuorvaneFormat output = preparedOutput();
    ASSERT_EQ(Result::kOk, query(encodeExtraData(m_info), &wanted, output));
    EXPECT_EQ(4u, output.width);
    EXPECT_EQ(4u, output.type);
}

TEST_F(Control, ASessionCanStateAnotherSizeThanItDelivers) {
    ASSERT_EQ(0u, standin_answer(kStandinDecompressBegin, 640, 480, kStandinUnchanged));
    const Bytes extraData = encodeExtraData(m_info);
    const QuorvaneFormat wanted = request(4);
    QuorvaneFormat output = preparedOutput();
    ASSERT_EQ(0u, quorvane_decompress_begin(m_handle, extraData.data(), 28, &wanted, &output));
    EXPECT_EQ(640u, output.width);
    EXPECT_EQ(480u, output.height);
    EXPECT_EQ(Result::kOk, decompress(m_frame, m_buffer));
}

TEST_F(Control, ResetRestoresTrueDescriptions) {
    ASSERT_EQ(0u, standin_answer(kStandinDecompressQuery, 640, 480, 999));
    standin_reset();
    QuorvaneFormat output = preparedOutput();
    ASSERT_EQ(Result::kOk, query(encodeExtraData(m_info), nullptr, output));
    EXPECT_EQ(4u, output.width);
}

TEST_F(Control, AFailureRequestCanBeWithdrawn) {
    standin_fail(kStandinDecompressEnd, 1, 5, kOrdered);
    EXPECT_EQ(0u, standin_fail(kStandinDecompressEnd, 1, 0, kOrdered));
    EXPECT_EQ(Result::kEndWithoutBegin, end());
}

TEST_F(Control, InvalidFailureRequestsAreRefused) {
    EXPECT_EQ(1u, standin_fail(kStandinFunctionCount, 1, 1, kOrdered));
    EXPECT_EQ(1u, standin_fail(kStandinOpen, 0, 1, kOrdered));
    EXPECT_EQ(1u, standin_fail(kStandinOpen, 1, 1, 0));
    EXPECT_EQ(1u, standin_visit(kStandinOpen, nullptr, nullptr));
    EXPECT_EQ(1u, standin_visit(kStandinGetString, nullptr, nullptr));
    EXPECT_EQ(1u, standin_answer(kStandinDecompress, 1, 1, 1));
}

TEST_F(Control, ANullCountersPointerIsIgnored) {
    standin_counters(nullptr);
    EXPECT_EQ(1u, counters().openInstances);
}

}  // namespace
}  // namespace standin::test
