// Asynchronous and synchronous frames have the same bytes, including those between the rows: for each compressed type,
// in each offered format, announced or not.
#include "async/support/AsyncTest.h"

#include "aviwriter/Types.h"
#include "hostkit/system/Text.h"

namespace {

constexpr int kFrames = 3;

class Equality : public AsyncTest {
protected:
    using AsyncTest::AsyncTest;

    void expectEqual(std::uint32_t type) {
        aviwriter::SampleOptions options = smallVideo(kFrames);
        options.type = type;
        options.dropped = {1};
        hostkit::ClipSession& clip = openClip(options);
        AsyncClip& async = openAsync(clip);
        const std::vector<PrPixelFormat> formats = clip.pixelFormats();
        ASSERT_FALSE(formats.empty());
        for (const PrPixelFormat format : formats) {
            SCOPED_TRACE(hostkit::codeText(static_cast<csSDK_uint32>(format)));
            expectEqualFrames(clip, async, format);
        }
    }

private:
    void expectEqualFrames(hostkit::ClipSession& clip, AsyncClip& async, PrPixelFormat format) {
        const int announced = kFrames - 1;          // the last frame is decoded on demand
        for (int frame = 0; frame < announced; ++frame) {
            EXPECT_EQ(async.announce(timeOf(frame), only(format)), aiNoError);
        }
        for (int frame = 0; frame < kFrames; ++frame) {
            const auto expected = clip.frame(timeOf(frame), only(format));
            const auto actual = async.collect(timeOf(frame), only(format));
            ASSERT_EQ(expected.result, imNoErr) << "frame " << frame;
            ASSERT_EQ(actual.result, aiNoError) << "frame " << frame;
            EXPECT_EQ(bytesOf(actual.frame), bytesOf(expected.frame)) << "frame " << frame;
            EXPECT_EQ(actual.frame.view()->format, format);
            EXPECT_EQ(actual.frame.view()->width(), 32);
            EXPECT_EQ(actual.frame.view()->height(), 16);
            EXPECT_NE(actual.frame.handle(), expected.frame.handle());
        }
    }
};

hostkit::HostProfile oddRows() {
    hostkit::HostProfile profile;
    profile.rowBytes = hostkit::RowBytesPolicy::Odd;
    return profile;
}

class EqualityOfType : public Equality, public ::testing::WithParamInterface<std::uint32_t> {};

TEST_P(EqualityOfType, HoldsInEveryOfferedFormat) { expectEqual(GetParam()); }

std::vector<std::uint32_t> allTypes() {
    std::vector<std::uint32_t> types;
    for (const aviwriter::TypeName& name : aviwriter::typeNames()) {
        types.push_back(name.type);
    }
    return types;
}

INSTANTIATE_TEST_SUITE_P(Types, EqualityOfType, ::testing::ValuesIn(allTypes()), [](const auto& type) {
    return aviwriter::typeCode(type.param) + "_" + std::to_string(type.param);
});

TEST(EqualityOfAllTypes, CoversSixteenTypes) { EXPECT_EQ(allTypes().size(), 16u); }

class EqualityInOddRows : public Equality {
protected:
    EqualityInOddRows() : Equality(oddRows()) {}
};

TEST_F(EqualityInOddRows, HoldsForPacked422) { expectEqual(104); }
TEST_F(EqualityInOddRows, HoldsForDeepRgb) { expectEqual(113); }

class EqualityInANewerHost : public Equality {
protected:
    EqualityInANewerHost() : Equality(hostkit::hostProfile("editor-14")) {}
};

TEST_F(EqualityInANewerHost, HoldsWithLongerRecords) {
    ASSERT_GT(host().profile().recordSizes().asyncRequest, sizeof(aiAsyncRequest));
    expectEqual(104);
}

}  // namespace
