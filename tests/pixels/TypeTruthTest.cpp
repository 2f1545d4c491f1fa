// Each compressed type in every host format, pixel for pixel, with all sizes, ranges, colour spaces and row paddings.
#include "pixels/Delivery.h"
#include "pixels/SourcePictures.h"

#include "aviwriter/Types.h"
#include "support/TempFolder.h"

#include "hostkit/system/Text.h"

namespace pixels {

namespace {

struct Size {
    std::uint32_t width;
    std::uint32_t height;
};

constexpr std::uint32_t kTypes[] = {101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111, 112, 113, 114, 115, 118};

// The widths 32 and 6 fill whole groups of pixels in every format; 7, 13 and 1 do not.
constexpr Size kSizes[] = {{32, 16}, {7, 5}, {6, 2}, {13, 4}, {1, 1}};

std::string described(const standin::StreamInfo& info) {
    return std::to_string(info.width) + " x " + std::to_string(info.height) + ", colour space " +
           std::to_string(info.colorSpace) + ", range " + std::to_string(info.range);
}

class EachType : public ::testing::TestWithParam<std::uint32_t> {
protected:
    // Writes a clip, imports it, and compares all frames in all formats.
    void expectTruth(LoadedImporter& importer, const standin::StreamInfo& info) {
        SCOPED_TRACE(described(info));
        const std::vector<standin::Picture> pictures = {noise(info, 1), ramp(info), limits(info, 2)};
        const std::filesystem::path path = m_folder.folder() / "clip.avi";
        writeClip(path, info, pictures);
        hostkit::FrameClip clip(importer.session(), path);
        for (const HostFormat& format : hostFormats()) {
            SCOPED_TRACE(hostkit::codeText(format.code));
            for (std::size_t i = 0; i < pictures.size(); ++i) {
                EXPECT_TRUE(holdsRows(clip.frame(static_cast<csSDK_int64>(i), format.code),
                                      referenceRows(info, pictures[i], format)))
                    << "frame " << i;
            }
        }
    }

    void expectTruthWithRows(hostkit::RowBytesPolicy policy) {
        hostkit::HostProfile profile;
        profile.rowBytes = policy;
        LoadedImporter importer(profile);
        for (const Size& size : kSizes) {
            expectTruth(importer, {GetParam(), size.width, size.height, kRec709, kLimited});
        }
    }

    void expectTruthFor(std::uint32_t colorSpace, std::uint32_t range) {
        LoadedImporter importer;
        for (const Size& size : kSizes) {
            expectTruth(importer, {GetParam(), size.width, size.height, colorSpace, range});
        }
    }

    TempFolder m_folder;
};

TEST_P(EachType, ArrivesPixelForPixelFromRec601InLimitedRange) { expectTruthFor(kRec601, kLimited); }
TEST_P(EachType, ArrivesPixelForPixelFromRec601InFullRange) { expectTruthFor(kRec601, kFull); }
TEST_P(EachType, ArrivesPixelForPixelFromRec709InLimitedRange) { expectTruthFor(kRec709, kLimited); }
TEST_P(EachType, ArrivesPixelForPixelFromRec709InFullRange) { expectTruthFor(kRec709, kFull); }

TEST_P(EachType, ArrivesPixelForPixelInRowsWithoutPadding) { expectTruthWithRows(hostkit::RowBytesPolicy::Tight); }
TEST_P(EachType, ArrivesPixelForPixelInRowsAtOddAddresses) { expectTruthWithRows(hostkit::RowBytesPolicy::Odd); }

INSTANTIATE_TEST_SUITE_P(Types, EachType, ::testing::ValuesIn(kTypes), [](const auto& type) {
    return aviwriter::typeCode(type.param) + "_" + std::to_string(type.param);
});

}  // namespace

}  // namespace pixels
