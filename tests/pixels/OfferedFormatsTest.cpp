// The formats that are offered for each compressed type, and that each of them can be delivered.
#include "pixels/Delivery.h"
#include "pixels/SourcePictures.h"

#include "hostkit/system/Text.h"
#include "support/TempFolder.h"

namespace pixels {

namespace {

const std::vector<std::string> kPacked422 = {"yuy2", "yuy3", "uyvy", "uyv7"};

std::vector<std::string> allFormats() {
    std::vector<std::string> codes;
    for (const HostFormat& format : hostFormats()) {
        codes.push_back(hostkit::codeText(format.code));
    }
    return codes;
}

class Offered : public ::testing::Test {
protected:
    std::vector<std::string> formatsOf(std::uint32_t type) {
        const standin::StreamInfo info = {type, 16, 8, kRec709, kLimited};
        writeClip(m_path, info, {noise(info, 1)});
        hostkit::FrameClip clip(m_importer.session(), m_path);
        std::vector<std::string> codes;
        for (const PrPixelFormat format : clip.formats()) {
            codes.push_back(hostkit::codeText(format));
            EXPECT_EQ(clip.frame(0, format).result, imNoErr) << codes.back();
        }
        return codes;
    }

    TempFolder m_folder;
    std::filesystem::path m_path = m_folder.folder() / "clip.avi";
    LoadedImporter m_importer;
};

TEST_F(Offered, FormatsOfEightBitYuvaHaveAlpha) {
    EXPECT_EQ(formatsOf(106), (std::vector<std::string>{"vuya", "VUYA"}));
}

TEST_F(Offered, FormatsOfEightBitYuv444KeepTheChroma) {
    EXPECT_EQ(formatsOf(103), (std::vector<std::string>{"vuyx", "vux7"}));
}

TEST_F(Offered, FormatsOfEightBitYuv422ArePacked422) { EXPECT_EQ(formatsOf(104), kPacked422); }
TEST_F(Offered, FormatsOfEightBitYuv420ArePacked422) { EXPECT_EQ(formatsOf(105), kPacked422); }
TEST_F(Offered, FormatsOfEightBitGreyArePacked422) { EXPECT_EQ(formatsOf(107), kPacked422); }

TEST_F(Offered, FormatsOfEightBitRgbAreAll) { EXPECT_EQ(formatsOf(101), allFormats()); }
TEST_F(Offered, FormatsOfEightBitRgbaAreAll) { EXPECT_EQ(formatsOf(102), allFormats()); }

TEST_F(Offered, FormatsOfEveryDeeperTypeAreAll) {
    for (const std::uint32_t type : {108U, 109U, 110U, 111U, 112U, 113U, 114U, 115U, 118U}) {
        EXPECT_EQ(formatsOf(type), allFormats()) << "type " << type;
    }
}

}  // namespace

}  // namespace pixels
