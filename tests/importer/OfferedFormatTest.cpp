// The pixel formats offered for each compressed type, and their enumeration.
#include "importer/support/ImporterTest.h"

#include "hostkit/system/Text.h"

using hostkit::ClipSession;

namespace {

constexpr char kAllFormats[] =
    "yuy2 yuy3 uyvy uyv7 vuya VUYA vuyx vux7 bgra argb bgrx xrgb v210 v211 RGB1 Bgra Bgrx";
constexpr char kPacked422[] = "yuy2 yuy3 uyvy uyv7";

class OfferedFormat : public ImporterTest {
protected:
    std::unique_ptr<ClipSession> clipOf(std::uint32_t type) {
        return openClip("clip.avi", aviFile({shortVideo(1, {.type = type})}));
    }

    static std::string offered(ClipSession& clip) {
        std::string codes;
        for (const PrPixelFormat format : clip.pixelFormats()) {
            if (!codes.empty()) {
                codes += ' ';
            }
            codes += hostkit::codeText(format);
        }
        return codes;
    }
};

struct OfferCase {
    std::uint32_t type;
    const char* formats;
};

}  // namespace

TEST_F(OfferedFormat, AreThePreferredOfEachTypeOrAll) {
    for (const OfferCase& offer :
         {OfferCase{101, kAllFormats}, OfferCase{102, kAllFormats}, OfferCase{103, "vuyx vux7"},
          OfferCase{104, kPacked422}, OfferCase{105, kPacked422}, OfferCase{106, "vuya VUYA"},
          OfferCase{107, kPacked422}, OfferCase{108, kAllFormats}, OfferCase{109, kAllFormats},
          OfferCase{110, kAllFormats}, OfferCase{111, kAllFormats}, OfferCase{112, kAllFormats},
          OfferCase{113, kAllFormats}, OfferCase{114, kAllFormats}, OfferCase{115, kAllFormats},
          OfferCase{118, kAllFormats}}) {
        SCOPED_TRACE(offer.type);
        EXPECT_EQ(offered(*clipOf(offer.type)), offer.formats);
    }
}

TEST_F(OfferedFormat, EndWith301) {
    auto clip = clipOf(104);
    EXPECT_EQ(clip->pixelFormat(3).result, 0);
    EXPECT_EQ(clip->pixelFormat(4).result, 301);
    EXPECT_EQ(clip->pixelFormat(5).result, 301);
    EXPECT_EQ(clip->pixelFormat(-1).result, 301);
}

TEST_F(OfferedFormat, AreLoggedWhenFetched) {
    auto clip = clipOf(104);
    EXPECT_EQ(logOf([&] { clip->pixelFormat(1); }),
              (Lines{"----------------------", "[imGetIndPixelFormat] (27)", "m_filePathUtf8: '<folder>/clip.avi'",
                     "m_streamIndex:  0", "Adding pixel format: PrPixelFormat_YUYV_422_8u_709 [yuy3]",
                     "    [imNoErr] (0)"}));
}

TEST_F(OfferedFormat, AreNotLoggedBeyondTheEnd) {
    auto clip = clipOf(104);
    EXPECT_EQ(logOf([&] { clip->pixelFormat(4); }),
              (Lines{"----------------------", "[imGetIndPixelFormat] (27)", "m_filePathUtf8: '<folder>/clip.avi'",
                     "m_streamIndex:  0", "    [imBadFormatIndex] (301)"}));
}

TEST_F(OfferedFormat, AreWrittenOnlyIntoTheirField) {
    auto clip = clipOf(104);
    for (const csSDK_int32 index : {0, 4}) {
        hostkit::HostRecord<imIndPixelFormatRec> record;
        std::fill_n(static_cast<std::uint8_t*>(record.data()), sizeof(imIndPixelFormatRec), std::uint8_t{0xCD});
        record->privatedata = clip->privateData();
        const auto answer = session().exchange(imGetIndPixelFormat, std::move(record), hostkit::asPointer(index));
        EXPECT_EQ(hostkit::describe(answer.written), index == 0 ? "8-11" : "nothing");
    }
}

TEST_F(OfferedFormat, AreAllDelivered) {
    auto clip = clipOf(102);
    for (const PrPixelFormat format : clip->pixelFormats()) {
        const auto answer = clip->frame(0, {frameFormat(format)});
        EXPECT_EQ(answer.result, 0) << hostkit::codeText(format);
        ASSERT_TRUE(answer.frame.view());
        EXPECT_EQ(answer.frame.view()->format, format);
    }
}

// A host may request a format that another clip offered: the codec decides whether it is possible.
TEST_F(OfferedFormat, AreNotTheOnlyDeliverableOnes) {
    VideoSketch grey = {.type = 104};
    grey.frames = {frameOf(grey, 128)};
    auto clip = openClip("clip.avi", aviFile({videoStream(grey)}));
    ASSERT_EQ(offered(*clip), kPacked422);
    const auto answer = clip->frame(0, {frameFormat(PrPixelFormat_BGRA_4444_8u)});
    EXPECT_EQ(answer.result, 0);
    ASSERT_TRUE(answer.frame.view());
    EXPECT_EQ(answer.frame.view()->format, PrPixelFormat_BGRA_4444_8u);
    EXPECT_EQ(firstBytes(answer), (std::vector<int>{130, 130, 130, 255}));
}
