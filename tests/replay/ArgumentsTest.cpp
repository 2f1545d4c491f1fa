// Reading a call's arguments from single messages.
#include "Recording.h"

using replay::Arguments;

namespace {

Arguments of(std::vector<std::string> messages) {
    replay::LoggedCall call;
    call.messages = std::move(messages);
    return replay::argumentsOf(call);
}

TEST(Arguments, APathMayContainQuotesAndBlanks) {
    EXPECT_EQ(of({"Open: ' it's', stream: 3.avi', stream: 2"}).path, " it's', stream: 3.avi");
    EXPECT_EQ(of({"Open: ' it's', stream: 3.avi', stream: 2"}).fileStream, 2);
    EXPECT_EQ(of({"m_filePathUtf8: ' it's.avi'"}).path, " it's.avi");
    EXPECT_EQ(of({"m_streamIndex:  -1"}).fileStream, -1);
}

TEST(Arguments, FrameFormatsKeepTheirOrder) {
    const Arguments arguments = of({"inNumFrameFormats: 2",
                                    "inFrameFormats[0]: 64 48 PrPixelFormat_YUYV_422_8u_601 [yuy2]",
                                    "inFrameFormats[1]: 0 0 PrPixelFormat_BGRA_4444_8u [bgra]"});
    ASSERT_TRUE(arguments.frameFormats.has_value());
    EXPECT_EQ(replay::formatsText(*arguments.frameFormats), "64 x 48 yuy2, 0 x 0 bgra");
}

TEST(Arguments, AFormatWithoutANameIsReadByItsCode) {
    const auto formats = of({"inNumFrameFormats: 1", "inFrameFormats[0]: 0 0 ???? [ab[0][255]]"}).frameFormats;
    ASSERT_TRUE(formats && formats->size() == 1);
    EXPECT_EQ(hostkit::valueOf(formats->front().inPixelFormat), 0xFF006261u);
}

TEST(Arguments, AnIncompleteListOfFormatsIsIgnored) {
    EXPECT_EQ(of({"inNumFrameFormats: 2", "inFrameFormats[0]: 64 48 PrPixelFormat_YUYV_422_8u_601 [yuy2]"})
                  .frameFormats.has_value(),
              false);
    EXPECT_TRUE(of({"inNumFrameFormats: 0"}).frameFormats.has_value());
}

TEST(Arguments, AnOutFrameIsRecognisedOnBothSystems) {
    EXPECT_EQ(of({"outFrame: (nil)"}).hasPlaceForFrame, false);
    EXPECT_EQ(of({"outFrame: 0000000000000000"}).hasPlaceForFrame, false);
    EXPECT_EQ(of({"outFrame: 0x7ffc00"}).hasPlaceForFrame, true);
    EXPECT_EQ(of({"outFrame: 00000000DEADBEEF"}).hasPlaceForFrame, true);
}

TEST(Arguments, NumbersThatDoNotFitAreIgnored) {
    EXPECT_EQ(of({"inFrameTime: 99999999999999999999"}).time, std::nullopt);
    EXPECT_EQ(of({"importAudioRec7P->size    : 4294967296"}).sampleFrames, std::nullopt);
    EXPECT_EQ(of({"importAudioRec7P->size    : -1"}).sampleFrames, std::nullopt);
    EXPECT_EQ(of({"buffersize: 5 bytes"}).bufferSize, std::nullopt);
    EXPECT_EQ(of({"buffersize: "}).bufferSize, std::nullopt);
}

TEST(Arguments, AFileTypeIsReadFromItsText) {
    EXPECT_EQ(of({"filetype: AVIV"}).fileType, 0x41564956);
    EXPECT_EQ(of({"filetype: [0][0][0][7]"}).fileType, 7);
    EXPECT_EQ(of({"filetype: AVIVX"}).fileType, std::nullopt);
}

TEST(Arguments, ANegativeFrameNumberIsReadAsUnsigned) {
    EXPECT_EQ(of({"REQUEST: Requesting: -118, frameTime: -1000"}).frameIndex, 4294967178u);
    EXPECT_EQ(of({"frameIndex:  4294967178 (total: 1)"}).frameIndex, 4294967178u);
}

}  // namespace
